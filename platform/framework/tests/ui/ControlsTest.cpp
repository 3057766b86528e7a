#include "Probe.hpp"
#include "TestSkill.hpp"

#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/PushButton.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <gtest/gtest.h>

#include <limits>

namespace corvane::workbench::testing {
namespace {

using ui::ControlValue;

const std::u16string kWrongType = u"the field does not take a value of this type";

/// One value of each type that a control may be given.
const ControlValue kValues[] = {std::monostate(), true, std::uint64_t{5}, std::u16string(u"x")};

/// The reason for which a value was refused; "" where it was taken.
std::u16string refusal(ui::Control& control, const ControlValue& value) {
    const auto result = control.setValue(value);
    return result ? u"" : result.error();
}

/// An accessor of a field of a controller, such as bindings make them.
template <class T>
ui::Accessor<T> accessorOf(Probe& probe, T& field) {
    return {.get = [&field] { return field; },
            .set = [&probe, &field](T value) { probe.assign(field, std::move(value)); }};
}

class ControlsTest : public ::testing::Test {
protected:
    template <class Field>
    bindings::PropertyHandle handle(const Field& field) {
        return probe_.propertyHandle(PropertyId(field));
    }

    /// Every value that is not of the type with this index is refused and changes nothing.
    static void expectRefusesOtherTypes(ui::Control& control, std::size_t index) {
        const auto before = control.value();
        for (const auto& value : kValues)
            if (value.index() != index) {
                EXPECT_EQ(refusal(control, value), kWrongType) << value.index();
                EXPECT_EQ(control.value(), before);
            }
    }

    Probe probe_;
};

TEST_F(ControlsTest, ShowTheirTextsAndTheirProperty) {
    configure(probe_, [&](auto& context) {
        context.property(probe_, probe_.unit)
            .template validatedBy<&Probe::validateUnit>()
            .template visibleWhen<&Probe::isShown>();
    });
    ui::TextField field("key", {u"Unit", u"The unit", u"Help"}, handle(probe_.unit),
                        accessorOf(probe_, probe_.unit), {});
    EXPECT_EQ(field.key(), "key");
    EXPECT_EQ(field.texts().label, u"Unit");
    EXPECT_EQ(field.texts().description, u"The unit");
    EXPECT_EQ(field.texts().help, u"Help");
    ASSERT_TRUE(field.property().has_value());
    EXPECT_EQ(field.property()->id(), PropertyId(probe_.unit));
    EXPECT_TRUE(field.isVisible());
    EXPECT_EQ(field.error(), nullptr);

    probe_.publishConfigured();
    probe_.shown = false;
    EXPECT_FALSE(field.isVisible());
    ASSERT_NE(field.error(), nullptr);
    EXPECT_EQ(*field.error(), u"no unit");
}

TEST_F(ControlsTest, TextFieldReadsAndWritesItsField) {
    ui::TextField field("key", {}, handle(probe_.unit), accessorOf(probe_, probe_.unit),
                        {.placeholder = u"enter a unit",
                         .minimumWidth = 1,
                         .preferredWidth = 300,
                         .fixUp = {},
                         .remark = {}});
    EXPECT_EQ(field.settings().placeholder, u"enter a unit");
    EXPECT_EQ(field.settings().minimumWidth, 1);
    EXPECT_EQ(field.settings().preferredWidth, 300);
    EXPECT_EQ(field.value(), ControlValue(u""));

    EXPECT_EQ(refusal(field, std::u16string(u"mm")), u"");
    EXPECT_EQ(probe_.unit, u"mm");
    EXPECT_EQ(probe_.takeLog(), Log{"raised unit value"});
    EXPECT_EQ(refusal(field, std::u16string(u"mm")), u"");
    EXPECT_EQ(probe_.takeLog(), Log{});
    probe_.unit = u"m";
    EXPECT_EQ(field.value(), ControlValue(u"m"));
    expectRefusesOtherTypes(field, 3);
}

TEST_F(ControlsTest, TextFieldCorrectsWhatIsEntered) {
    const auto dropBlanks = [](ui::TextEdit& edit) {
        while (edit.text.starts_with(u' ')) {
            edit.text.erase(0, 1);
            --edit.cursor;
            --edit.anchor;
        }
    };
    ui::TextField field("key", {}, handle(probe_.unit), accessorOf(probe_, probe_.unit),
                        {.placeholder = {}, .fixUp = dropBlanks, .remark = {}});
    const auto edit = field.corrected({u"  mm", 4, 2});
    EXPECT_EQ(edit.text, u"mm");
    EXPECT_EQ(edit.cursor, 2u);
    EXPECT_EQ(edit.anchor, 0u);
    EXPECT_EQ(probe_.unit, u""); // nothing was set

    EXPECT_EQ(refusal(field, std::u16string(u" km")), u"");
    EXPECT_EQ(probe_.unit, u"km");
}

TEST_F(ControlsTest, TextFieldSetsAsIfTypedToTheEnd) {
    ui::TextEdit seen;
    ui::TextField field(
        "key", {}, handle(probe_.unit), accessorOf(probe_, probe_.unit),
        {.placeholder = {}, .fixUp = [&](ui::TextEdit& edit) { seen = edit; }, .remark = {}});
    EXPECT_EQ(refusal(field, std::u16string(u"mm")), u"");
    EXPECT_EQ(seen.cursor, 2u);
    EXPECT_EQ(seen.anchor, 2u);
}

TEST_F(ControlsTest, TextFieldRefusesControlCharacters) {
    ui::TextField field("key", {}, handle(probe_.unit), accessorOf(probe_, probe_.unit), {});
    const std::u16string reason = u"the value must be one line without control characters";
    const auto isControl = [](unsigned code) {
        return code < 0x20 || (code > 0x7e && code < 0xa0);
    };
    for (unsigned code = 0; code != 0x200; ++code) {
        const std::u16string text{u'm', static_cast<char16_t>(code)};
        EXPECT_EQ(refusal(field, text), isControl(code) ? reason : u"") << code;
        EXPECT_EQ(probe_.unit == text, !isControl(code)) << code;
    }
    EXPECT_EQ(refusal(field, std::u16string(u"m\u2028")), u"");
    probe_.log.clear();
    EXPECT_EQ(refusal(field, std::u16string(u"\n")), reason);
    EXPECT_EQ(probe_.takeLog(), Log{}) << "nothing was published";
}

TEST_F(ControlsTest, TextFieldTakesTheControlCharactersThatItHolds) {
    ui::TextField field("key", {}, handle(probe_.unit), accessorOf(probe_, probe_.unit), {});
    field.restoreValue(std::u16string(u"k\tm"));
    EXPECT_EQ(refusal(field, std::u16string(u"k\tm")), u"");
    EXPECT_EQ(probe_.unit, u"k\tm");
    EXPECT_NE(refusal(field, std::u16string(u"k\tmm")), u"");
    EXPECT_EQ(refusal(field, std::u16string(u"km")), u"");
}

TEST_F(ControlsTest, SpinBoxTakesNumbersWithinItsLimits) {
    std::uint8_t rate = 9;
    ui::SpinBox<std::uint8_t> box("key", {}, handle(rate), accessorOf(probe_, rate), {1, 7, 2},
                                  {200, 3});
    EXPECT_EQ(box.range().minimum, 1u);
    EXPECT_EQ(box.range().maximum, 7u);
    EXPECT_EQ(box.range().step, 2u);
    EXPECT_EQ(box.settings().preferredWidth, 200);
    EXPECT_EQ(box.settings().minimumDigits, 3);
    EXPECT_EQ(box.value(), ControlValue(std::uint64_t{9})); // outside the limits, shown as it is

    for (const std::uint64_t number : {0UL, 8UL, 256UL, 258UL})
        EXPECT_EQ(refusal(box, number), u"the value must lie between 1 and 7") << number;
    EXPECT_EQ(rate, 9);
    for (const std::uint64_t number : {1UL, 2UL, 7UL}) { // steps are for the arrows
        EXPECT_EQ(refusal(box, number), u"");
        EXPECT_EQ(rate, number);
    }
    expectRefusesOtherTypes(box, 2);
}

TEST_F(ControlsTest, SpinBoxCoversTheWidestNumbers) {
    constexpr auto kMaximum = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t size = 0;
    ui::SpinBox<std::uint64_t> box("key", {}, handle(size), accessorOf(probe_, size),
                                   {0, kMaximum, 1}, {});
    EXPECT_EQ(refusal(box, kMaximum), u"");
    EXPECT_EQ(box.value(), ControlValue(kMaximum));
    EXPECT_EQ(box.settings().preferredWidth, 0);
}

TEST_F(ControlsTest, InfoFieldCannotBeSet) {
    ui::InfoField field("key", {}, handle(probe_.unit), [&] { return probe_.unit + u"!"; });
    EXPECT_EQ(field.value(), ControlValue(u"!"));
    probe_.unit = u"mm";
    EXPECT_EQ(field.value(), ControlValue(u"mm!"));
    for (const auto& value : kValues)
        EXPECT_EQ(refusal(field, value), u"the field is shown for information and cannot be set");
    EXPECT_EQ(probe_.unit, u"mm");
}

TEST_F(ControlsTest, ChoiceListTakesWhatItOffers) {
    ui::ChoiceList list("key", {}, handle(probe_.unit), accessorOf(probe_, probe_.unit),
                        {{u"mm", u"Millimetre"}, {u"m", u"Metre"}});
    ASSERT_EQ(list.choices().size(), 2u);
    EXPECT_EQ(list.choices()[0].value, u"mm");
    EXPECT_EQ(list.choices()[0].text, u"Millimetre");

    EXPECT_EQ(refusal(list, std::u16string(u"m")), u"");
    EXPECT_EQ(probe_.unit, u"m");
    EXPECT_EQ(refusal(list, std::u16string(u"Metre")),
              u"\u201cMetre\u201d is not one of the choices");
    EXPECT_EQ(refusal(list, std::u16string()), u"\u201c\u201d is not one of the choices");
    EXPECT_EQ(probe_.unit, u"m");
    probe_.unit = u"inch"; // kept and shown, though not offered
    EXPECT_EQ(list.value(), ControlValue(u"inch"));
    expectRefusesOtherTypes(list, 3);
}

TEST_F(ControlsTest, FlagChoiceHasATextForEachState) {
    ui::FlagChoice flag("key", {}, handle(probe_.shown), accessorOf(probe_, probe_.shown), u"Off",
                        u"On");
    EXPECT_EQ(flag.stateText(false), u"Off");
    EXPECT_EQ(flag.stateText(true), u"On");
    EXPECT_EQ(flag.value(), ControlValue(true));
    EXPECT_EQ(refusal(flag, false), u"");
    EXPECT_FALSE(probe_.shown);
    EXPECT_EQ(flag.value(), ControlValue(false));
    expectRefusesOtherTypes(flag, 1);
}

TEST_F(ControlsTest, PushButtonMakesADocument) {
    ui::PushButton button(
        "key", {u"Import", u"", u""}, ".txt", [](const std::filesystem::path& file) {
            return std::expected<ui::ImportedDocument, ui::ImportFailure>(
                std::in_place,
                ui::ImportedDocument{.text = file.string(), .memory = {{"a", 4}}, .warnings = {}});
        });
    EXPECT_EQ(button.extension(), ".txt");
    EXPECT_FALSE(button.property().has_value());
    EXPECT_TRUE(button.isVisible());
    EXPECT_EQ(button.error(), nullptr);
    EXPECT_EQ(button.value(), ControlValue());
    for (const auto& value : kValues)
        EXPECT_EQ(refusal(button, value), u"a button has no value that could be set");

    const auto document = button.press("plan.txt");
    ASSERT_TRUE(document.has_value());
    EXPECT_EQ(document->text, "plan.txt");
    EXPECT_EQ(document->memory.at(0).bytes, 4u);
}

TEST_F(ControlsTest, PushButtonHandsTheErrorOn) {
    ui::PushButton button(
        "key", {}, ".txt",
        [](const auto&) -> std::expected<ui::ImportedDocument, ui::ImportFailure> {
            return std::unexpected(ui::ImportFailure{
                .text = u"no plan", .line = 3, .column = 14, .hint = u"draw one"});
        });
    const auto failure = button.press("plan.txt").error();
    EXPECT_EQ(failure.text, u"no plan");
    EXPECT_EQ(failure.line, 3u);
    EXPECT_EQ(failure.column, 14u);
    EXPECT_EQ(failure.hint, u"draw one");
}

class ReferenceChooserTest : public ControlsTest {
protected:
    host::Model model_;
    model::Element& line_ = add<Station>(model_.root(), "line");
    model::Element& pump_ = add<Machine>(line_, "pump");
    model::Element& valve_ = add<Machine>(line_, "valve \u00e4/1");
    model::Element& motor_ = add<Machine>(pump_, "motor");
    model::Element& outside_ = add<Machine>(model_.root(), "outside");
    ui::ReferenceChooser chooser_ = chooser();

    ui::ReferenceChooser chooser() {
        return ui::ReferenceChooser(
            "key", {}, handle(probe_.target), accessorOf(probe_, probe_.target),
            {.scope = [this] { return &line_; },
             .accepts = [](const model::Element& element) { return element.isA<Machine>(); }});
    }
};

TEST_F(ReferenceChooserTest, OffersWhatIsAcceptedBelowItsScope) {
    add<Station>(line_, "cell");
    EXPECT_EQ(chooser_.candidates(), (std::vector{&pump_, &motor_, &valve_}));
}

TEST_F(ReferenceChooserTest, TakesTheCandidatesPaths) {
    EXPECT_EQ(chooser_.value(), ControlValue(u""));
    EXPECT_EQ(refusal(chooser_, std::u16string(u"/line/valve \u00e4~11")), u"");
    EXPECT_EQ(probe_.target.element(), &valve_);
    EXPECT_EQ(chooser_.value(), ControlValue(u"/line/valve \u00e4~11"));
    EXPECT_EQ(probe_.takeLog(), Log{"raised target value"});
    EXPECT_EQ(refusal(chooser_, std::u16string(u"/line/valve \u00e4~11")), u"");
    EXPECT_EQ(probe_.takeLog(), Log{});
    EXPECT_EQ(refusal(chooser_, std::u16string()), u"");
    EXPECT_TRUE(probe_.target.empty());
}

TEST_F(ReferenceChooserTest, RefusesEverythingElse) {
    add<Station>(line_, "cell");
    probe_.target = pump_.makeReference();
    for (const std::u16string path : {u"/line", u"/line/cell", u"/outside", u"/", u"pump",
                                      u"/line/pump/", u"/line/gone", u"\xd800"})
        EXPECT_EQ(refusal(chooser_, path),
                  u"\u201c" + path + u"\u201d is not one of the elements that can be chosen");
    expectRefusesOtherTypes(chooser_, 3);
    EXPECT_EQ(probe_.target.element(), &pump_);
}

TEST_F(ReferenceChooserTest, ShowsTheTextOfAMissingElement) {
    probe_.target = model_.references().reference("/line/gone");
    EXPECT_EQ(chooser_.value(), ControlValue(u"/line/gone"));
}

TEST_F(ReferenceChooserTest, PutsTheReferenceBackAndNotItsText) {
    probe_.target = model_.references().reference("/line/gone");
    const auto stored = chooser_.storedValue();
    probe_.assign(probe_.target, pump_.makeReference());
    add<Station>(line_, "gone");
    model_.resolveReferences();
    chooser_.restoreValue(stored);
    EXPECT_EQ(probe_.target.elementOrNull(), line_.findChild("gone"));
}

/// Stores a control's value, lets `change` spoil it, and puts it back; what the field then holds.
ControlValue restored(ui::Control& control, auto change) {
    const auto stored = control.storedValue();
    change();
    control.restoreValue(stored);
    return control.value();
}

TEST_F(ControlsTest, PutBackWhatNoUserCouldEnter) {
    std::uint8_t rate = 9;
    ui::SpinBox<std::uint8_t> spin("key", {}, handle(rate), accessorOf(probe_, rate), {1, 7, 2},
                                   {});
    EXPECT_EQ(restored(spin, [&] { rate = 3; }), ControlValue(std::uint64_t{9}));

    probe_.unit = u"inch";
    ui::ChoiceList list("key", {}, handle(probe_.unit), accessorOf(probe_, probe_.unit),
                        {{u"m", u"m"}});
    EXPECT_EQ(restored(list, [&] { probe_.unit = u"m"; }), ControlValue(u"inch"));

    ui::TextField text(
        "key", {}, handle(probe_.unit), accessorOf(probe_, probe_.unit),
        {.placeholder = {}, .fixUp = [](ui::TextEdit& edit) { edit.text.clear(); }, .remark = {}});
    EXPECT_EQ(restored(text, [&] { probe_.unit = u"m"; }), ControlValue(u"inch"));
}

TEST_F(ControlsTest, PuttingBackPublishesWhatDiffers) {
    ui::FlagChoice flag("key", {}, handle(probe_.shown), accessorOf(probe_, probe_.shown), u"Off",
                        u"On");
    EXPECT_EQ(restored(flag, [&] { probe_.shown = false; }), ControlValue(true));
    EXPECT_EQ(probe_.takeLog(), Log{"raised shown value"});
    EXPECT_EQ(restored(flag, [] {}), ControlValue(true));
    EXPECT_EQ(probe_.takeLog(), Log{});
}

TEST_F(ControlsTest, WithoutAFieldThereIsNothingToPutBack) {
    ui::InfoField info("key", {}, handle(probe_.unit), [] { return std::u16string(u"x"); });
    EXPECT_EQ(info.storedValue(), ui::StoredValue());
    EXPECT_EQ(restored(info, [] {}), ControlValue(u"x"));
    ui::PushButton button("key", {}, ".txt", {});
    EXPECT_EQ(button.storedValue(), ui::StoredValue());
    EXPECT_EQ(restored(button, [] {}), ControlValue());
}

TEST_F(ControlsTest, VisitorsMeetEachKind) {
    struct Namer final : ui::ControlVisitor {
        std::string name;
        void visit(ui::TextField&) override { name = "text"; }
        void visit(ui::SpinBoxControl&) override { name = "spin"; }
        void visit(ui::InfoField&) override { name = "info"; }
        void visit(ui::ChoiceList&) override { name = "choice"; }
        void visit(ui::FlagChoice&) override { name = "flag"; }
        void visit(ui::ReferenceChooser&) override { name = "reference"; }
        void visit(ui::PushButton&) override { name = "button"; }
    };
    const auto kindOf = [](auto control) {
        Namer namer;
        control.accept(namer);
        return namer.name;
    };
    const auto property = handle(probe_.unit);
    EXPECT_EQ(kindOf(ui::TextField("key", {}, property, {}, {})), "text");
    EXPECT_EQ(kindOf(ui::SpinBox<std::uint16_t>("key", {}, property, {}, {0, 1, 1}, {})), "spin");
    EXPECT_EQ(kindOf(ui::InfoField("key", {}, property, {})), "info");
    EXPECT_EQ(kindOf(ui::ChoiceList("key", {}, property, {}, {})), "choice");
    EXPECT_EQ(kindOf(ui::FlagChoice("key", {}, property, {}, {}, {})), "flag");
    EXPECT_EQ(kindOf(ui::ReferenceChooser("key", {}, property, {}, {})), "reference");
    EXPECT_EQ(kindOf(ui::PushButton("key", {}, {}, {})), "button");
}

} // namespace
} // namespace corvane::workbench::testing
