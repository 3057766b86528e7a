#pragma once

#include "dbimport/DataBlockImport.hpp"
#include "dbimport/diagnosis/SourcePlace.hpp"
#include "elements/Command.hpp"
#include "elements/DataBlock.hpp"
#include "elements/Item.hpp"
#include "elements/Plc.hpp"
#include "elements/Struct.hpp"
#include "plugin/ElementClasses.hpp"

#include <corvane/utils/io/MemoryInputStream.hpp>
#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/host/Tree.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
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
        setFirstBuffer(nullptr, nullptr);
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

/// A project with one PLC, into which files are imported, and what stands below it.
class PlcProject {
public:
    PlcProject() : plc_(&add<Plc>(model_.root(), plcClass(), "PLC")) {}

    [[nodiscard]] model::Element& plcElement() const { return *plc_; }
    [[nodiscard]] const Plc& plc() const { return *plc_->getSkillElement()->as<Plc>(); }

    model::Element& addCommand(std::string_view name) {
        return add<Command>(*plc_, commandClass(), name);
    }

    model::Element& addDataBlock(std::string_view name, std::uint16_t number) {
        model::Element& block = add<DataBlock>(*plc_, dataBlockClass(), name);
        block.getSkillElement()->as<DataBlock>()->dbNumber = number;
        return block;
    }

    static model::Element& addStruct(model::Element& parent, std::string_view name) {
        return add<Struct>(parent, structClass(), name);
    }

    static void addItem(model::Element& parent, std::string_view name, model::Element* command) {
        Item& item = *add<Item>(parent, itemClass(), name).getSkillElement()->as<Item>();
        if (command != nullptr)
            item.command = command->makeReference();
    }

private:
    template <class T>
    static model::Element& add(model::Element& parent, const skill::Element::Class& elementClass,
                               std::string_view name) {
        return host::appendChild(
            parent, std::make_unique<model::Element>(elementClass, std::make_unique<T>()), name);
    }

    host::Model model_;
    model::Element* plc_;
};

/// A PLC without children.
inline const Plc& emptyPlc() {
    static const PlcProject project;
    return project.plc();
}

inline ui::ImportedDocument import(std::string_view source, const Plc& plc = emptyPlc(),
                                   const ImportLimits& limits = {}) {
    utils::io::MemoryInputStream stream(source);
    return makeImportDocument(plc, stream, limits);
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
    return errorOf([&] { static_cast<void>(import(source, emptyPlc(), limits)); });
}

/// The folder of the whole files that are imported.
inline std::filesystem::path goldenFolder() { return S7_GOLDEN_DIRECTORY; }

inline std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// A file with one data block, called Data, of these members.
inline std::string dataBlock(std::string_view members) {
    return std::string("DATA_BLOCK Data\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\n")
        .append(members)
        .append("\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n");
}

/// Takes the mark out of a source and tells where it was; in front of it there is nothing but ASCII
/// and perhaps a byte order mark.
inline SourcePlace takeMark(std::string& source) {
    const auto at = source.find('@');
    source.erase(at, 1);
    std::string_view before = std::string_view(source).substr(0, at);
    if (before.starts_with("\xEF\xBB\xBF"))
        before.remove_prefix(3);
    const auto line = static_cast<std::uint64_t>(std::ranges::count(before, '\n'));
    return {1 + line, before.size() - (before.rfind('\n') + 1) + 1};
}

/// "LINE:COLUMN".
inline std::string shown(const SourcePlace& place) {
    return std::to_string(place.line) + ":" + std::to_string(place.column);
}

} // namespace corvane::workbench::plugins::s7Driver::testing
