#include "bench/DocumentReferences.hpp"

#include "bench/Timing.hpp"

#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <simdjson.h>

#include <cstring>
#include <memory>

namespace corvane::bench {

/// Records what RapidJSON's reader meets.
class ScriptMaker {
public:
    using Ch = char;
    using Kind = WritingScript::Kind;

    explicit ScriptMaker(WritingScript& script) : script_(&script) {}

    bool Null() { return add(Kind::null); }
    bool Bool(bool value) { return add(value ? Kind::isTrue : Kind::isFalse); }
    bool Int(int value) { return Uint64(static_cast<unsigned>(value)); }
    bool Uint(unsigned value) { return Uint64(value); }
    bool Int64(std::int64_t value) { return Uint64(static_cast<std::uint64_t>(value)); }
    bool Uint64(std::uint64_t value) {
        script_->steps_.push_back({Kind::number, {}, value});
        return true;
    }
    bool Double(double) { return false; } // no document of ours has one
    bool RawNumber(const char*, unsigned, bool) { return false; }
    bool String(const char* text, unsigned size, bool) { return addText(Kind::string, text, size); }
    bool Key(const char* text, unsigned size, bool) { return addText(Kind::key, text, size); }
    bool StartObject() { return add(Kind::startObject); }
    bool EndObject(unsigned) { return add(Kind::endObject); }
    bool StartArray() { return add(Kind::startArray); }
    bool EndArray(unsigned) { return add(Kind::endArray); }

private:
    bool add(Kind kind) {
        script_->steps_.push_back({kind, {}, 0});
        return true;
    }
    // The texts never outgrow the document, whose size is reserved: views of them stay valid.
    bool addText(Kind kind, const char* text, unsigned size) {
        auto& texts = script_->texts_;
        const auto begin = texts.size();
        texts.insert(texts.end(), text, text + size);
        script_->steps_.push_back({kind, {texts.data() + begin, size}, 0});
        return true;
    }

    WritingScript* script_;
};

WritingScript::WritingScript(const std::string& document) {
    texts_.reserve(document.size());
    rapidjson::StringStream stream(document.c_str());
    rapidjson::Reader reader;
    ScriptMaker maker(*this);
    reader.Parse(stream, maker);
}

std::size_t WritingScript::run() const {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    for (const auto& step : steps_) {
        const auto size = static_cast<rapidjson::SizeType>(step.text.size());
        switch (step.kind) {
        case Kind::startObject:
            writer.StartObject();
            break;
        case Kind::endObject:
            writer.EndObject();
            break;
        case Kind::startArray:
            writer.StartArray();
            break;
        case Kind::endArray:
            writer.EndArray();
            break;
        case Kind::key:
            writer.Key(step.text.data(), size);
            break;
        case Kind::string:
            writer.String(step.text.data(), size);
            break;
        case Kind::number:
            writer.Uint64(step.number);
            break;
        case Kind::isTrue:
            writer.Bool(true);
            break;
        case Kind::isFalse:
            writer.Bool(false);
            break;
        case Kind::null:
            writer.Null();
            break;
        }
    }
    return buffer.GetSize();
}

namespace {

std::size_t readValue(simdjson::ondemand::value value) {
    std::size_t sum = 0;
    switch (value.type().value()) {
    case simdjson::ondemand::json_type::object:
        for (auto field : value.get_object().value()) {
            sum += std::string_view(field.unescaped_key()).size();
            sum += readValue(field.value());
        }
        return sum;
    case simdjson::ondemand::json_type::array:
        for (auto entry : value.get_array().value())
            sum += readValue(entry.value());
        return sum;
    case simdjson::ondemand::json_type::string:
        return value.get_string().value().size();
    case simdjson::ondemand::json_type::number:
        return value.get_uint64().value();
    case simdjson::ondemand::json_type::boolean:
        return value.get_bool().value() ? 1 : 0;
    case simdjson::ondemand::json_type::null:
        return 0;
    }
    return 0;
}

} // namespace

std::size_t readAllFields(const std::string& document) {
    simdjson::ondemand::parser parser;
    const simdjson::padded_string padded(document);
    auto parsed = parser.iterate(padded).value();
    simdjson::ondemand::value root = parsed.get_value().value();
    return readValue(root);
}

void copyFresh(std::string_view bytes) {
    const auto copy = std::make_unique_for_overwrite<char[]>(bytes.size());
    std::memcpy(copy.get(), bytes.data(), bytes.size());
    keep(copy[bytes.size() / 2]);
}

std::size_t countLines(std::string_view bytes) {
    std::size_t lines = 0;
    const char* const end = bytes.data() + bytes.size();
    for (const char* at = bytes.data();
         (at = static_cast<const char*>(
              std::memchr(at, '\n', static_cast<std::size_t>(end - at)))) != nullptr;
         ++at)
        ++lines;
    return lines;
}

} // namespace corvane::bench
