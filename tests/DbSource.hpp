#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Sources to import, and what their import documents say.
namespace corvane::test {

/// A data block with standard access whose body is `declarations`.
[[nodiscard]] std::string dataBlock(std::string_view name, std::string_view declarations);

/// What an import of `file` says of one data block without a number, the name of which is at the
/// beginning of line `line`.
[[nodiscard]] std::string guessedNumber(std::string_view file, std::string_view block, int number,
                                        int line = 1);

/// A line for each item of an import document, in its order: the data block, the path below it,
/// the data type and the address, tabs between them.
[[nodiscard]] std::vector<std::string> listingOf(std::string document);

/// The same of the first PLC in the text of a project file.
[[nodiscard]] std::vector<std::string> listingOfProject(std::string project);

/// A data block with all kinds of variables, and the places that they must get.
extern const std::string_view kMixedSource;
extern const std::vector<std::string> kMixedListing;

} // namespace corvane::test
