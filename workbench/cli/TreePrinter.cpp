#include "workbench/cli/TreePrinter.hpp"

#include "workbench/cli/TextOutput.hpp"
#include "workbench/core/OpenForm.hpp"

#include <corvane/workbench/model/Model.hpp>
#include <corvane/workbench/skill/ElementClass.hpp>
#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace corvane::workbench::cli {

namespace {

constexpr std::size_t kIndentation = 2;
constexpr std::size_t kWidestName = 40; // columns; longer names push their line to the right

/// Collects what a form says of its element. A derived text stands for what the user entered.
class Details final : public ui::ControlVisitor {
public:
    void visit(ui::TextField& control) override { add(entered_, control, {}); }
    void visit(ui::InfoField& control) override { add(derived_, control, {}); }
    void visit(ui::ChoiceList& control) override { add(choices_, control, {}); }
    void visit(ui::SpinBoxControl& control) override {
        add(numbers_, control, narrow(control.texts().label) + " ");
    }
    void visit(ui::FlagChoice&) override {}
    void visit(ui::ReferenceChooser&) override {}
    void visit(ui::PushButton&) override {}

    /// Choices first and numbers last: what all siblings have lines up.
    void appendTo(std::vector<std::string>& cells) const {
        for (const auto* part : {&choices_, derived_.empty() ? &entered_ : &derived_, &numbers_})
            cells.insert(cells.end(), part->begin(), part->end());
    }

private:
    static void add(std::vector<std::string>& cells, const ui::Control& control,
                    const std::string& label) {
        if (!control.isVisible())
            return;
        const auto value = textOf(control.value());
        if (!value.empty())
            cells.push_back(label + printable(value));
    }

    std::vector<std::string> choices_;
    std::vector<std::string> derived_;
    std::vector<std::string> entered_;
    std::vector<std::string> numbers_;
};

/// The columns behind the name.
std::vector<std::string> cellsOf(model::Element& element) {
    std::vector<std::string> cells{std::string(element.elementClass().shortName())};
    Details details;
    const core::OpenForm form(element);
    for (ui::Control* const control : form.controls())
        control->accept(details);
    details.appendTo(cells);
    return cells;
}

/// The lines of siblings, whose columns are as wide as the widest of them needs.
class Siblings {
public:
    explicit Siblings(core::ElementList elements) : elements_(elements) {
        for (const auto& element : elements)
            add(*element);
        nameWidth_ = std::min(nameWidth_, kWidestName);
    }

    void print(utils::io::OutputStream& stream, std::size_t depth) const {
        for (std::size_t i = 0; i != elements_.size(); ++i) {
            printLine(stream, *elements_[i], cells_[i], depth);
            Siblings(elements_[i]->childElements()).print(stream, depth + 1);
        }
    }

private:
    void add(model::Element& element) {
        nameWidth_ = std::max(nameWidth_, widthOf(element.name()));
        const auto& cells = cells_.emplace_back(cellsOf(element));
        widths_.resize(std::max(widths_.size(), cells.size()));
        for (std::size_t column = 0; column + 1 < cells.size(); ++column)
            widths_[column] = std::max(widths_[column], widthOf(cells[column]));
    }

    void printLine(utils::io::OutputStream& stream, const model::Element& element,
                   const std::vector<std::string>& cells, std::size_t depth) const {
        stream.write(std::string(depth * kIndentation, ' '));
        stream.write(bold(padded(printable(element.name()), nameWidth_)));
        for (std::size_t column = 0; column != cells.size(); ++column) {
            const bool last = column + 1 == cells.size();
            stream.write("  " + padded(cells[column], last ? 0 : widths_[column]));
        }
        stream.put('\n');
    }

    core::ElementList elements_;
    std::vector<std::vector<std::string>> cells_; // of each element
    std::vector<std::size_t> widths_;             // of each column
    std::size_t nameWidth_ = 0;
};

} // namespace

void printTree(utils::io::OutputStream& stream, core::ElementList elements) {
    Siblings(elements).print(stream, 0);
}

void printTree(utils::io::OutputStream& stream, const model::Element& element) {
    const auto* const parent = element.parentElement();
    const auto siblings =
        parent == nullptr ? element.model()->root().childElements() : parent->childElements();
    const auto self = std::ranges::find(siblings, &element, &std::unique_ptr<model::Element>::get);
    printTree(stream, core::ElementList(self, 1));
}

} // namespace corvane::workbench::cli
