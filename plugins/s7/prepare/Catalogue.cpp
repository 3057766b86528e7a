#include "prepare/Catalogue.hpp"

#include "dbimport/facts/FoldCase.hpp"
#include "dbimport/facts/TypeTable.hpp"
#include "prepare/DeclarationParser.hpp"
#include "prepare/SystemTypes.hpp"

#include <algorithm>

namespace corvane::workbench::plugins::s7Driver::prepare {

namespace {

std::uint32_t rowOf(const SystemType* type) {
    return static_cast<std::uint32_t>(type - systemTypes().data());
}

// Of UDT 10 the word is looked up apart from the number, whatever blanks stand between.
void assignKey(std::string& key, std::string_view type, bool numbered) {
    assignFolded(key, type);
    if (!numbered) {
        if (!key.empty() && key.back() >= '0' && key.back() <= '9')
            key = keyOf(type);
        return;
    }
    const std::size_t word = type.find_first_of(" \t\r\n/(");
    const std::size_t number = type.find_last_not_of("0123456789") + 1;
    key = keyOf(type.substr(0, word), type.substr(number));
}

bool isFunctionBlockKey(std::string_view key) {
    const std::size_t digits = key.find_first_of("0123456789");
    return digits != std::string_view::npos &&
           (key.substr(0, digits) == "fb" || key.substr(0, digits) == "sfb") &&
           key.find_first_not_of("0123456789", digits) == std::string_view::npos;
}

bool isText(std::string_view key) { return key == "string" || key == "wstring"; }

} // namespace

Catalogue::Catalogue(Declarations& declarations)
    : declarations_(&declarations), repetitions_(declarations.all.size()) {
    for (std::uint32_t index = 0; index != declarations.all.size(); ++index) {
        const Declaration& declaration = declarations.all[index];
        if (declaration.kind == DeclarationKind::dataBlock)
            add(blocks_, declaration.name, index);
        else
            add(types_, declaration.key, index);
    }
}

// The first one keeps the name. What was found to be wrong with it stays.
void Catalogue::add(Index& index, const std::string& key, std::uint32_t declaration) {
    if (key.empty())
        return;
    const auto [entry, isNew] = index.try_emplace(key, declaration);
    if (isNew)
        return;
    Declaration& first = declarations_->all[entry->second];
    Declaration& second = declarations_->all[declaration];
    repetitions_[declaration] = haveSameContent(first, second);
    if (repetitions_[declaration])
        return;
    const auto fail = [](Declaration& one, const Declaration& other) {
        if (!one.failure || one.failure->reason != Reason::declaredTwice)
            one.failure = {.reason = Reason::declaredTwice,
                           .place = one.place,
                           .subject = one.name,
                           .other = other.place};
    };
    fail(first, second);
    fail(second, first);
}

bool Catalogue::haveSameContent(const Declaration& one, const Declaration& other) const {
    const std::string_view oneText = declarations_->textOf(one);
    const std::string_view otherText = declarations_->textOf(other);
    const auto sameText = [&](Text left, Text right) {
        return left.in(oneText) == right.in(otherText);
    };
    if (one.kind != other.kind || one.access != other.access || one.typeKey != other.typeKey ||
        one.hasStructure != other.hasStructure ||
        one.last - one.first != other.last - other.first || one.failure.has_value() ||
        other.failure.has_value())
        return false;
    for (std::uint32_t index = 0; index != one.last - one.first; ++index) {
        const Member& left = declarations_->members[one.first + index];
        const Member& right = declarations_->members[other.first + index];
        if (!sameText(left.name, right.name) ||
            !std::ranges::equal(left.type.in(oneText), right.type.in(otherText),
                                [](char a, char b) { return foldCase(a) == foldCase(b); }) ||
            left.dimensions != right.dimensions || left.hasLength != right.hasLength ||
            left.section != right.section || left.hidden != right.hidden ||
            left.readOnly != right.readOnly || left.end - one.first != right.end - other.first)
            return false;
        const std::uint32_t count = left.dimensions + (left.hasLength ? 1U : 0U);
        for (std::uint32_t bound = 0; bound != count; ++bound) {
            const Bounds& a = declarations_->bounds[left.bounds + bound];
            const Bounds& b = declarations_->bounds[right.bounds + bound];
            if (a.lowest != b.lowest || a.highest != b.highest)
                return false;
        }
    }
    return true;
}

const std::uint32_t* Catalogue::findType(std::string_view key) const {
    const auto found = types_.find(key);
    return found == types_.end() ? nullptr : &found->second;
}

void Catalogue::resolve(const Declaration& owner, Member& member) {
    const std::string_view type = member.type.in(declarations_->textOf(owner));
    const auto fail = [&](Reason reason, std::string_view subject) {
        throw DeclarationFault(
            {.reason = reason,
             .place = declarations_->placeOf(owner.place.file, member.type, member.line),
             .subject = std::string(subject)});
    };
    if (member.kind == MemberKind::structure) {
        key_.clear();
    } else {
        assignKey(key_, type, member.numberedType);
        const std::uint32_t* const declared = findType(key_);
        const SystemType* const system =
            member.quotedType ? findQuotedSystemType(key_) : findSystemType(key_);
        if (!member.quotedType && s7Driver::findType(key_) != nullptr) {
            member.kind = MemberKind::elementary;
            if (member.hasLength && !isText(key_))
                fail(Reason::expected, ";");
        } else if (declared != nullptr) {
            member.kind = MemberKind::declared;
            member.target = *declared;
        } else if (isOfUnknownSize(key_)) {
            fail(Reason::sizeUnknown, type);
        } else if (system != nullptr) {
            member.kind = MemberKind::system;
            member.target = rowOf(system);
        } else {
            fail(isFunctionBlockKey(key_) ? Reason::functionBlockMissing : Reason::typeMissing,
                 type);
        }
    }
    if (owner.kind == DeclarationKind::functionBlock && member.section == Section::inOut)
        resolveInOut(owner, member);
}

// What has more than one value is passed by its address.
void Catalogue::resolveInOut(const Declaration&, Member& member) const {
    const bool isStructured =
        member.dimensions != 0 || member.kind == MemberKind::structure ||
        member.kind == MemberKind::declared ||
        (member.kind == MemberKind::system && systemTypes()[member.target].structured) ||
        (member.kind == MemberKind::elementary &&
         (isText(key_) || key_ == "date_and_time" || key_ == "dtl"));
    if (isStructured)
        member.kind = MemberKind::pointer;
}

Catalogue::BlockType Catalogue::resolve(const Declaration& block) const {
    if (const std::uint32_t* const declared = findType(block.typeKey))
        return {.declaration = *declared};
    const SystemType* const system =
        block.quotedType ? findQuotedSystemType(block.typeKey) : findSystemType(block.typeKey);
    if (system != nullptr && !system->members.empty())
        return {.declaration = std::nullopt, .systemType = rowOf(system)};
    Reason reason = Reason::typeMissing;
    if (isOfUnknownSize(block.typeKey))
        reason = Reason::sizeUnknown;
    else if (isFunctionBlockKey(block.typeKey))
        reason = Reason::functionBlockMissing;
    throw DeclarationFault({.reason = reason, .place = block.typePlace, .subject = block.typeName});
}

} // namespace corvane::workbench::plugins::s7Driver::prepare
