#include "prepare/SourcePreparer.hpp"

#include "elements/Plc.hpp"
#include "prepare/Constants.hpp"
#include "prepare/Prepare.hpp"

#include <corvane/workbench/i18n/Translate.hpp>

#include <array>
#include <stdexcept>

namespace corvane::workbench::plugins::s7Driver::prepare {

namespace {

constexpr auto kExtensions = std::to_array<std::string_view>({".db", ".udt", ".scl", ".awl"});

constexpr std::string_view kStandardAccess = "standard-access";
constexpr std::string_view kShowHidden = "show-hidden";
constexpr std::string_view kConstant = "constant";
constexpr std::string_view kBlock = "block";
constexpr auto kOptions =
    std::to_array<std::string_view>({kStandardAccess, kShowHidden, kConstant, kBlock});

[[noreturn]] void refuse(std::string_view text, std::string_view subject) {
    throw std::runtime_error(i18n::translateToUtf8(Plc::kTextContext, text, {subject}));
}

// NAME=VALUE, or "NAME"=VALUE as a source has it.
void addConstant(Options& options, std::string_view assignment) {
    const std::size_t sign = assignment.rfind('=');
    if (sign == std::string_view::npos || sign == 0)
        refuse("“{}” is not of the form NAME=VALUE", assignment);
    std::string_view name = assignment.substr(0, sign);
    if (name.size() > 2 && name.starts_with('"') && name.ends_with('"'))
        name = name.substr(1, name.size() - 2);
    const Value value = valueOf(assignment.substr(sign + 1),
                                [](std::string_view) { return std::optional<std::int32_t>(); });
    if (!value.number)
        refuse("the value of the constant “{}” is not a whole number of 32 bits", name);
    const auto [entry, isNew] = options.constants.try_emplace(std::string(name), *value.number);
    if (!isNew && entry->second != *value.number)
        refuse("the constant “{}” is given two values", name);
}

} // namespace

std::span<const std::string_view> SourcePreparer::extensions() const { return kExtensions; }

std::string_view SourcePreparer::preparedExtension() const { return kExtensions.front(); }

std::span<const std::string_view> SourcePreparer::options() const { return kOptions; }

ui::PreparedSource SourcePreparer::prepare(std::span<const ui::SourceFile> files,
                                           std::span<const ui::PrepareOption> options) const {
    Options wanted;
    for (const auto& [name, value] : options) {
        if (name == kStandardAccess)
            wanted.standardAccess = true;
        else if (name == kShowHidden)
            wanted.showHidden = true;
        else if (name == kConstant)
            addConstant(wanted, value);
        else if (name == kBlock)
            wanted.blocks.push_back(value);
        else
            refuse("there is no option “{}”", name);
    }
    return prepareSources(files, wanted);
}

} // namespace corvane::workbench::plugins::s7Driver::prepare
