#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/utils/json/Encoder.hpp>
#include <corvane/utils/thread/Owner.hpp>

#include <cstdint>
#include <expected>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace corvane::workbench::model {

class Element;
class ElementReferenceData;
class Internals;

/// Where references wait for elements that are missing, which is the host's affair.
class CORVANE_EXPORT ReferenceKeeper {
public:
    virtual ~ReferenceKeeper() = default;

    /// Lets a reference that waits here wait no more.
    virtual void forget(ElementReferenceData& data) = 0;

protected:
    ReferenceKeeper() = default;
    ReferenceKeeper(const ReferenceKeeper&) = default;
    ReferenceKeeper& operator=(const ReferenceKeeper&) = default;
};

/// What all references to one element share: the element, or the text of one that is missing.
///
/// In documents a reference is the path of names from the project's root, "/PLC/Default Command",
/// or, without the leading "/", the name of an element at the top of the same import document. In a
/// name "~" is written "~0" and "/" is written "~1".
class CORVANE_EXPORT ElementReferenceData {
public:
    ElementReferenceData(const ElementReferenceData&) = delete;
    ElementReferenceData& operator=(const ElementReferenceData&) = delete;

    /// The element; null while it is missing.
    [[nodiscard]] Element* element() const { return element_; }

    /// The text in documents; the last known one while the element is missing. Valid until the
    /// tree changes.
    [[nodiscard]] std::string_view text() const;

    /// Writes the text as the member `key`, escaped as paths are. Throws what the stream throws.
    void saveTo(utils::json::encoder::Object& members, utils::json::encoder::Key key) const;

private:
    friend class ElementReference;
    friend class Internals;
    explicit ElementReferenceData(std::string text) : text_(std::move(text)) {}
    ~ElementReferenceData() = default;
    void release();

    std::uint32_t uses_ = 0;
    Element* element_ = nullptr;
    ElementReferenceData* nextOfElement_ = nullptr; // an element may have several of these
    ReferenceKeeper* keeper_ = nullptr;             // where it waits while the element is missing
    mutable std::string text_;
    mutable std::uint64_t textEpoch_ = 0; // of the tree in which text_ was formed
};

/// A reference to another element of the project, one pointer wide. It follows its element through
/// renames and moves; when the element goes, it keeps the element's last path.
///
///     if (const auto target = command.element())
///         use(**target);
///     else
///         return std::unexpected(target.error());
///
/// Copies share what they know and count themselves without a lock: making, copying and destroying
/// references is for the owner of the model, like everything of an element.
class CORVANE_EXPORT ElementReference {
public:
    /// The empty reference.
    ElementReference() = default;
    ElementReference(const ElementReference& other) : ElementReference(other.data_) {}
    ElementReference(ElementReference&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)) {}
    ElementReference& operator=(ElementReference other) noexcept {
        std::swap(data_, other.data_);
        return *this;
    }
    ~ElementReference() {
        if (data_ == nullptr)
            return;
        utils::thread::expectOwner();
        if (--data_->uses_ == 0)
            data_->release();
    }

    /// True for the reference that refers to nothing.
    [[nodiscard]] bool empty() const { return data_ == nullptr; }

    /// The element, or the translated text that says that it is missing. Not to be asked of an
    /// empty reference, which is reported the same way.
    [[nodiscard]] std::expected<Element*, std::u16string> element() const;

    /// The element; null where it is missing or the reference is empty. For those who need no text
    /// that says so.
    [[nodiscard]] Element* elementOrNull() const {
        return data_ == nullptr ? nullptr : data_->element();
    }

    /// The text in documents, "" for the empty reference. Valid until the tree changes.
    [[nodiscard]] std::string_view text() const {
        return data_ == nullptr ? std::string_view() : data_->text();
    }

    /// Writes the text as the member `key`; an empty reference is an empty text.
    void saveTo(utils::json::encoder::Object& members, utils::json::encoder::Key key) const;

    /// Whether both refer to the same element or to the same missing one.
    friend bool operator==(const ElementReference& a, const ElementReference& b) {
        return a.data_ == b.data_ ||
               (a.data_ != nullptr && b.data_ != nullptr && sameTarget(*a.data_, *b.data_));
    }

private:
    friend class Internals;
    explicit ElementReference(ElementReferenceData* data) : data_(data) {
        if (data_ == nullptr)
            return;
        utils::thread::expectOwner();
        ++data_->uses_;
    }
    static bool sameTarget(const ElementReferenceData& a, const ElementReferenceData& b);

    ElementReferenceData* data_ = nullptr;
};

/// A reference as an import document carries it: to an element that exists, or to one that the
/// document itself brings. It is a text and follows nothing: made and written while one document
/// is, during which the tree stays as it is.
class CORVANE_EXPORT ImportReference {
public:
    /// A reference that is not set.
    ImportReference() = default;
    explicit ImportReference(const ElementReference& reference) : text_(reference.text()) {}

    /// A reference to the element called `name` at the top of the same import document.
    [[nodiscard]] static ImportReference makeInternalReference(std::string_view name);

    /// Whether it is set.
    [[nodiscard]] explicit operator bool() const { return !text_.empty(); }

    /// The text in the document; "" when the reference is not set.
    [[nodiscard]] const std::string& text() const { return text_; }

    /// Writes the text as the member `key`. Throws what the stream throws.
    void saveTo(utils::json::encoder::Object& members, utils::json::encoder::Key key) const {
        members.addStringView(key, text_);
    }

private:
    std::string text_;
};

/// `name` as it stands in a path: "~" becomes "~0" and "/" becomes "~1".
[[nodiscard]] CORVANE_EXPORT std::string escapeName(std::string_view name);

/// The name that `escaped` stands for. A "~" that begins no escape stands for itself.
[[nodiscard]] CORVANE_EXPORT std::string unescapeName(std::string_view escaped);

} // namespace corvane::workbench::model
