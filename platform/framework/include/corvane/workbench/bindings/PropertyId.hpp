#pragma once

namespace corvane::workbench::bindings {

/// Names a property of one controller: the address of the field that holds its value.
class PropertyId {
public:
    template <class Field>
    explicit PropertyId(const Field& field) : address_(&field) {}

    [[nodiscard]] const void* address() const { return address_; }

    friend bool operator==(PropertyId, PropertyId) = default;

private:
    const void* address_;
};

} // namespace corvane::workbench::bindings
