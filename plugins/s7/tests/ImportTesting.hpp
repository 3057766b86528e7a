#pragma once

#include "dbimport/ImportContext.hpp"
#include "dbimport/ImportDocumentWriter.hpp"

#include <corvane/utils/io/MemoryInputStream.hpp>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

/// What the tests of the import share.
namespace corvane::workbench::plugins::s7Driver::testing {

/// Gives its bytes in chunks of a fixed size, one at a time unless asked otherwise, so that words
/// cross the end of a buffer. Each chunk takes the place of the one before: who keeps a view of an
/// old one reads other bytes than those he meant.
class TrickleInputStream final : public utils::io::InputStream {
public:
    explicit TrickleInputStream(std::string_view bytes, std::size_t chunkSize = 1)
        : bytes_(bytes), chunkSize_(chunkSize) {}

    void rewind() override {
        next_ = 0;
        setBuffer(nullptr, nullptr);
    }

protected:
    bool refill() override {
        if (next_ == bytes_.size())
            return false;
        const std::string_view chunk = bytes_.substr(next_, chunkSize_);
        next_ += chunk.size();
        buffer_.assign(chunk.begin(), chunk.end());
        setBuffer(buffer_.data(), buffer_.data() + buffer_.size());
        return true;
    }

private:
    std::string_view bytes_;
    std::size_t chunkSize_;
    std::size_t next_ = 0;
    std::vector<char> buffer_; // of the chunk's size, so that a look behind its end is noticed
};

inline ui::ImportedDocument import(std::string_view source, const ImportContext& context = {},
                                   const ImportLimits& limits = {}) {
    utils::io::MemoryInputStream stream(source);
    return makeImportDocument(stream, context, limits);
}

/// The message with which `action` fails; "no error" where it does not.
template <class Action>
std::string errorOf(const Action& action) {
    try {
        action();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "no error";
}

inline std::string importError(std::string_view source, const ImportLimits& limits = {}) {
    return errorOf([&] { static_cast<void>(import(source, {}, limits)); });
}

/// A file with one data block, called Data, of these members.
inline std::string dataBlock(std::string_view members) {
    return std::string("DATA_BLOCK Data\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\n")
        .append(members)
        .append("\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n");
}

} // namespace corvane::workbench::plugins::s7Driver::testing
