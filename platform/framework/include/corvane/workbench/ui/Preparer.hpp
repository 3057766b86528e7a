#pragma once

#include <corvane/utils/Export.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::ui {

/// A file that a user has named, as it is on disk.
struct SourceFile {
    std::string name; ///< as the user gave it; what is told of the file names it so
    std::string bytes;
};

/// A place in one of the files that were prepared.
struct SourceOrigin {
    std::uint32_t file; ///< its index among them
    std::uint32_t line; ///< from 1
};

/// Something of the files that is not in what was made of them.
struct LeftOutSource {
    std::size_t file = 0; ///< its index among them
    /// Where in that file, both from 1, columns in code points; empty where there is no such place.
    std::optional<std::uint64_t> line = std::nullopt;
    std::optional<std::uint64_t> column = std::nullopt;
    std::string name;      ///< of what is left out, as the file has it; empty where it has none
    std::u16string reason; ///< translated, and without a stop at its end
    std::u16string help;   ///< what would help, likewise
};

/// What a preparer makes of files.
struct PreparedSource {
    /// A file that can be imported; empty where nothing in the files can.
    std::string text;
    /// Where each line of the text comes from.
    std::vector<SourceOrigin> origins;
    /// In the order of the files.
    std::vector<LeftOutSource> leftOut;
};

/// A wish of the user, as the preparer names it in `Preparer::options`.
struct PrepareOption {
    std::string name;
    std::string value; ///< empty where it takes none
};

/// Makes of files that cannot be imported as they are, such as those that refer to each other, one
/// that can. A skill offers it through `skill::Skill::Class::preparer`; the host calls it on the
/// thread that owns the model.
class CORVANE_EXPORT Preparer {
public:
    Preparer(const Preparer&) = delete;
    Preparer& operator=(const Preparer&) = delete;
    virtual ~Preparer();

    /// The extensions of the files that it reads, each with its dot and in the lower case of ASCII.
    [[nodiscard]] virtual std::span<const std::string_view> extensions() const = 0;

    /// The extension of the file that it makes, which some element of the skill imports.
    [[nodiscard]] virtual std::string_view preparedExtension() const = 0;

    /// The names of the options that it knows. The host hands it no others.
    [[nodiscard]] virtual std::span<const std::string_view> options() const = 0;

    /// Prepares all files together; their order is that of the result, and matters for nothing
    /// else. Reads and changes nothing but its arguments. Throws std::runtime_error, with a
    /// translated text, for the value of an option that makes no sense; what is wrong with a file
    /// is no exception but part of the result.
    [[nodiscard]] virtual PreparedSource prepare(std::span<const SourceFile> files,
                                                 std::span<const PrepareOption> options) const = 0;

protected:
    Preparer() = default;
};

} // namespace corvane::workbench::ui
