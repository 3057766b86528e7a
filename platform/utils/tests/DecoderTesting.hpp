#pragma once

#include <corvane/utils/json/Decoder.hpp>

#include "MessageOf.hpp"

#include <string>
#include <string_view>

namespace corvane::utils::json::decoder {

inline std::string messageOf(auto action) { return test::messageOf<DecodeError>(action); }

/// Reads everything that a value holds, as a careful program would, and writes it again without a
/// blank.
inline std::string readAll(const Value& value) {
    std::string text;
    switch (value.type()) {
    case Type::object: {
        Object object = value.asObject();
        while (const auto member = object.next())
            text.append(text.empty() ? "" : ",").append(member->name.view()).append(":") +=
                readAll(member->value);
        return "{" + text + "}";
    }
    case Type::array: {
        Array array = value.asArray();
        while (const auto entry = array.next())
            text.append(text.empty() ? "" : ",") += readAll(*entry);
        return "[" + text + "]";
    }
    case Type::string:
        return "'" + std::string(value.asString().view()) + "'";
    case Type::number:
        return std::string(value.parseNumberString());
    case Type::boolean:
        return value.asBool() ? "true" : "false";
    case Type::null:
        return "null";
    }
    return "no type";
}

inline std::string readDocument(std::string_view text) {
    const Document document{std::string(text)};
    std::string result = readAll(document.root());
    document.expectEnd();
    return result;
}

/// `inside` between `depth` times `open` and as often `close`.
inline std::string nested(unsigned depth, std::string_view open, std::string_view inside,
                          std::string_view close) {
    std::string text;
    for (unsigned i = 0; i < depth; ++i)
        text += open;
    text += inside;
    for (unsigned i = 0; i < depth; ++i)
        text += close;
    return text;
}

} // namespace corvane::utils::json::decoder
