#include "Tokens.hpp"

#include <corvane/utils/memory/LargePages.hpp>
#include <corvane/utils/string/Utf.hpp>

#include <simdjson.h>

#include <new>

namespace corvane::utils::json::decoder::detail {

namespace {

/// Finds the fault in a text whose strings are known to be wrong, and throws.
[[noreturn]] void failInString(const Source& source) {
    const char* open = nullptr; // the quote that began the string, outside strings none
    for (const char* at = source.begin(); at != source.end(); ++at) {
        if (*at == '"')
            open = open ? nullptr : at;
        else if (*at == '\\' && at + 1 != source.end())
            ++at;
        else if (open && static_cast<unsigned char>(*at) < 0x20)
            source.failMalformed("control character in a string", at);
    }
    source.failMalformed("the string is not closed", open ? open : source.end());
}

[[noreturn]] void fail(const Source& source, simdjson::error_code error) {
    switch (error) {
    case simdjson::EMPTY:
        source.failMalformed("there is no value", source.end());
    case simdjson::UNCLOSED_STRING:
    case simdjson::UNESCAPED_CHARS:
        failInString(source);
    case simdjson::UTF8_ERROR:
        source.failMalformed("the text is not UTF-8",
                             source.begin() +
                                 string::detail::validUtf8Prefix({source.begin(), source.size()}));
    case simdjson::CAPACITY:
        source.fail("the text is too large, at most 4 GiB can be read", {}, source.begin());
    case simdjson::MEMALLOC:
        throw std::bad_alloc();
    default:
        source.failMalformed(simdjson::error_message(error), source.begin());
    }
}

} // namespace

struct Tokens::Parser {
    std::unique_ptr<simdjson::internal::dom_parser_implementation> stages;
};

Tokens::Tokens(const Source& source) : parser_(std::make_unique<Parser>()) {
    auto& stages = parser_->stages;
    // The parser's own limit on depth belongs to a stage that never runs here.
    constexpr std::size_t kNoDepth = 1;
    auto error = simdjson::get_active_implementation()->create_dom_parser_implementation(
        source.size(), kNoDepth, stages);
    if (!error) {
        memory::preferLargePages(stages->structural_indexes.get(),
                                 source.size() * sizeof(std::uint32_t));
        error = stages->stage1(reinterpret_cast<const std::uint8_t*>(source.begin()), source.size(),
                               simdjson::stage1_mode::regular);
    }
    if (error)
        fail(source, error);
    offsets_ = {stages->structural_indexes.get(), stages->n_structural_indexes};
}

Tokens::~Tokens() = default;

} // namespace corvane::utils::json::decoder::detail
