#include "Probe.hpp"

#include <corvane/workbench/ui/Form.hpp>
#include <corvane/workbench/ui/InfoField.hpp>

#include "MessageOf.hpp"

#include <gtest/gtest.h>

namespace corvane::workbench::testing {
namespace {

using ui::Control;
using ui::Form;
using ui::Group;
using ui::InfoField;
using utils::test::messageOf;

constexpr const char* kNoForm = "internal error: attempt to access default constructed "
                                "corvane::workbench::ui::Form object";
constexpr const char* kNoGroup = "internal error: attempt to access default constructed "
                                 "corvane::workbench::ui::Group object";

class FormTest : public ::testing::Test {
protected:
    InfoField field(const char* key) {
        return InfoField(key, {}, probe_.propertyHandle(PropertyId(probe_.unit)),
                         [] { return std::u16string(); });
    }

    Probe probe_;
    InfoField a_ = field("a");
    InfoField b_ = field("b");
    InfoField c_ = field("c");
    InfoField d_ = field("d");
    ui::FormContents contents_;
};

TEST_F(FormTest, IsEmptyAtFirst) { EXPECT_TRUE(contents_.controls().empty()); }

TEST_F(FormTest, KeepsTheOrderOfItsControls) {
    const Form form(contents_);
    form.add(b_);
    form.add(a_);
    EXPECT_EQ(contents_.controls(), (std::vector<Control*>{&b_, &a_}));
}

TEST_F(FormTest, TheControlsOfTheGroupComeFirst) {
    const Form form(contents_);
    form.add(d_);
    const Group group = form.group();
    group.add(b_);
    form.add(a_);
    form.group().add(c_); // there is one group, whatever handle stands for it
    EXPECT_EQ(contents_.controls(), (std::vector<Control*>{&b_, &c_, &d_, &a_}));
}

TEST_F(FormTest, CopiesOfAHandleMeanTheSameForm) {
    const Form form(contents_);
    const Form copy(form); // NOLINT(performance-unnecessary-copy-initialization)
    copy.add(a_);
    form.add(b_);
    EXPECT_EQ(contents_.controls(), (std::vector<Control*>{&a_, &b_}));
}

TEST_F(FormTest, FindsItsControlsByTheirKeys) {
    const Form form(contents_);
    form.add(a_);
    form.group().add(b_);
    EXPECT_EQ(contents_.find("a"), &a_);
    EXPECT_EQ(contents_.find("b"), &b_);
    EXPECT_EQ(contents_.find("c"), nullptr);
}

TEST_F(FormTest, TwoControlsWithOneKeyAreALogicError) {
    constexpr const char* kTwice = "internal error: two controls of a form have the key a";
    const Form form(contents_);
    form.add(a_);
    auto other = field("a");
    EXPECT_EQ(messageOf<std::logic_error>([&] { return form.add(other), 0; }), kTwice);
    EXPECT_EQ(messageOf<std::logic_error>([&] { return form.group().add(other), 0; }), kTwice);
    EXPECT_EQ(contents_.controls(), std::vector<Control*>{&a_});
}

TEST_F(FormTest, ADefaultConstructedOneIsALogicError) {
    EXPECT_EQ(messageOf<std::logic_error>([&] { return Form().add(a_), 0; }), kNoForm);
    EXPECT_EQ(messageOf<std::logic_error>([&] { return Form().group(); }), kNoForm);
    EXPECT_EQ(messageOf<std::logic_error>([&] { return Group().add(a_), 0; }), kNoGroup);
}

} // namespace
} // namespace corvane::workbench::testing
