#pragma once

#include "prepare/Declarations.hpp"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace corvane::workbench::plugins::s7Driver::prepare {

/// Finds types, function blocks and data blocks by their names. One that is declared twice with
/// different content fails, at both its places; the same content again counts once.
class Catalogue {
public:
    /// Notes all that is declared. `declarations` must outlive the object.
    explicit Catalogue(Declarations& declarations);

    /// Whether a declaration repeats one before it, word for word.
    [[nodiscard]] bool isRepetition(std::uint32_t declaration) const {
        return repetitions_[declaration];
    }

    /// Says what the type of a member stands for. Throws DeclarationFault where nobody knows.
    void resolve(const Declaration& owner, Member& member);

    /// The same for what stands in the place of a block's structure: the declaration, or the row of
    /// a system type.
    struct BlockType {
        std::optional<std::uint32_t> declaration;
        std::uint32_t systemType = 0;
    };
    [[nodiscard]] BlockType resolve(const Declaration& block) const;

private:
    struct Hash : std::hash<std::string_view> {
        using is_transparent = void;
    };
    using Index = std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>>;

    void add(Index& index, const std::string& key, std::uint32_t declaration);
    [[nodiscard]] bool haveSameContent(const Declaration& one, const Declaration& other) const;
    [[nodiscard]] const std::uint32_t* findType(std::string_view key) const;
    void resolveInOut(const Declaration& owner, Member& member) const;

    Declarations* declarations_;
    Index types_;
    Index blocks_;
    std::vector<bool> repetitions_;
    std::string key_; // of the member that is looked up
};

} // namespace corvane::workbench::plugins::s7Driver::prepare
