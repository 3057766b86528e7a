#include "workbench/cli/output/ImportFailurePrinter.hpp"

#include "workbench/core/import/SourceLine.hpp"

#include <corvane/utils/json/Encoder.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace corvane::workbench::cli {

namespace {

namespace encoder = utils::json::encoder;

constexpr std::size_t kShownColumns = 120;

void printPlace(const std::filesystem::path& file, std::uint64_t line, std::uint64_t column) {
    printMessage(file.string() + ":" + std::to_string(line) + ":" + std::to_string(column));
    if (const auto source = core::sourceLine(file, line, column, kShownColumns)) {
        printTabbed(source->text);
        printTabbed(source->caret);
    }
}

void addNumber(encoder::Object& object, encoder::Key key, std::optional<std::uint64_t> number) {
    if (number)
        object.addNumber(key, *number);
    else
        object.addNull(key);
}

} // namespace

void printImportFailure(const std::filesystem::path& file, const ui::ImportFailure& failure) {
    printMessage(narrow(failure.text));
    if (failure.line && failure.column)
        printPlace(file, *failure.line, *failure.column);
    else if (failure.line)
        printMessage(file.string() + ":" + std::to_string(*failure.line));
    if (failure.hint)
        printMessage("hint: " + narrow(*failure.hint));
}

void writeImportFailure(TextOutput& output, const std::filesystem::path& file,
                        const ui::ImportFailure& failure) {
    const std::u16string_view text = failure.text;
    output.writeDocument([&](utils::io::OutputStream& stream) {
        {
            encoder::Document document(stream, encoder::Format::lines);
            auto object = document.object();
            auto error = object.addObject("error");
            error.addWideString("message", text.substr(0, text.find(u'\n')));
            error.addStringView("file", file.string());
            addNumber(error, "line", failure.line);
            addNumber(error, "column", failure.column);
            if (failure.hint)
                error.addWideString("hint", *failure.hint);
            else
                error.addNull("hint");
        }
        stream.put('\n');
    });
}

} // namespace corvane::workbench::cli
