#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What the roads are compared with: the same bytes, copied, written or read by others.
namespace corvane::bench {

/// A JSON text taken apart into the calls that write it: keys and strings ready, numbers as
/// numbers.
class WritingScript {
public:
    explicit WritingScript(const std::string& document);

    /// Writes the document through RapidJSON's Writer into a fresh buffer; returns its size.
    [[nodiscard]] std::size_t run() const;

private:
    enum class Kind : unsigned char {
        startObject,
        endObject,
        startArray,
        endArray,
        key,
        string,
        number,
        isTrue,
        isFalse,
        null,
    };
    struct Step {
        Kind kind;
        std::string_view text;
        unsigned long long number;
    };
    friend class ScriptMaker;

    std::vector<char> texts_;
    std::vector<Step> steps_;
};

/// Reads every field of a JSON text with simdjson on demand; returns a sum over them.
[[nodiscard]] std::size_t readAllFields(const std::string& document);

/// Copies the bytes into fresh memory.
void copyFresh(std::string_view bytes);

/// Finds every line feed with memchr; returns their number.
[[nodiscard]] std::size_t countLines(std::string_view bytes);

} // namespace corvane::bench
