#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// Inputs for the measurements, the same at each run.
namespace corvane::bench {

/// A .db source of mixed declarations: scalars of every type, structures, arrays, strings,
/// comments, attributes, initial values and assignment sections, which become at least `variables`
/// items, spread evenly over `blocks` data blocks.
[[nodiscard]] std::string mixedSource(std::size_t variables, std::size_t blocks);

/// As `mixedSource`, scalars only.
[[nodiscard]] std::string scalarSource(std::size_t variables, std::size_t blocks);

/// A .db source of one block with arrays of Bool, Real and of structures, of one and of three
/// dimensions, with about `elements` elements in all.
[[nodiscard]] std::string arraySource(std::size_t elements);

/// Address texts that parse.
[[nodiscard]] std::vector<std::string> goodAddresses(std::size_t count);

/// Address texts that do not, with every kind of fault.
[[nodiscard]] std::vector<std::string> badAddresses(std::size_t count);

} // namespace corvane::bench
