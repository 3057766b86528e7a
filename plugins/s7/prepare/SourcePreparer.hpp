#pragma once

#include <corvane/workbench/ui/Preparer.hpp>

namespace corvane::workbench::plugins::s7Driver::prepare {

/// What the host is offered: the sources of data blocks, made plain. Options: "standard-access" and
/// "show-hidden", which take no value; "constant" with NAME=VALUE and "block" with NAME, as often
/// as wanted.
class SourcePreparer final : public ui::Preparer {
public:
    [[nodiscard]] std::span<const std::string_view> extensions() const override;
    [[nodiscard]] std::string_view preparedExtension() const override;
    [[nodiscard]] std::span<const std::string_view> options() const override;
    [[nodiscard]] ui::PreparedSource
    prepare(std::span<const ui::SourceFile> files,
            std::span<const ui::PrepareOption> options) const override;
};

} // namespace corvane::workbench::plugins::s7Driver::prepare
