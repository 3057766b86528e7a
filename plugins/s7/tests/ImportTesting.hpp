#pragma once

#include "dbimport/ImportContext.hpp"
#include "dbimport/ImportDocumentWriter.hpp"

#include <corvane/utils/io/MemoryInputStream.hpp>

#include <algorithm>
#include <exception>
#include <string>
#include <string_view>

/// What the tests of the import share.
namespace corvane::workbench::plugins::s7Driver::testing {

/// Gives its bytes one at a time, so that every word crosses the end of a buffer.
class TrickleInputStream final : public utils::io::InputStream {
public:
    explicit TrickleInputStream(std::string_view bytes) : bytes_(bytes) {}

    void rewind() override {
        next_ = 0;
        setBuffer(nullptr, nullptr);
    }

protected:
    bool refill() override {
        if (next_ == bytes_.size())
            return false;
        buffer_ = bytes_[next_++];
        setBuffer(&buffer_, &buffer_ + 1);
        return true;
    }

private:
    std::string_view bytes_;
    std::size_t next_ = 0;
    char buffer_ = '\0';
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
