#include "prepare/Writer.hpp"

#include "dbimport/facts/FoldCase.hpp"
#include "dbimport/facts/Keywords.hpp"
#include "dbimport/facts/TypeTable.hpp"
#include "prepare/Lexer.hpp"
#include "prepare/Measure.hpp"
#include "prepare/SystemTypes.hpp"

#include <algorithm>
#include <array>

namespace corvane::workbench::plugins::s7Driver::prepare {

namespace {

constexpr std::string_view kIndentation = "   ";

struct SectionNames {
    std::string_view word;
    std::string_view variable; ///< of the array without elements that stands in front of it
};

constexpr auto kSectionNames = std::to_array<SectionNames>({
    {"VAR_INPUT", "even_byte_inputs"},
    {"VAR_OUTPUT", "even_byte_outputs"},
    {"VAR_IN_OUT", "even_byte_in_outs"},
    {"VAR", "even_byte_statics"},
});

bool isPlainName(std::string_view name) {
    const auto isPlain = [](char letter) {
        const char folded = foldCase(letter);
        return (folded >= 'a' && folded <= 'z') || (letter >= '0' && letter <= '9') ||
               letter == '_';
    };
    return !name.empty() && (name.front() < '0' || name.front() > '9') &&
           std::ranges::all_of(name, isPlain) && keywordOf(name) == Keyword::none;
}

std::string_view baseName(std::string_view file) { return file.substr(file.find_last_of('/') + 1); }

} // namespace

void Writer::writeBlock(const Declaration& block, const Declaration& body) {
    beginBlock(block, &block == &body ? std::string() : sourceOf(body));
    writeMembers(body, 2);
    endBlock();
}

void Writer::writeBlock(const Declaration& block, const SystemType& body) {
    beginBlock(block, "type " + block.typeName);
    writeSystemMembers(
        body, {.levels = 2, .origin = {.file = block.place.file, .line = block.typePlace.line}});
    endBlock();
}

void Writer::beginBlock(const Declaration& block, std::string_view note) {
    const Context context{.levels = 0,
                          .origin = {.file = block.place.file, .line = block.place.line}};
    if (!target_->text.empty())
        writeLine(context, "");
    beginLine(context);
    target_->text.append("DATA_BLOCK \"").append(block.name).append("\"");
    writeComment(block.comment.in(declarations_->textOf(block)), note);
    endLine();
    writeLine(context, "{ S7_Optimized_Access := 'FALSE' }");
    writeLine({.levels = 1, .origin = context.origin}, "STRUCT");
}

void Writer::endBlock() {
    const Context context{.levels = 0, .origin = target_->origins.back()};
    writeLine({.levels = 1, .origin = context.origin}, "END_STRUCT;");
    writeLine(context, "BEGIN");
    writeLine(context, "END_DATA_BLOCK");
}

void Writer::writeMembers(const Declaration& owner, std::uint32_t levels) {
    if (owner.kind != DeclarationKind::type) {
        writeSections(owner, levels);
        return;
    }
    for (std::uint32_t index = owner.first; index != owner.last;) {
        const Member& member = declarations_->members[index];
        writeMember(owner, member, levels);
        index = member.end;
    }
}

// In the order in which they lie in memory, whatever that of the source is.
void Writer::writeSections(const Declaration& owner, std::uint32_t levels) {
    bool isFirst = true;
    for (std::uint8_t number = 0; number != kSections; ++number) {
        const auto section = static_cast<Section>(number);
        bool isBegun = false;
        for (std::uint32_t index = owner.first; index != owner.last;) {
            const Member& member = declarations_->members[index];
            index = member.end;
            if (member.section != section)
                continue;
            if (!isBegun && !isFirst && needsEvenByte(owner, section))
                writeEvenByte(section, {.levels = levels,
                                        .origin = {.file = owner.place.file, .line = member.line}});
            isBegun = true;
            writeMember(owner, member, levels);
        }
        isFirst = isFirst && !isBegun;
    }
}

// Whether the first variable that has a place would begin at any bit or byte.
bool Writer::needsEvenByte(const Declaration& owner, Section section) const {
    std::string folded;
    for (std::uint32_t index = owner.first; index != owner.last;) {
        const Member& member = declarations_->members[index];
        index = member.end;
        if (member.section != section || (member.hidden && !showHidden_))
            continue;
        if (member.kind != MemberKind::elementary || member.dimensions != 0)
            return false;
        assignFolded(folded, member.type.in(declarations_->textOf(owner)));
        return findType(folded)->alignment != Alignment::word;
    }
    return false;
}

// An array without elements takes no place and yields no item, but begins at an even byte.
void Writer::writeEvenByte(Section section, Context context) {
    const SectionNames& names = kSectionNames[static_cast<std::size_t>(section)];
    beginLine(context);
    target_->text.append(names.variable).append(" : Array[1..0] of Byte;");
    writeComment("", std::string(names.word).append(" begins at an even byte"));
    endLine();
}

void Writer::writeMember(const Declaration& owner, const Member& member, std::uint32_t levels) {
    const Context context{.levels = levels,
                          .origin = {.file = owner.place.file, .line = member.line}};
    writeLeading(owner, member, context);
    beginLine(context);
    writeName(member.name.in(declarations_->textOf(owner)));
    writeAttributes(member);
    target_->text += " : ";
    writeType(owner, member);
    writeComment(member.trailing.in(declarations_->textOf(owner)), noteOn(owner, member));
    endLine();
    writeContent(owner, member, levels);
}

void Writer::writeContent(const Declaration& owner, const Member& member, std::uint32_t levels) {
    const Context context{.levels = levels,
                          .origin = {.file = owner.place.file, .line = member.line}};
    const Context inside{.levels = levels + 1, .origin = context.origin};
    switch (member.kind) {
    case MemberKind::structure:
        for (auto index = static_cast<std::uint32_t>(&member - declarations_->members.data()) + 1;
             index != member.end;) {
            const Member& child = declarations_->members[index];
            writeMember(owner, child, levels + 1);
            index = child.end;
        }
        break;
    case MemberKind::declared:
        writeMembers(declarations_->all[member.target], levels + 1);
        break;
    case MemberKind::system:
        if (systemTypes()[member.target].members.empty())
            return;
        writeSystemMembers(systemTypes()[member.target], inside);
        break;
    default:
        return;
    }
    writeLine(context, "END_STRUCT;");
}

void Writer::writeSystemMembers(const SystemType& type, Context context) {
    for (const std::string_view declaration : type.members)
        writeLine(context, declaration);
}

void Writer::writeLeading(const Declaration& owner, const Member& member, Context context) {
    forEachCommentLine(member.leading.in(declarations_->textOf(owner)), [&](std::string_view line) {
        beginLine(context);
        target_->text.append(line.empty() ? "//" : "// ").append(line);
        endLine();
    });
}

void Writer::writeName(std::string_view name) {
    if (isPlainName(name))
        target_->text.append(name);
    else
        target_->text.append("\"").append(name).append("\"");
}

void Writer::writeAttributes(const Member& member) {
    const bool hidden = member.hidden && !showHidden_;
    const bool readOnly = member.readOnly || (member.hidden && showHidden_);
    if (hidden)
        target_->text.append(" { ExternalAccessible := 'False'");
    if (readOnly)
        target_->text.append(hidden ? "; " : " { ").append("ExternalWritable := 'False'");
    if (hidden || readOnly)
        target_->text += '}';
}

void Writer::writeType(const Declaration& owner, const Member& member) {
    std::string& text = target_->text;
    if (member.kind == MemberKind::pointer) {
        writeArea(kPointerUnits);
        return;
    }
    const SystemType* const system =
        member.kind == MemberKind::system ? &systemTypes()[member.target] : nullptr;
    if (system != nullptr && system->bytes != 0) {
        writeArea(system->bytes / 2U * countOf(member));
        return;
    }
    writeDimensions(member);
    if (member.kind == MemberKind::elementary) {
        text.append(member.type.in(declarations_->textOf(owner)));
        if (member.hasLength)
            text.append("[")
                .append(std::to_string(
                    declarations_->bounds[member.bounds + member.dimensions].highest))
                .append("]");
    } else if (system != nullptr && system->members.empty()) {
        text.append(system->word);
    } else {
        text.append("Struct");
        return;
    }
    text += ';';
}

void Writer::writeDimensions(const Member& member) {
    if (member.dimensions == 0)
        return;
    std::string& text = target_->text;
    text.append("Array[");
    for (std::uint32_t index = 0; index != member.dimensions; ++index) {
        const Bounds& bounds = declarations_->bounds[member.bounds + index];
        text.append(index == 0 ? "" : ", ").append(std::to_string(bounds.lowest));
        text.append("..").append(std::to_string(bounds.highest));
    }
    text.append("] of ");
}

void Writer::writeArea(std::uint64_t units) {
    target_->text.append("Array[1..").append(std::to_string(units)).append("] of ");
    target_->text.append(kUnitType).append(";");
}

std::uint64_t Writer::countOf(const Member& member) const {
    std::uint64_t count = 1;
    for (std::uint32_t index = 0; index != member.dimensions; ++index)
        count *= static_cast<std::uint64_t>(declarations_->bounds[member.bounds + index].count());
    return count;
}

//    // COMMENT (NOTE)
void Writer::writeComment(std::string_view comments, std::string_view note) {
    std::string& text = target_->text;
    bool isFirst = true;
    const auto begin = [&] {
        text.append(isFirst ? "   // " : " ");
        isFirst = false;
    };
    forEachCommentLine(comments, [&](std::string_view line) {
        if (line.empty())
            return;
        begin();
        text.append(line);
    });
    if (note.empty())
        return;
    begin();
    text.append("(").append(note).append(")");
}

std::string Writer::sourceOf(const Declaration& declaration) const {
    const bool isType = declaration.kind == DeclarationKind::type;
    return std::string(isType ? "type " : "function block ")
        .append(declaration.name)
        .append(", ")
        .append(baseName(names_[declaration.place.file]))
        .append(" line ")
        .append(std::to_string(declaration.place.line));
}

std::string Writer::noteOn(const Declaration& owner, const Member& member) const {
    switch (member.kind) {
    case MemberKind::declared:
        return sourceOf(declarations_->all[member.target]);
    case MemberKind::system:
        return "type " + std::string(member.type.in(declarations_->textOf(owner)));
    case MemberKind::pointer:
        return "VAR_IN_OUT, a pointer of 6 bytes";
    default:
        return {};
    }
}

void Writer::beginLine(Context context) {
    target_->origins.push_back(context.origin);
    for (std::uint32_t level = 0; level != context.levels; ++level)
        target_->text.append(kIndentation);
}

void Writer::writeLine(Context context, std::string_view text) {
    if (text.empty())
        context.levels = 0;
    beginLine(context);
    target_->text.append(text);
    endLine();
}

} // namespace corvane::workbench::plugins::s7Driver::prepare
