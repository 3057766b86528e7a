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
    void end() { ends_.push_back(text.size()); }

    [[nodiscard]] std::size_t size() const { return ends_.size(); }
    [[nodiscard]] std::string_view operator[](std::size_t index) const {
        const auto begin = index == 0 ? 0 : ends_[index - 1];
        return std::string_view(text).substr(begin, ends_[index] - begin);
    }

    std::string text;

private:
    std::vector<std::size_t> ends_;
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
        auto& opened = forms_[&element.elementClass()];
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
        nameWidth_ = std::max(nameWidth_, widthOf(element.name()));
        const auto first = cells_.size();
        cells_.text += element.elementClass().shortName();
        cells_.end();
        reader_->append(element, cells_);

        const auto count = cells_.size() - first;
        lineEnds_.push_back(cells_.size());
        widths_.resize(std::max(widths_.size(), count));
        for (std::size_t column = 0; column + 1 < count; ++column)
            widths_[column] = std::max(widths_[column], widthOf(cells_[first + column]));
    }

    void printLine(TextOutput& output, std::size_t index, std::size_t depth) const {
        const auto& name = elements_[index]->name();
        output.fill(depth * kIndentation);
        output.writeBold(name);
        std::size_t missing = nameWidth_ - std::min(nameWidth_, widthOf(name));
        const auto first = index == 0 ? 0 : lineEnds_[index - 1];
        for (auto cell = first; cell != lineEnds_[index]; ++cell) {
            output.fill(missing + kGap);
            output.write(cells_[cell]);
            missing =
                cell + 1 == lineEnds_[index] ? 0 : widths_[cell - first] - widthOf(cells_[cell]);
        }
        output.endLine();
    }

    core::ElementList elements_;
    Reader* reader_;
    Cells cells_;
    std::vector<std::size_t> lineEnds_; // of each element: the cell behind its last one
    std::vector<std::size_t> widths_;   // of each column
    std::size_t nameWidth_ = 0;
};

} // namespace

void printTree(TextOutput& output, core::ElementList elements) {
    Reader reader;
    Siblings(elements, reader).print(output, 0);
}

void printTree(TextOutput& output, const model::Element& element) {
    const auto siblings = element.model()->parentOf(element).childElements();
    const auto self = std::ranges::find(siblings, &element, &std::unique_ptr<model::Element>::get);
    printTree(output, core::ElementList(self, 1));
}

} // namespace corvane::workbench::cli
