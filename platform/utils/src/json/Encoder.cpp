#include <corvane/utils/json/Encoder.hpp>

#include <corvane/utils/json/PlainText.hpp>
#include <corvane/utils/string/CopyText.hpp>
#include <corvane/utils/string/Utf.hpp>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace corvane::utils::json::encoder::detail {

namespace {

using encoder::copyPlain;
using io::OutputStream;
using namespace std::string_view_literals;

constexpr unsigned kIndent = 2;

/// What a key or string needs beside its characters: two quotes, a colon, a comma, two blanks.
constexpr std::size_t kPunctuation = 6;

/// Up to here a text is written through one `reserve`.
constexpr std::size_t kMaxShort = OutputStream::kMaxReserve - kPunctuation;

/// The letter behind the backslash for each byte that cannot stand for itself ('u' for those that
/// are spelt by their number), and 0 for the others.
constexpr auto kEscapes = [] {
    std::array<char, 256> escapes{};
    std::fill_n(escapes.begin(), 0x20, 'u');
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    escapes['\b'] = 'b';
    escapes['\f'] = 'f';
    escapes['\n'] = 'n';
    escapes['\r'] = 'r';
    escapes['\t'] = 't';
    return escapes;
}();

static_assert(
    [] {
        for (char16_t c = 0; c != 0x80; ++c)
            if (isPlain(c) != (kEscapes[c] == 0))
                return false;
        return true;
    }(),
    "what needs no escape is plain");

constexpr char escapeOf(char c) { return kEscapes[static_cast<unsigned char>(c)]; }

char* copyPlain(char* target, std::u16string_view text) {
    for (const char16_t c : text) {
        if (!isPlain(c))
            return nullptr;
        *target++ = static_cast<char>(c);
    }
    return target;
}

/// Writes a short plain text in quotes; false, and nothing written, when it is not.
bool writePlain(OutputStream& stream, auto text) {
    if (text.size() > kMaxShort)
        return false;
    char* const begin = stream.reserve(text.size() + kPunctuation);
    char* end = copyPlain(begin + 1, text);
    if (!end)
        return false;
    *begin = '"';
    *end++ = '"';
    stream.commit(end);
    return true;
}

void writeEscape(OutputStream& stream, char c) {
    stream.put('\\');
    stream.put(escapeOf(c));
    if (escapeOf(c) != 'u')
        return;
    constexpr std::string_view kDigits = "0123456789abcdef";
    stream.write("00");
    stream.put(kDigits[static_cast<unsigned char>(c) / 16]);
    stream.put(kDigits[static_cast<unsigned char>(c) % 16]);
}

void writeEscaped(OutputStream& stream, std::string_view utf8) {
    stream.put('"');
    for (auto from = utf8.begin();;) {
        const auto run = std::find_if(from, utf8.end(), escapeOf);
        stream.write({from, run});
        if (run == utf8.end())
            break;
        writeEscape(stream, *run);
        from = run + 1;
    }
    stream.put('"');
}

} // namespace

void Writer::open(char bracket) {
    if (bracket == '[')
        ++depth_;
    stream_->put(bracket);
}

void Writer::close(char bracket, bool empty) {
    if (bracket == ']') {
        --depth_;
        if (!empty)
            newLine();
    }
    stream_->put(bracket);
}

void Writer::beginMember(Key key, bool first) {
    const bool blanks = format_ == Format::lines;
    if (!key.plain() || key.text().size() > kMaxShort) {
        if (!first)
            stream_->write(blanks ? ", "sv : ","sv);
        string(key.text());
        stream_->write(blanks ? ": "sv : ":"sv);
        return;
    }
    // Written for every member of every element, so put together from single characters.
    char* target = stream_->reserve(key.text().size() + kPunctuation);
    if (!first) {
        *target++ = ',';
        *target = ' ';
        target += blanks ? 1 : 0;
    }
    *target++ = '"';
    target = string::copyText(target, key.text());
    *target++ = '"';
    *target++ = ':';
    *target = ' ';
    stream_->commit(target + (blanks ? 1 : 0));
}

void Writer::beginEntry(bool first) {
    if (!first)
        stream_->put(',');
    newLine();
}

void Writer::string(std::string_view utf8) {
    if (writePlain(*stream_, utf8))
        return;
    if (string::detail::isValidUtf8(utf8))
        writeEscaped(*stream_, utf8);
    else
        writeEscaped(*stream_, string::detail::replaceMalformedUtf8(utf8));
}

void Writer::wideString(std::u16string_view utf16) {
    if (!writePlain(*stream_, utf16))
        writeEscaped(*stream_, string::detail::utf16ToUtf8(utf16));
}

void Writer::newLine() {
    if (format_ != Format::lines)
        return;
    stream_->put('\n');
    for (std::size_t left = std::size_t{depth_} * kIndent; left > 0;) {
        const std::size_t count = std::min(left, OutputStream::kMaxReserve);
        stream_->commit(std::fill_n(stream_->reserve(count), count, ' '));
        left -= count;
    }
}

Scope::Scope(Writer& writer, char open, char close) : writer_(&writer), close_(close) {
    writer.open(open);
}

Scope::~Scope() noexcept(false) {
    if (std::uncaught_exceptions() == exceptions_)
        writer_->close(close_, empty_);
}

} // namespace corvane::utils::json::encoder::detail
