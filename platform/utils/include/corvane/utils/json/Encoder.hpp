#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/utils/io/OutputStream.hpp>
#include <corvane/utils/numeric/FormatNumber.hpp>

#include <concepts>
#include <cstdint>
#include <exception>
#include <string_view>

/// Writes JSON straight into an output stream: nothing is kept but the place in the text.
///
/// A `Document` is one array or object; `Array` and `Object` are its scopes. A scope is closed by
/// its destructor and must be closed before its parent is used again, so scopes are nested blocks
/// in the code that writes them. While an exception passes, destructors write nothing: the text is
/// abandoned. A destructor may otherwise throw what the stream throws.
///
///     Document document(stream, Format::compact);
///     auto object = document.object();
///     object.addNumber("rack", rack);
///     {
///         auto names = object.addArray("names");
///         names.addStringView("north"); // {"rack":2,"names":["north"]}
///     }
///
/// Strings are UTF-8. Bytes that are not are written as U+FFFD, so that a document is always valid.
/// Beyond quotes, backslashes and control characters nothing is escaped: those that JSON has a
/// letter for by that letter, other control characters below U+0020 by their number. Numbers are
/// decimal integers, signed or not.
///
/// Every writing operation throws what the stream throws, and nothing else; the document is then to
/// be abandoned.
namespace corvane::utils::json::encoder {

enum class Format : std::uint8_t {
    /// Each array entry begins a line of its own, indented by the depth of its array: made for
    /// version control, one line for one small object.
    lines = 0,
    /// No blanks and no line ends.
    compact = 1,
};

/// A member's name. Names known at compile time are checked there and written without a look at
/// their characters; others are escaped as they are written.
class Key {
public:
    /// A literal of printable ASCII without quotes and backslashes; any other does not compile.
    template <std::size_t size>
    consteval Key(const char (&literal)[size]) : text_(literal, size - 1), plain_(true) {
        for (char c : text_)
            if (c < 0x20 || c > 0x7e || c == '"' || c == '\\')
                throw "the key needs escapes";
    }
    /// A name of which nothing is known before it is written. It must outlive the call that it is
    /// given to.
    static constexpr Key of(std::string_view text) { return Key(text); }

    [[nodiscard]] constexpr std::string_view text() const { return text_; }
    /// Whether the text is known to need no escape.
    [[nodiscard]] constexpr bool plain() const { return plain_; }

private:
    constexpr explicit Key(std::string_view text) : text_(text), plain_(false) {}
    std::string_view text_;
    bool plain_;
};

class Object;
class Array;

namespace detail {

/// The text under construction, shared by all scopes of a document.
class CORVANE_EXPORT Writer {
public:
    Writer(io::OutputStream& stream, Format format) : stream_(&stream), format_(format) {}

    void open(char bracket);
    /// `empty` says that nothing was written since the bracket was opened.
    void close(char bracket, bool empty);
    /// What stands in front of a member's value: comma, name, colon.
    void beginMember(Key key, bool first);
    /// What stands in front of an array's entry: comma, and the line end where there are lines.
    void beginEntry(bool first);
    /// A string with its quotes.
    void string(std::string_view utf8);
    void wideString(std::u16string_view utf16);
    void raw(std::string_view text) { stream_->write(text); }
    [[nodiscard]] io::OutputStream& stream() { return *stream_; }

private:
    void newLine();

    io::OutputStream* stream_;
    Format format_;
    unsigned depth_ = 0; // of arrays: only they indent
};

/// One open bracket. Its destructor closes it, unless it is an exception that ends the scope.
class CORVANE_EXPORT Scope {
public:
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

protected:
    Scope(Writer& writer, char open, char close);
    ~Scope() noexcept(false);

    /// Whether what is about to be written is the first in the scope; asked once for each.
    [[nodiscard]] bool takeFirst() {
        const bool first = empty_;
        empty_ = false;
        return first;
    }

    Writer* writer_;

private:
    bool empty_ = true;
    char close_;
    int exceptions_ = std::uncaught_exceptions();
};

} // namespace detail

/// An open object. Members are written in the order of the calls; nothing looks for duplicates.
class CORVANE_EXPORT Object : public detail::Scope {
public:
    // A member that is an object or an array of its own: the result is its scope, and this one must
    // wait until it is closed.
    [[nodiscard]] Object addObject(Key key);
    [[nodiscard]] Array addArray(Key key);

    /// The text needs to live no longer than the call.
    void addStringView(Key key, std::string_view utf8) {
        member(key);
        writer_->string(utf8);
    }
    /// Written as UTF-8; a lone surrogate becomes U+FFFD.
    void addWideString(Key key, std::u16string_view utf16) {
        member(key);
        writer_->wideString(utf16);
    }
    /// `number` is the text of a JSON number, written as it is: nothing checks it.
    void addPreformattedNumber(Key key, std::string_view number) {
        member(key);
        writer_->raw(number);
    }
    /// In decimal; a number beyond 53 bits is written in full, too.
    template <std::integral Number>
        requires(!std::same_as<Number, bool>)
    void addNumber(Key key, Number number) {
        addPreformattedNumber(key, numeric::detail::formatNumber(number).view());
    }
    /// A truth value, and no other type that would become one.
    void add(Key key, std::same_as<bool> auto value) {
        addPreformattedNumber(key, value ? std::string_view("true") : std::string_view("false"));
    }
    void addNull(Key key) { addPreformattedNumber(key, "null"); }

private:
    friend class Array;
    friend class Document;
    explicit Object(detail::Writer& writer) : Scope(writer, '{', '}') {}
    void member(Key key) { writer_->beginMember(key, takeFirst()); }
};

/// An open array. Its entries are written in the order of the calls, as Object's members are.
class CORVANE_EXPORT Array : public detail::Scope {
public:
    // An entry that is an object or an array of its own: the result is its scope, as in Object.
    [[nodiscard]] Object addObject();
    [[nodiscard]] Array addArray();
    void addStringView(std::string_view utf8) {
        entry();
        writer_->string(utf8);
    }
    void addPreformattedNumber(std::string_view number) {
        entry();
        writer_->raw(number);
    }

    /// Room for an entry of at most `size` bytes (io::OutputStream::kMaxReserve at most) that the
    /// caller puts together himself, from ready pieces of JSON; `commitEntry` ends it. For what is
    /// written a million times with few differences.
    [[nodiscard]] char* reserveEntry(std::size_t size) {
        entry();
        return writer_->stream().reserve(size);
    }
    void commitEntry(char* end) { writer_->stream().commit(end); }

private:
    friend class Object;
    friend class Document;
    explicit Array(detail::Writer& writer) : Scope(writer, '[', ']') {}
    void entry() { writer_->beginEntry(takeFirst()); }
};

/// One JSON text. `array` or `object` is called once and gives the outermost scope; the stream must
/// outlive the document and is not flushed by it.
class CORVANE_EXPORT Document {
public:
    Document(io::OutputStream& stream, Format format) : writer_(stream, format) {}
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    // The document must outlive the scope.
    [[nodiscard]] Array array() { return Array(writer_); }
    [[nodiscard]] Object object() { return Object(writer_); }

private:
    detail::Writer writer_;
};

inline Object Object::addObject(Key key) {
    member(key);
    return Object(*writer_);
}
inline Array Object::addArray(Key key) {
    member(key);
    return Array(*writer_);
}
inline Object Array::addObject() {
    entry();
    return Object(*writer_);
}
inline Array Array::addArray() {
    entry();
    return Array(*writer_);
}

} // namespace corvane::utils::json::encoder
