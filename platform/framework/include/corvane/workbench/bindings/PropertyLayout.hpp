#pragma once

#include <corvane/utils/Export.hpp>

#include <cstddef>
#include <cstdint>
#include <expected>
#include <string>
#include <vector>

namespace corvane::workbench::bindings {

class PropertyController;

/// Success, or the translated text that says what is wrong with a value. The text is shown at the
/// field and in the list of problems, behind the field's label; it stops neither saving nor
/// loading.
using Validation = std::expected<void, std::u16string>;

/// What a controller's configuration declared: its properties and its own reactions to changes.
///
/// Everything in it is stated relative to the controller (a field by its offset, a callback by a
/// plain function), so all controllers that declare the same share one layout, and a million
/// elements of a class cost the memory of one.
struct PropertyLayout {
    // Plain functions, called with the controller that declared them; Reaction after each change.
    using Validator = Validation (*)(PropertyController&);
    using Visibility = bool (*)(const PropertyController&);
    using Reaction = void (*)(PropertyController&);

    /// A field that forms show: where it stands, and what says whether it is right and shown.
    struct Property {
        std::uint32_t offset;  // of the field, in bytes from the controller
        bool isReference;      // the field is a model::ElementReference
        Validator validator;   // may be null
        Visibility visibility; // may be null: always visible
        friend bool operator==(const Property&, const Property&) = default;
    };

    /// A reaction to the field at `offset`, in bytes from the controller: called after the field's
    /// validator and before the open forms, at each publication of the field.
    struct Subscription {
        std::uint32_t offset;
        Reaction reaction;
        friend bool operator==(const Subscription&, const Subscription&) = default;
    };

    // Both in the order of declaration, which is the order of publication.
    std::vector<Property> properties;
    std::vector<Subscription> subscriptions;

    friend bool operator==(const PropertyLayout&, const PropertyLayout&) = default;
};

/// Owns one use of a shared layout. The layouts belong to the owner of the model, like all that is
/// configured by them; one that nobody uses any more is freed.
class CORVANE_EXPORT SharedLayout {
public:
    /// Uses none.
    SharedLayout() = default;
    /// The shared layout equal to `layout`, which is copied only if there is none yet.
    explicit SharedLayout(const PropertyLayout& layout);
    SharedLayout(SharedLayout&& other) noexcept : entry_(other.entry_) { other.entry_ = nullptr; }
    SharedLayout& operator=(SharedLayout&& other) noexcept;
    ~SharedLayout() { release(); }

    /// The layout; an empty one where nothing was configured.
    [[nodiscard]] const PropertyLayout& get() const {
        return entry_ == nullptr ? none() : entry_->layout;
    }

private:
    struct Entry {
        PropertyLayout layout;
        std::size_t uses = 0;
    };
    struct Pool;
    [[nodiscard]] static const PropertyLayout& none();
    void release();
    Entry* entry_ = nullptr;
};

} // namespace corvane::workbench::bindings
