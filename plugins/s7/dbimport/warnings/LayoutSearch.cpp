#include "dbimport/warnings/LayoutSearch.hpp"

#include "dbimport/tree/ArrayNode.hpp"
#include "dbimport/tree/MemoryPosition.hpp"
#include "dbimport/tree/RootNode.hpp"
#include "dbimport/tree/ScalarNode.hpp"

#include <algorithm>
#include <cstdint>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace corvane::workbench::plugins::s7Driver {

namespace {

/// A hidden array may have any size. Beyond this one, in bytes, all are as good as the same.
constexpr std::uint64_t kHugeSize = std::uint64_t{1} << 40U;

std::uint64_t cappedProduct(std::uint64_t count, std::uint64_t size) {
    return size != 0 && count > kHugeSize / size ? kHugeSize : count * size;
}

/// The bytes of an array of such variables, from its beginning at an even byte. Each run of the
/// last dimension begins at a byte.
std::uint64_t arraySize(const ScalarNode& element, const ArrayIndex& index) {
    const std::uint64_t count = index.elementCount();
    const TypeFacts& facts = element.typeFacts();
    if (facts.alignment == Alignment::bit) {
        const std::uint64_t run = index.dimensionSizes().back();
        const auto bytes = (run + MemoryPosition::kBitsPerByte - 1) / MemoryPosition::kBitsPerByte;
        return cappedProduct(count / run, bytes);
    }
    const std::uint64_t size = facts.size + facts.characterSize * element.textLength();
    return cappedProduct(count, facts.alignment == Alignment::word ? size + size % 2 : size);
}

/// The node where it is of this class, from which none derives: a comparison, where a cast would
/// look through the bases of each node of a large block.
template <class Node>
const Node* as(const DataBlockNode& node) {
    static_assert(std::is_final_v<Node>);
    return typeid(node) == typeid(Node) ? static_cast<const Node*>(&node) : nullptr;
}

/// An array and the node of its element type are one declaration.
std::size_t declarationsBelow(const DataBlockNode& node) {
    if (as<ArrayNode>(node) != nullptr)
        return declarationsBelow(*node.children().front());
    std::size_t count = 0;
    for (const auto& child : node.children())
        count += 1 + declarationsBelow(*child);
    return count;
}

class Search {
public:
    explicit Search(const LayoutQuestions& questions) : asked_(questions) {}

    LayoutFindings search(const RootNode& root) {
        visitMembers(*root.children().front());
        return std::move(findings_);
    }

private:
    struct Positions {
        MemoryPosition here;
        MemoryPosition plc;
    };

    struct Sizes {
        std::uint64_t here;
        std::uint64_t plc;
    };

    /// A node, and which declaration it is of.
    struct Found {
        const DataBlockNode* node;
        std::size_t declaration;

        [[nodiscard]] FoundVariable variable() const { return {node->name(), declaration}; }
    };

    void visit(const Found& found) {
        const DataBlockNode& node = *found.node;
        if (!node.access().externalAccessible && !hidden_)
            hidden_ = found;
        if (const auto* const scalar = as<ScalarNode>(node))
            visitScalar(*scalar, found);
        else if (const auto* const array = as<ArrayNode>(node))
            visitArray(*array, found);
        else
            visitMembers(node);
    }

    // Only the first of each kind is told, so a large block is seldom walked to its end.
    [[nodiscard]] bool isComplete() const {
        return (findings_.shift || !asked_.shift) && (findings_.withoutItem || !asked_.withoutItem);
    }

    void visitScalar(const ScalarNode& scalar, const Found& found) {
        const auto place = [&](MemoryPosition& position) {
            return placeScalar(scalar.typeFacts(), scalar.textLength(), position).place;
        };
        const MemoryPosition inPlc = place(at_.plc);
        if (!scalar.access().externalAccessible)
            return;
        const MemoryPosition here = place(at_.here);
        if (!scalar.typeFacts().producesItem) {
            if (!findings_.withoutItem)
                findings_.withoutItem = found.variable();
            return;
        }
        ++items_;
        if (here == inPlc)
            hidden_.reset(); // only the gap in front of this one was filled
        else if (!findings_.shift && hidden_)
            findings_.shift = {hidden_->variable(), found.variable()};
    }

    void visitMembers(const DataBlockNode& parent) {
        alignToWord(parent);
        for (const auto& child : parent.children()) {
            if (isComplete())
                return;
            visit({child.get(), next_++});
        }
        alignToWord(parent);
    }

    void visitArray(const ArrayNode& array, const Found& found) {
        const Found element{array.children().front().get(), found.declaration};
        alignToWord(array);
        if (array.index().elementCount() == 0)
            next_ += declarationsBelow(*element.node);
        else if (const auto* const scalar = as<ScalarNode>(*element.node))
            visitScalars(array, *scalar, element);
        else
            visitStructs(array, element);
        alignToWord(array);
    }

    void visitScalars(const ArrayNode& array, const ScalarNode& scalar, const Found& element) {
        const Positions begin = at_;
        visit(element);
        const std::uint64_t size = arraySize(scalar, array.index());
        moveTo(array, begin, {size, size});
    }

    // All elements are alike, as each begins at a word. Only where the first one is of another size
    // in the PLC is there more to be found in the second.
    void visitStructs(const ArrayNode& array, const Found& element) {
        const Positions begin = at_;
        const std::size_t inside = next_;
        const std::size_t items = items_;
        const std::uint64_t count = array.index().elementCount();
        visit(element);
        const Sizes sizes = {at_.here.byteOffset - begin.here.byteOffset,
                             at_.plc.byteOffset - begin.plc.byteOffset};
        if (count > 1 && sizes.here != sizes.plc && items_ != items && !findings_.shift) {
            next_ = inside;
            visit(element);
        }
        moveTo(array, begin, {cappedProduct(count, sizes.here), cappedProduct(count, sizes.plc)});
    }

    void moveTo(const DataBlockNode& node, const Positions& begin, const Sizes& sizes) {
        at_ = begin;
        const auto advance = [](MemoryPosition& position, std::uint64_t bytes) {
            position.byteOffset = std::min(position.byteOffset + bytes, kHugeSize);
        };
        advance(at_.plc, sizes.plc);
        if (node.access().externalAccessible)
            advance(at_.here, sizes.here);
    }

    void alignToWord(const DataBlockNode& node) {
        at_.plc.alignToWord();
        if (node.access().externalAccessible)
            at_.here.alignToWord();
    }

    LayoutQuestions asked_;
    Positions at_;
    std::size_t next_ = 0;        // declaration
    std::size_t items_ = 0;       // that were passed
    std::optional<Found> hidden_; // the first one since an address was last the PLC's
    LayoutFindings findings_;
};

} // namespace

LayoutFindings findInLayout(const RootNode& root, const LayoutQuestions& questions) {
    return Search(questions).search(root);
}

} // namespace corvane::workbench::plugins::s7Driver
