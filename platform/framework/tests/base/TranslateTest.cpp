#include <corvane/workbench/i18n/Translate.hpp>

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace corvane::workbench::i18n {
namespace {

struct FillCase {
    std::u16string_view format;
    std::vector<std::u16string_view> arguments;
    std::u16string_view filled;
};

std::u16string fillFrom(const FillCase& entry) {
    const auto& a = entry.arguments;
    switch (a.size()) {
    case 0:
        return fill(entry.format, {});
    case 1:
        return fill(entry.format, {a[0]});
    default:
        return fill(entry.format, {a[0], a[1]});
    }
}

TEST(Fill, ReplacesPlaceholdersInOrder) {
    const std::initializer_list<FillCase> cases = {
        {u"", {}, u""},
        {u"plain", {}, u"plain"},
        {u"{}", {u"a"}, u"a"},
        {u"{} and {}", {u"a", u"b"}, u"a and b"},
        {u"{}{}", {u"a", u"b"}, u"ab"},
        {u"<{}>", {u""}, u"<>"},
        {u"{} and {}", {u"a"}, u"a and {}"},
        {u"{}", {}, u"{}"},
        {u"only {}", {u"a", u"b"}, u"only a"},
        {u"none", {u"a"}, u"none"},
        {u"{ } {x} {", {u"a"}, u"{ } {x} {"},
        {u"{{}}", {u"a"}, u"{a}"},
        {u"{} {}", {u"{}", u"b"}, u"{} b"}, // an argument is no format
        {u"\u00e4{}\u20ac", {u"\U0001f600"}, u"\u00e4\U0001f600\u20ac"},
    };
    for (const auto& entry : cases)
        EXPECT_EQ(fillFrom(entry), entry.filled);
}

/// Installs a translator for the length of a test.
class InstalledTranslator {
public:
    explicit InstalledTranslator(Translator translator) { setTranslator(std::move(translator)); }
    InstalledTranslator(const InstalledTranslator&) = delete;
    InstalledTranslator& operator=(const InstalledTranslator&) = delete;
    ~InstalledTranslator() { setTranslator({}); }
};

TEST(Translate, GivesTheEnglishTextWithoutATranslator) {
    EXPECT_EQ(translate("any::Class", "Address"), u"Address");
    EXPECT_EQ(translate("any::Class", ""), u"");
    EXPECT_EQ(translate("any::Class", "5 \u00b5m \U0001f600"), u"5 \u00b5m \U0001f600");
}

TEST(Translate, AsksTheTranslatorForTextAndContext) {
    const InstalledTranslator installed(
        [](std::string_view context, std::string_view text) -> std::optional<std::u16string> {
            if (context == "a::Door" && text == "Lock")
                return u"Schloss";
            if (context == "a::Sluice" && text == "Lock")
                return u"Schleuse";
            return std::nullopt;
        });
    EXPECT_EQ(translate("a::Door", "Lock"), u"Schloss");
    EXPECT_EQ(translate("a::Sluice", "Lock"), u"Schleuse");
    EXPECT_EQ(translate("a::Gun", "Lock"), u"Lock");
    EXPECT_EQ(translate("a::Door", "Key"), u"Key");
}

TEST(FillTranslated, IsFillOfTheTranslation) {
    std::u16string text = u"what stood here before";
    fillTranslated(text, "a::Door", "{} of {}: \u20ac", {"2", "\u00e4\U0001f600"});
    EXPECT_EQ(text, u"2 of \u00e4\U0001f600: \u20ac");
    fillTranslated(text, "a::Door", "{}, {}", {"only"});
    EXPECT_EQ(text, u"only, {}");
    const InstalledTranslator installed(
        [](std::string_view context, std::string_view english) -> std::optional<std::u16string> {
            return context == "a::Door" && english == "{} of {}"
                       ? std::optional(u"{} von {} \u00e4")
                       : std::nullopt;
        });
    fillTranslated(text, "a::Door", "{} of {}", {"2", "\u00e43"});
    EXPECT_EQ(text, u"2 von \u00e43 \u00e4");
    fillTranslated(text, "a::Gun", "{} of {}", {"2", "3"});
    EXPECT_EQ(text, u"2 of 3");
}

TEST(Translate, AnEmptyTranslatorTakesTheLastOneAway) {
    setTranslator([](auto, auto) -> std::optional<std::u16string> { return u"x"; });
    EXPECT_EQ(translate("any", "Lock"), u"x");
    setTranslator({});
    EXPECT_EQ(translate("any", "Lock"), u"Lock");
}

} // namespace
} // namespace corvane::workbench::i18n
