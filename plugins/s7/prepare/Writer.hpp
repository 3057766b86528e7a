#pragma once

#include "prepare/Declarations.hpp"

#include <corvane/workbench/ui/Preparer.hpp>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::plugins::s7Driver::prepare {

struct SystemType;

/// Writes data blocks that were measured, with everything that they are made of written out. The
/// recursion is as deep as structures stand in structures, which the measure has bounded.
class Writer {
public:
    /// `names` are those of the files. All must outlive the object.
    Writer(const Declarations& declarations, std::span<const std::string_view> names,
           bool showHidden, ui::PreparedSource& target)
        : declarations_(&declarations), names_(names), showHidden_(showHidden), target_(&target) {}

    /// A block whose members are those of `body`, which may be the block itself.
    void writeBlock(const Declaration& block, const Declaration& body);
    void writeBlock(const Declaration& block, const SystemType& body);

private:
    /// What the lines that are written have in common.
    struct Context {
        std::uint32_t levels;
        ui::SourceOrigin origin;
    };

    void beginBlock(const Declaration& block, std::string_view note);
    void endBlock();
    void writeMembers(const Declaration& owner, std::uint32_t levels);
    void writeSections(const Declaration& owner, std::uint32_t levels);
    void writeMember(const Declaration& owner, const Member& member, std::uint32_t levels);
    void writeSystemMembers(const SystemType& type, Context context);
    void writeContent(const Declaration& owner, const Member& member, std::uint32_t levels);
    void writeEvenByte(Section section, Context context);
    void writeLeading(const Declaration& owner, const Member& member, Context context);
    void writeName(std::string_view name);
    void writeAttributes(const Member& member);
    void writeType(const Declaration& owner, const Member& member);
    void writeDimensions(const Member& member);
    void writeArea(std::uint64_t units);
    void writeComment(std::string_view comments, std::string_view note);
    [[nodiscard]] std::string noteOn(const Declaration& owner, const Member& member) const;
    [[nodiscard]] std::string sourceOf(const Declaration& declaration) const;
    [[nodiscard]] bool needsEvenByte(const Declaration& owner, Section section) const;
    [[nodiscard]] std::uint64_t countOf(const Member& member) const;
    void beginLine(Context context);
    void endLine() { target_->text += '\n'; }
    void writeLine(Context context, std::string_view text);

    const Declarations* declarations_;
    std::span<const std::string_view> names_;
    bool showHidden_;
    ui::PreparedSource* target_;
};

} // namespace corvane::workbench::plugins::s7Driver::prepare
