#pragma once

namespace corvane::workbench::bindings {

/// Names a property of one controller: the address of the field that holds its value. Valid as long
/// as the controller stays where it is, which is for its life. Never looked through: two ids are
/// the same where the field is.
class PropertyId {
public:
    /// `field` is a member of the controller, or the controller itself for what concerns all of it.
    template <class Field>
    explicit PropertyId(const Field& field) : address_(&field) {}

    [[nodiscard]] const void* address() const { return address_; }

    friend bool operator==(PropertyId, PropertyId) = default;

private:
    const void* address_;
};

} // namespace corvane::workbench::bindings
