#include "workbench/cli/output/TreePrinter.hpp"

#include "workbench/core/project/OpenForm.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/skill/ElementClass.hpp>
#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace corvane::workbench::cli {

namespace {

constexpr std::size_t kIndentation = 2;
constexpr std::size_t kGap = 2;         // columns between cells
constexpr std::size_t kWidestName = 40; // columns; longer names push their line to the right

/// The cells of lines, their texts one behind the other in one memory.
class Cells {
public:
    /// Ends the cell that `text` was appended to.
    void end() { cells_.push_back({.end = text.size()}); }

    [[nodiscard]] std::size_t size() const { return cells_.size(); }
    [[nodiscard]] std::string_view operator[](std::size_t index) const {
        const auto begin = index == 0 ? 0 : cells_[index - 1].end;
        return std::string_view(text).substr(begin, cells_[index].end - begin);
    }

    /// Measures a cell, as is needed of those with others behind them. Its width in columns.
    std::size_t measure(std::size_t index) { return cells_[index].width = widthOf((*this)[index]); }
    /// 0 for a cell that was not measured.
    [[nodiscard]] std::size_t width(std::size_t index) const { return cells_[index].width; }

    std::string text;

private:
    struct Cell {
        std::size_t end; // in the text
        std::size_t width = 0;
    };

    std::vector<Cell> cells_;
};

/// The controls of a form that say something of its element, by their kinds.
class Details final : public ui::ControlVisitor {
public:
    void visit(ui::TextField& control) override { entered_.push_back(&control); }
    void visit(ui::InfoField& control) override { derived_.push_back(&control); }
    void visit(ui::ChoiceList& control) override { choices_.push_back(&control); }
    void visit(ui::SpinBoxControl& control) override { numbers_.push_back(&control); }
    void visit(ui::FlagChoice&) override {}
    void visit(ui::ReferenceChooser&) override {}
    void visit(ui::PushButton&) override {}

    /// Choices first and numbers last: what all siblings have lines up. A derived text stands for
    /// what the user entered.
    void appendTo(Cells& cells) const {
        append(choices_, cells);
        if (!append(derived_, cells))
            append(entered_, cells);
        for (const auto* const control : numbers_) {
            if (!control->isVisible())
                continue;
            utils::string::detail::appendUtf8(cells.text, control->texts().label);
            cells.text.append(" ").append(textOf(control->value()));
            cells.end();
        }
    }

private:
    /// True if a control has something to say.
    static bool append(const std::vector<const ui::Control*>& controls, Cells& cells) {
        bool any = false;
        for (const auto* const control : controls) {
            if (!control->isVisible())
                continue;
            const auto before = cells.text.size();
            const auto value = control->value();
            if (const auto* const text = std::get_if<std::u16string>(&value))
                utils::string::detail::appendUtf8(cells.text, *text);
            else
                cells.text += textOf(value);
            if (cells.text.size() == before)
                continue;
            cells.end();
            any = true;
        }
        return any;
    }

    std::vector<const ui::Control*> choices_;
    std::vector<const ui::Control*> derived_;
    std::vector<const ui::Control*> entered_;
    std::vector<const ui::Control*> numbers_;
};

/// The details of one element after the other, with one form for all elements of a class whose
/// forms can move from element to element. Making a form for each instead prints the same, which
/// the listings of the examples show, and takes many times as long.
class Reader {
public:
    void append(model::Element& element, Cells& cells) {
        // Elements of a class stand in long runs.
        if (const auto* const own = &element.elementClass(); own != class_) {
            class_ = own;
            opened_ = &forms_[own];
        }
        auto& opened = *opened_;
        if (!opened || !opened->form.moveTo(element))
            opened = std::make_unique<Opened>(element);
        opened->details.appendTo(cells);
    }

private:
    struct Opened {
        explicit Opened(model::Element& element) : form(element) {
            for (ui::Control* const control : form.controls())
                control->accept(details);
        }
        core::OpenForm form;
        Details details;
    };

    std::map<const skill::Element::Class*, std::unique_ptr<Opened>> forms_;
    const skill::Element::Class* class_ = nullptr; // the latest, whose form is
    std::unique_ptr<Opened>* opened_ = nullptr;
};

/// The lines of siblings, whose columns are as wide as the widest of them needs.
class Siblings {
public:
    Siblings(core::ElementList elements, Reader& reader) : elements_(elements), reader_(&reader) {
        for (const auto& element : elements)
            add(*element);
        nameWidth_ = std::min(nameWidth_, kWidestName);
    }

    void print(TextOutput& output, std::size_t depth) const {
        for (std::size_t i = 0; i != elements_.size(); ++i) {
            printLine(output, i, depth);
            if (const auto children = elements_[i]->childElements(); !children.empty())
                Siblings(children, *reader_).print(output, depth + 1);
        }
    }

private:
    void add(model::Element& element) {
        const auto nameWidth = widthOf(element.name());
        nameWidth_ = std::max(nameWidth_, nameWidth);
        const auto first = cells_.size();
        cells_.text += element.elementClass().shortName();
        cells_.end();
        reader_->append(element, cells_);

        lines_.push_back({.firstCell = first, .endCell = cells_.size(), .nameWidth = nameWidth});
        const auto count = cells_.size() - first;
        if (count > widths_.size())
            widths_.resize(count);
        for (std::size_t column = 0; column + 1 < count; ++column)
            widths_[column] = std::max(widths_[column], cells_.measure(first + column));
    }

    void printLine(TextOutput& output, std::size_t index, std::size_t depth) const {
        const auto [first, end, nameWidth] = lines_[index];
        output.fill(depth * kIndentation);
        output.writeBold(elements_[index]->name());
        auto missing = nameWidth_ - std::min(nameWidth_, nameWidth);
        for (auto cell = first; cell != end; ++cell) {
            output.fill(missing + kGap);
            output.write(cells_[cell]);
            if (cell + 1 != end)
                missing = widths_[cell - first] - cells_.width(cell);
        }
        output.endLine();
    }

    struct Line {
        std::size_t firstCell;
        std::size_t endCell; // behind the last one
        std::size_t nameWidth;
    };

    core::ElementList elements_;
    Reader* reader_;
    Cells cells_;
    std::vector<Line> lines_;         // of each element
    std::vector<std::size_t> widths_; // of each column
    std::size_t nameWidth_ = 0;
};

} // namespace

void printTree(TextOutput& output, core::ElementList elements) {
    Reader reader;
    Siblings(elements, reader).print(output, 0);
}

void printTree(TextOutput& output, const model::Element& element) {
    const auto siblings = host::modelOf(element)->parentOf(element).childElements();
    const auto self = std::ranges::find(siblings, &element, &std::unique_ptr<model::Element>::get);
    printTree(output, core::ElementList(self, 1));
}

} // namespace corvane::workbench::cli
