#include "CoreTesting.hpp"

#include "workbench/core/project/OpenForm.hpp"

#include <corvane/workbench/host/Tree.hpp>

namespace corvane::workbench::core::test {

namespace {

/// Projects of one rack "r", and imports into it. Elements are written short:
///
///     pin p 1 value      a pin "p" with the identity "1" and a value
///     pin p 1 - /r/x     the same without a value, with a peer
///     box b 2 { ... }    a box "b" with the identity "2" and what stands in it
///     note n             a note, which has no identity
class ImportMergeTest : public ProjectTest {
protected:
    /// Writes the elements that a short text names as documents.
    static std::string documents(std::string_view text) {
        Words words{.text = text};
        return list(words);
    }

    Project rack(std::string_view content) const {
        return load(R"({"@Skill.Wiring.Rack": {"name": "r", "children": [)" + documents(content) +
                    "]}}");
    }

    static ImportOutcome import(Project& project, std::string_view content) {
        return importDocument(project, project.element("/r"), "[" + documents(content) + "]");
    }

    /// What stands in the rack, written short.
    static std::string contentOf(const Project& project) {
        return shortTextOf(project, project.element("/r"));
    }

private:
    struct Words {
        std::string_view text;

        std::string next() {
            while (text.starts_with(' '))
                text.remove_prefix(1);
            const auto word = text.substr(0, text.find(' '));
            text.remove_prefix(word.size());
            return std::string(word);
        }
        bool take(std::string_view word) {
            Words ahead = *this;
            if (ahead.next() != word)
                return false;
            *this = ahead;
            return true;
        }
        bool atElement() const {
            Words ahead = *this;
            const auto word = ahead.next();
            return word.empty() || word == "pin" || word == "box" || word == "note" || word == "}";
        }
    };

    // A blank in a name is written "_"; JSON has an escape for the character 1.
    static std::string quoted(std::string_view word) {
        std::string text = "\"";
        for (const char c : word)
            if (c == '\x01')
                text += "\\u0001";
            else
                text += c == '_' ? ' ' : c;
        return text + "\"";
    }

    static std::string list(Words& words) {
        std::string text;
        for (auto kind = words.next(); !kind.empty() && kind != "}"; kind = words.next())
            text += (text.empty() ? "" : ",") + element(kind, words);
        return text;
    }

    static std::string element(const std::string& kind, Words& words) {
        const auto name = quoted(words.next());
        if (kind == "note")
            return R"({"@Skill.Wiring.Note": {"name": )" + name + "}}";
        const auto head = "\"name\": " + name + ", \"id\": " + quoted(words.next());
        if (kind == "box") {
            const auto children = words.take("{") ? list(words) : std::string();
            return R"({"@Skill.Wiring.Box": {)" + head + ", \"children\": [" + children + "]}}";
        }
        auto value = words.atElement() ? std::string("-") : words.next();
        const auto peer = words.atElement() ? std::string() : words.next();
        if (value == "-")
            value.clear();
        return R"({"@Skill.Wiring.Pin": {)" + head + ", \"value\": " + quoted(value) +
               ", \"peer\": " + quoted(peer) + "}}";
    }

    static std::string shortTextOf(const Project& project, const model::Element& parent) {
        std::string text;
        for (const auto& child : parent.childElements()) {
            if (!text.empty())
                text += ", ";
            text += child->name();
            const auto value = valuesOf(*child);
            if (!value.empty())
                text += "=" + value;
            if (!child->childElements().empty())
                text += "{" + shortTextOf(project, *child) + "}";
        }
        return text;
    }

    /// A pin's value and peer.
    static std::string valuesOf(model::Element& element) {
        const OpenForm form(element);
        std::string text;
        for (const auto* const control : form.controls()) {
            const auto value = control->value();
            for (const char16_t c : std::get<std::u16string>(value))
                text += static_cast<char>(c);
        }
        return text;
    }
};

} // namespace

TEST_F(ImportMergeTest, ReplacesWhereItFindsAndAppendsTheRest) {
    auto project = rack("pin a 1 old pin b 2 old pin c 3 old");
    const auto outcome = import(project, "pin x 3 new pin y 9 new pin z 1 new");
    EXPECT_EQ(contentOf(project), "a=new, b=old, c=new, y=new");
    EXPECT_EQ(outcome.added, 1U);
    EXPECT_EQ(outcome.replaced, 2U);
    ASSERT_EQ(outcome.top.size(), 3U);
    EXPECT_EQ(outcome.top[0]->path(), "/r/c");
    EXPECT_EQ(outcome.top[1]->path(), "/r/y");
    EXPECT_EQ(outcome.top[2]->path(), "/r/a");
}

TEST_F(ImportMergeTest, CountsEverythingThatIsAdded) {
    auto project = rack("box a 1 { pin p 1 }");
    const auto outcome = import(project, "box a 1 { pin p 1 pin q 2 } box b 2 { pin p 1 note n }");
    EXPECT_EQ(contentOf(project), "a{p, q}, b{p, n}");
    EXPECT_EQ(outcome.added, 4U);
    EXPECT_EQ(outcome.replaced, 2U);
}

struct MergeCase {
    std::string name;
    std::string existing;
    std::string imported;
    std::string once;  // the content after the import
    std::string twice; // after another one of the same document; "" where nothing changes any more

    friend std::ostream& operator<<(std::ostream& stream, const MergeCase& merge) {
        return stream << merge.name;
    }
};

class ImportMergeTableTest : public ImportMergeTest,
                             public testing::WithParamInterface<MergeCase> {};

TEST_P(ImportMergeTableTest, MergesAndStaysWhatItIs) {
    const auto& merge = GetParam();
    auto project = rack(merge.existing);
    import(project, merge.imported);
    EXPECT_EQ(contentOf(project), merge.once);
    import(project, merge.imported);
    EXPECT_EQ(contentOf(project), merge.twice.empty() ? merge.once : merge.twice);

    auto again = reloaded(project);
    EXPECT_EQ(elementsOf(again), elementsOf(project));
    EXPECT_EQ(errorsOf(again), errorsOf(project));
}

INSTANTIATE_TEST_SUITE_P(
    ImportMerge, ImportMergeTableTest,
    testing::Values(
        MergeCase{"anEmptyDocument", "pin a 1 v", "", "a=v", ""},
        MergeCase{"intoNothing", "", "box b 1 { pin p 1 } pin q 1", "b{p}, q", ""},
        MergeCase{"removesNothing", "box b 1 { pin p 1 note n } pin q 1", "box b 1 { pin p 1 }",
                  "b{p, n}, q", ""},
        MergeCase{"aNameThatIsKept", "pin mine 1 old", "pin theirs 1 new", "mine=new", ""},
        MergeCase{"aNameThatIsTakenOver", "box mine 1 { pin p 1 }", "box theirs 1 { pin q 2 }",
                  "theirs{p, q}", ""},
        MergeCase{"ofSeveralTheOneOfTheSameName", "pin a 1 pin b 1 pin c 1", "pin c 1 x",
                  "a, b, c=x", ""},
        MergeCase{"ofSeveralTheFirst", "pin a 1 pin b 1", "pin z 1 x", "a=x, b", ""},
        MergeCase{"severalInTheirOrder", "pin a 1 pin b 1 pin c 1",
                  "pin x 1 x pin b 1 b pin y 1 y pin z 1 z", "a=x, b=b, c=y, z=z", ""},
        MergeCase{"aClassEachToItself", "box a 1 pin b 1", "pin x 1 new", "a, b=new", ""},
        MergeCase{"withoutIdentity", "note n", "note n", "n, n 2", "n, n 2, n 3"},
        MergeCase{"anEmptyIdentityIsNone", "pin a - old", "pin z - new", "a=new", ""},
        MergeCase{"exchangedNames", "box a 1 { pin one 1 } box b 2 { pin two 2 }",
                  "box b 1 box a 2", "b{one}, a{two}", ""},
        MergeCase{"namesInACircle", "box a 1 box b 2 box c 3 note n",
                  "box b 1 { pin p 1 } box c 2 box a 3", "b{p}, c, a, n", ""},
        MergeCase{"exchangedNamesWithAnyCharacter", "box \x01\x61 1 box a 2 pin \x01\x62 3",
                  "box \x01\x61 2 box a 1", "a, \x01\x61, \x01\x62", ""},
        MergeCase{"aTakenNameGetsANumber", "note x", "pin x 1 v", "x, x 2=v", ""},
        MergeCase{"aTakenNameOfAKeptName", "pin b 1 old", "pin n 1 new pin b 2 new",
                  "b=new, b 2=new", ""},
        MergeCase{"aTakenNewName", "note c box b 1", "box c 1", "c, c 2", ""},
        MergeCase{"severalTakenNames", "note x note x_2", "pin x 1 v pin x_2 2 w pin y 3",
                  "x, x 2, x 3=v, x 2 2=w, y", ""},
        MergeCase{"aNumberedNameThatIsTaken", "note a", "box a 1 box a_2 2", "a, a 2, a 2 2", ""},
        MergeCase{"deepDown", "box a 1 { box b 2 { box c 3 { pin p 1 old } } }",
                  "box A 1 { box B 2 { box C 3 { pin P 1 new pin q 2 } } }", "A{B{C{p=new, q}}}",
                  ""},
        MergeCase{"anotherParentIsAnotherPlace", "box a 1 { pin p 1 old }", "box b 2 { pin p 1 }",
                  "a{p=old}, b{p}", ""}),
    [](const auto& merge) { return merge.param.name; });

// Structures of another plug-in are known by their names, which a collision changes: the element
// that got a number in an earlier import must be found again under it.
TEST_F(ImportMergeTest, FindsAgainWhatIsKnownByANameThatWasTaken) {
    auto project = load(R"({"@Skill.S7.PLC": {"name": "r", "address": "a", "children": [
        {"@Skill.S7.Item": {"name": "st"}}]}})");
    const std::string document =
        R"([{"@Skill.S7.Struct": {"name": "st", "children": [
             {"@Skill.S7.Item": {"name": "x", "dataType": "Bool"}}]}}])";
    importDocument(project, project.element("/r"), document);
    const auto once = elementsOf(project);
    EXPECT_NE(once.find(R"({"@Skill.S7.Struct": {"name": "st 2", "children": [)"),
              std::string::npos);
    const auto outcome = importDocument(project, project.element("/r"), document);
    EXPECT_EQ(elementsOf(project), once);
    EXPECT_EQ(outcome.added, 0U);
    EXPECT_EQ(outcome.replaced, 2U);
}

TEST_F(ImportMergeTest, ReferencesHoldThroughReplacingAndRenaming) {
    auto project = rack("box b 1 { pin in 1 } pin p 1 - /r/b pin q 2 - /r/b/in");
    import(project, "box c 1 { pin other 1 new }");
    EXPECT_EQ(contentOf(project), "c{in=new}, p=/r/c, q=/r/c/in");
    EXPECT_EQ(errorsOf(project), std::vector<std::string>{});
}

TEST_F(ImportMergeTest, AnImportedElementTakesOverWhatItsPredecessorKept) {
    auto project = rack("pin p 1 old /r/q pin q 2");
    import(project, "pin x 1 new /r/p");
    EXPECT_EQ(contentOf(project), "p=new/r/q, q");
}

TEST_F(ImportMergeTest, ResolvesReferencesInsideADocument) {
    auto project = rack("box mine 1");
    // One to an element that is paired, one to a new one, one to neither.
    import(project, "box theirs 1 box new 2 pin a 1 - theirs pin b 2 - new pin c 3 - none");
    EXPECT_EQ(contentOf(project), "theirs, new, a=/r/theirs, b=/r/new, c=none");
    EXPECT_EQ(errorsOf(project),
              std::vector<std::string>{"/r/c: Peer: the referenced element “none” does not exist"});
}

TEST_F(ImportMergeTest, ResolvesReferencesByPathToWhatStandsInTheProject) {
    auto project = rack("box b 1 { pin p 1 }");
    import(project, "pin a 1 - /r/b/p pin c 2 - /r/b");
    EXPECT_EQ(contentOf(project), "b{p}, a=/r/b/p, c=/r/b");
}

TEST_F(ImportMergeTest, ResolvesWhatWaitedForAnImportedElement) {
    auto project = rack("pin p 1 - /r/coming");
    EXPECT_EQ(errorsOf(project).size(), 1U);
    import(project, "box coming 1");
    EXPECT_EQ(errorsOf(project), std::vector<std::string>{});
    host::rename(project.element("/r/coming"), "here");
    EXPECT_EQ(contentOf(project), "p=/r/here, here");
}

// Equal identities must not make an import slower than different ones.
TEST_F(ImportMergeTest, PairsManyOfOneIdentity) {
    constexpr int kCount = 20'000;
    std::string existing;
    std::string imported;
    for (int i = 0; i != kCount; ++i) {
        existing += "pin e" + std::to_string(i) + " 1 ";
        imported += "pin i" + std::to_string(i) + " 1 " + std::to_string(i) + " ";
    }
    auto project = rack(existing);
    const auto outcome = import(project, imported);
    EXPECT_EQ(outcome.replaced, static_cast<std::size_t>(kCount));
    EXPECT_EQ(outcome.added, 0U);
    const auto pins = project.element("/r").childElements();
    ASSERT_EQ(pins.size(), static_cast<std::size_t>(kCount));
    EXPECT_EQ(pins[0]->name(), "e0");
    EXPECT_EQ(outcome.top[12'345], pins[12'345].get());
}

} // namespace corvane::workbench::core::test
