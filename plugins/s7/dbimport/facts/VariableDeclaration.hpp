#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {

struct TypeFacts;

/// Who outside the PLC may do what with a variable.
struct ExternalAccess {
    bool externalAccessible = true;
    bool externalWritable = true;

    /// What is left of it inside something that has `parent`'s: a member of a hidden struct is
    /// hidden, a member of a read-only one is read-only.
    [[nodiscard]] constexpr ExternalAccess within(ExternalAccess parent) const {
        return {externalAccessible && parent.externalAccessible,
                externalWritable && parent.externalWritable};
    }
};

/// The bounds of one dimension of an array; both belong to it. Not compared with each other.
struct Dimension {
    std::int32_t low;
    std::int32_t high;
};

struct ScalarShape {
    /// The n of String[n], in characters; empty where none is declared.
    std::optional<std::uint64_t> elementCount;
};

struct ArrayShape {
    std::vector<Dimension> dimensions;
};

/// One variable as the file declares it.
struct VariableDeclaration {
    std::string name;        ///< the bytes of the file, without quotes
    std::string typeKeyword; ///< lower case
    /// What the keyword stands for; null for struct, array and a word that is no type.
    const TypeFacts* type = nullptr;
    ExternalAccess access;
    std::variant<ScalarShape, ArrayShape> shape;
    // Where in the file they begin, in bytes from 0.
    std::uint64_t place = 0;
    std::uint64_t typePlace = 0;
};

} // namespace corvane::workbench::plugins::s7Driver
