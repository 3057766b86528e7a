#include "prepare/Measure.hpp"

#include "dbimport/facts/FoldCase.hpp"
#include "prepare/SystemTypes.hpp"

#include <algorithm>
#include <limits>

namespace corvane::workbench::plugins::s7Driver::prepare {

namespace {

// At most, of a line: marks, attributes, numbers and what is said of where a type comes from.
constexpr std::uint64_t kLineBytes = 240;
constexpr std::uint64_t kDimensionBytes = 26;
constexpr std::uint64_t kIndentation = 3;

constexpr std::string_view kEndStruct = "end_struct";

std::uint64_t plus(std::uint64_t one, std::uint64_t other) {
    std::uint64_t sum = 0;
    return __builtin_add_overflow(one, other, &sum) ? std::numeric_limits<std::uint64_t>::max()
                                                    : sum;
}

std::uint64_t times(std::uint64_t one, std::uint64_t other) {
    std::uint64_t product = 0;
    return __builtin_mul_overflow(one, other, &product) ? std::numeric_limits<std::uint64_t>::max()
                                                        : product;
}

Measure measureOf(const SystemType& type) {
    if (type.members.empty())
        return {};
    return {.elements = type.members.size(),
            .lines = type.members.size(),
            .bytes = type.members.size() * kLineBytes,
            .levels = 0};
}

// The import takes it for the end of a structure, in quotes too.
void expectImportableName(std::string_view name, const Place& place) {
    if (name.size() < kEndStruct.size() || name.size() > kEndStruct.size() + 1)
        return;
    if (equalsFolded(name.substr(0, kEndStruct.size()), kEndStruct) &&
        (name.size() == kEndStruct.size() || name.back() == ';'))
        throw DeclarationFault(
            {.reason = Reason::nameNotImportable, .place = place, .subject = std::string(name)});
}

} // namespace

void Measurer::measure(std::uint32_t declaration) {
    begun_.resize(declarations_->all.size());
    begin(declaration);
    while (!frames_.empty())
        if (step(frames_.back()))
            frames_.pop_back();
}

void Measurer::begin(std::uint32_t declaration) {
    if (begun_[declaration])
        return;
    begun_[declaration] = true;
    if (!declarations_->all[declaration].failure)
        frames_.push_back({.declaration = declaration,
                           .next = declarations_->all[declaration].first,
                           .around = {}});
}

// Whether the frame is done. Where a member needs a type that is not measured yet, that comes
// first.
bool Measurer::step(Frame& frame) try {
    const Declaration& owner = declarations_->all[frame.declaration];
    while (frame.next != owner.last) {
        Member& member = declarations_->members[frame.next];
        if (member.kind == MemberKind::unresolved || member.kind == MemberKind::structure)
            catalogue_->resolve(owner, member);
        if (needs(member)) {
            begin(member.target);
            return false;
        }
        addMember(frame, owner, member);
        frame.next = member.kind == MemberKind::pointer ? member.end : frame.next + 1;
    }
    finish(frame);
    return true;
} catch (DeclarationFault& fault) {
    declarations_->all[frame.declaration].failure = std::move(fault.failure);
    return true;
}

// Throws where the type has failed, and where it is one of those that wait for this one.
bool Measurer::needs(const Member& member) {
    if (member.kind != MemberKind::declared)
        return false;
    const Declaration& type = declarations_->all[member.target];
    if (type.failure)
        throw DeclarationFault(*type.failure);
    if (type.measure)
        return false;
    if (!begun_[member.target])
        return true;
    const Declaration& owner = declarations_->all[frames_.back().declaration];
    throw DeclarationFault(
        {.reason = Reason::containsItself,
         .place = declarations_->placeOf(owner.place.file, member.type, member.line),
         .subject = type.name,
         .other = type.place});
}

std::uint64_t Measurer::countOf(const Declaration& owner, const Member& member) const {
    std::uint64_t count = 1;
    bool isEmpty = false;
    for (std::uint32_t index = 0; index != member.dimensions; ++index) {
        const std::int64_t size = declarations_->bounds[member.bounds + index].count();
        if (size > std::numeric_limits<std::uint32_t>::max())
            throw DeclarationFault(
                {.reason = Reason::tooLarge,
                 .place = declarations_->placeOf(owner.place.file, member.name, member.line),
                 .subject = {}});
        isEmpty |= size == 0;
        count = times(count, static_cast<std::uint64_t>(size));
    }
    return isEmpty ? 0 : count;
}

void Measurer::addMember(Frame& frame, const Declaration& owner, Member& member) {
    while (!frame.around.empty() && frame.around.back().end <= frame.next)
        frame.around.pop_back();
    const std::uint64_t repeated = frame.around.empty() ? 1 : frame.around.back().times;
    const bool isPointer = member.kind == MemberKind::pointer;
    const std::uint64_t count = isPointer ? 1 : countOf(owner, member);
    const std::uint64_t inner = member.hidden ? 0 : times(repeated, count);
    Measure& sum = frame.sum;

    Measure type{};
    std::uint64_t units = isPointer ? kPointerUnits : 0;
    bool opens = member.kind == MemberKind::structure;
    if (member.kind == MemberKind::declared) {
        type = *declarations_->all[member.target].measure;
        opens = true;
    } else if (member.kind == MemberKind::system) {
        const SystemType& row = systemTypes()[member.target];
        type = measureOf(row);
        opens = !row.members.empty();
        units = times(row.bytes / 2U, count);
    }
    const auto around = static_cast<std::uint32_t>(frame.around.size());
    const std::uint32_t levels = around + (opens ? 1 + type.levels : 0);
    const Place place = declarations_->placeOf(owner.place.file, member.name, member.line);
    expectImportableName(member.name.in(declarations_->textOf(owner)), place);
    if (levels > limits_.import.structLevels)
        throw DeclarationFault({.reason = Reason::tooDeep, .place = place, .subject = {}});

    sum.levels = std::max(sum.levels, levels);
    sum.elements = plus(sum.elements, repeated + (member.dimensions != 0 || units != 0 ? 1 : 0));
    sum.elements = plus(sum.elements, times(inner, plus(1, type.elements)));
    sum.elements = plus(sum.elements, member.hidden ? 0 : times(repeated, units));
    sum.lines = plus(sum.lines, plus(opens ? 2 : 1, type.lines));
    const std::uint64_t indentation = kIndentation * (around + 3);
    sum.bytes = plus(sum.bytes, plus(type.bytes, times(indentation, plus(type.lines, 2))));
    sum.bytes = plus(sum.bytes, kLineBytes + 2ULL * member.type.size + member.name.size +
                                    member.dimensions * kDimensionBytes);
    addComments(frame, owner, member);
    if (sum.elements > limits_.import.elements || sum.bytes > limits_.outputBytes ||
        units > std::numeric_limits<std::int32_t>::max())
        throw DeclarationFault({.reason = Reason::tooLarge, .place = place, .subject = {}});
    if (member.kind == MemberKind::structure)
        frame.around.push_back({.end = member.end, .times = inner});
}

void Measurer::addComments(Frame& frame, const Declaration& owner, const Member& member) const {
    const std::string_view text = member.leading.in(declarations_->textOf(owner));
    const auto lines = static_cast<std::uint64_t>(
        std::ranges::count_if(text, [](char byte) { return byte == '\n' || byte == '\r'; }));
    if (!text.empty())
        frame.sum.lines += lines + 1;
    frame.sum.bytes =
        plus(frame.sum.bytes, text.size() + member.trailing.size +
                                  times(lines + 1, kIndentation * (frame.around.size() + 3) + 4));
}

void Measurer::finish(const Frame& frame) {
    Measure sum = frame.sum;
    const std::uint64_t markers = kSections - 1;
    sum.lines += markers;
    sum.bytes += markers * kLineBytes;
    sum.elements += markers;
    declarations_->all[frame.declaration].measure = sum;
}

} // namespace corvane::workbench::plugins::s7Driver::prepare
