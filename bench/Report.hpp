#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvane::bench {

/// One line of the report.
struct Result {
    std::string road;
    std::string size;
    double seconds = 0;
    std::string rate;      // as in "24.1 M items/s"; may be empty
    std::string reference; // what it is compared with; may be empty
    double ratio = 0;      // to the reference
    double bar = 0;        // the ratio that it must not exceed; 0 where there is none
    std::optional<double> bytesPerItem;
};

/// Prints the results as a table in Markdown, so that it can stand in a document as it is; returns
/// how many of them exceed their bars.
int printReport(const std::vector<Result>& results);

/// "12.3 M items/s".
[[nodiscard]] std::string ratePerSecond(double amount, double seconds, const std::string& unit);

/// "1270 instructions/item".
[[nodiscard]] std::string instructionsPerItem(double instructions, std::size_t items);

/// "9.1 MB".
[[nodiscard]] std::string megabytes(std::size_t bytes);

} // namespace corvane::bench
