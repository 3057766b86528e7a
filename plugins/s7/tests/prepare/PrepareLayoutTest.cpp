#include "PrepareTesting.hpp"

#include <gtest/gtest.h>

#include <array>
#include <random>

// Systems of types, made at random and written down in all the forms that sources have: where the
// import places their variables, once they are prepared, is compared with a computation of its own,
// which knows the rules of standard access and nothing of the preparation.

namespace corvane::workbench::plugins::s7Driver::prepare {
namespace {

/// What a variable can be: a leaf that lies as it is, or a record of variables.
struct Leaf {
    const char* word;
    const char* item; ///< empty: none comes of it
    unsigned bits;
    bool even; ///< begins at an even byte
    bool byAddress;
};

constexpr auto kLeaves = std::to_array<Leaf>({
    {"Bool", "Bool", 1, false, false},
    {"BOOL", "Bool", 1, false, false},
    {"Byte", "Byte", 8, false, false},
    {"Char", "USInt", 8, false, false},
    {"SInt", "SInt", 8, false, false},
    {"Int", "Int", 16, true, false},
    {"WORD", "Word", 16, true, false},
    {"WChar", "UInt", 16, true, false},
    {"DInt", "DInt", 32, true, false},
    {"Real", "Real", 32, true, false},
    {"Time", "UDInt", 32, true, false},
    {"TOD", "UDInt", 32, true, false},
    {"LReal", "LReal", 64, true, false},
    {"LTOD", "ULInt", 64, true, false},
    {"DT", "", 64, true, true},
    {"Date_And_Time", "", 64, true, true},
    {"S5Time", "", 16, true, false},
    {"DTL", "", 96, true, true},
    {"String[5]", "String", 56, true, true},
    {"WString[3]", "WString", 80, true, true},
    {"HW_IO", "UInt", 16, true, false},
    {"EVENT_ATT", "UDInt", 32, true, false},
    {"ErrorStruct", "", 224, true, true},
    {"ANY", "", 80, true, false},
    {"VREF", "", 96, true, false},
    {"POINTER", "", 48, true, false},
});

struct Variable {
    std::string name;
    int leaf = -1;                 ///< of the table, or
    int type = -1;                 ///< of the declared types, or
    std::vector<Variable> members; ///< a structure on the spot
    std::vector<std::pair<int, int>> dimensions;
    bool hidden = false;
    int section = 3; ///< of an interface: input, output, in-out, static
};

struct Type {
    std::string word; ///< with which it is declared
    std::vector<std::string> uses;
    bool isInterface = false;
    std::vector<Variable> members;
};

struct System {
    std::vector<Type> types; ///< each uses those before it
    std::vector<Variable> members;
    int instanceOf = -1; ///< the block is of this type, and has no members
};

class Maker {
public:
    explicit Maker(unsigned seed) : random_(seed) {}

    System make() {
        System system;
        const int count = upTo(5);
        for (int index = 0; index != count; ++index)
            system.types.push_back(makeType(index));
        system.members = makeMembers(count, 1 + upTo(5), 0, false);
        if (count != 0 && upTo(4) == 0)
            system.instanceOf = upTo(count - 1);
        return system;
    }

    int upTo(int most) { return static_cast<int>(random_() % static_cast<unsigned>(most + 1)); }

private:
    Type makeType(int index) {
        const std::string number = std::to_string(10 + index);
        if (upTo(3) == 0) {
            const std::vector<Variable> members = makeMembers(index, upTo(7), 0, true);
            return {"FB " + number, {"FB " + number, "FB" + number}, true, members};
        }
        const std::vector<Variable> members = makeMembers(index, 1 + upTo(5), 0, false);
        if (upTo(1) == 0)
            return {"UDT " + number, {"UDT " + number, "UDT" + number}, false, members};
        const std::string name = "type " + number;
        return {
            "\"" + name + "\"", {"\"" + name + "\"", "\"TYPE " + number + "\""}, false, members};
    }

    std::vector<Variable> makeMembers(int types, int count, int depth, bool sections) {
        std::vector<Variable> members;
        for (int index = 0; index != count; ++index) {
            Variable variable;
            variable.name = "v" + std::to_string(index);
            const int kind = upTo(9);
            if (kind < 2 && types != 0)
                variable.type = upTo(types - 1);
            else if (kind == 2 && depth < 3)
                variable.members = makeMembers(types, 1 + upTo(3), depth + 1, false);
            else
                variable.leaf = upTo(static_cast<int>(kLeaves.size()) - 1);
            if (upTo(4) == 0)
                for (int more = upTo(1); more >= 0; --more) {
                    const int low = upTo(4) - 2;
                    variable.dimensions.emplace_back(low, low + upTo(3) - (upTo(9) == 0 ? 1 : 0));
                }
            variable.hidden = upTo(11) == 0;
            if (sections)
                variable.section = upTo(3);
            members.push_back(std::move(variable));
        }
        return members;
    }

    std::mt19937 random_;
};

/// Writes a system down.
class Scribe {
public:
    Scribe(const System& system, Maker& maker) : system_(system), maker_(maker) {}

    testing::Files files() {
        testing::Files files{{.name = "a.db", .bytes = ""}, {.name = "b.udt", .bytes = ""}};
        std::vector<std::string> pieces;
        pieces.reserve(system_.types.size() + 1);
        for (const Type& type : system_.types)
            pieces.push_back(type.isInterface
                                 ? interfaceOf(type)
                                 : testing::typeOf(type.word, membersOf(type.members)));
        if (system_.instanceOf >= 0)
            pieces.push_back(testing::blockWith(useOf(system_.instanceOf)));
        else if (maker_.upTo(1) == 0)
            pieces.push_back(testing::blockOf(membersOf(system_.members)));
        else
            pieces.push_back(testing::blockWith("VAR\n" + membersOf(system_.members) + "END_VAR"));
        while (!pieces.empty()) {
            const auto at = pieces.begin() + maker_.upTo(static_cast<int>(pieces.size()) - 1);
            files[static_cast<std::size_t>(maker_.upTo(1))].bytes += *at;
            pieces.erase(at);
        }
        return files;
    }

private:
    std::string useOf(int type) {
        const Type& used = system_.types[static_cast<std::size_t>(type)];
        return used.uses[static_cast<std::size_t>(maker_.upTo(1))];
    }

    std::string interfaceOf(const Type& type) {
        constexpr std::array kWords{"VAR_INPUT", "VAR_OUTPUT", "VAR_IN_OUT", "VAR"};
        std::string text = "FUNCTION_BLOCK " + type.word + "\nVERSION : 0.1\n";
        for (const Variable& variable : type.members) // a section each, in any order
            text += std::string(kWords[static_cast<std::size_t>(variable.section)]) + "\n" +
                    memberOf(variable) + "END_VAR\n";
        return text + "BEGIN\n  x := 'END_FUNCTION_BLOCK';\nEND_FUNCTION_BLOCK\n";
    }

    std::string membersOf(const std::vector<Variable>& members) {
        std::string text;
        for (const Variable& variable : members)
            text += memberOf(variable);
        return text;
    }

    std::string memberOf(const Variable& variable) {
        std::string text = variable.name;
        if (variable.hidden)
            text += " { ExternalAccessible := 'False'}";
        text += " : ";
        for (std::size_t index = 0; index != variable.dimensions.size(); ++index) {
            const auto& [low, high] = variable.dimensions[index];
            text += index == 0 ? "Array[" : ", ";
            text += std::to_string(low) + ".." + std::to_string(high);
        }
        if (!variable.dimensions.empty())
            text += "] of ";
        if (variable.leaf >= 0)
            return text + kLeaves[static_cast<std::size_t>(variable.leaf)].word + ";\n";
        if (variable.type >= 0)
            return text + useOf(variable.type) + ";\n";
        return text + "Struct // here\n" + membersOf(variable.members) + "END_STRUCT;\n";
    }

    const System& system_;
    Maker& maker_;
};

/// Says where the variables lie, in bits from the block's beginning.
class Surveyor {
public:
    Surveyor(const System& system, bool shown) : system_(system), shown_(shown) {}

    std::vector<std::string> survey() {
        items_ = {"Data {"};
        if (system_.instanceOf >= 0)
            placeType(system_.types[static_cast<std::size_t>(system_.instanceOf)]);
        else
            placeAll(system_.members);
        return items_;
    }

private:
    void roundUp(unsigned bits) { next_ = (next_ + bits - 1) / bits * bits; }

    void placeAll(const std::vector<Variable>& members) {
        for (const Variable& variable : members)
            place(variable);
    }

    void placeType(const Type& type) {
        if (!type.isInterface) {
            placeAll(type.members);
            return;
        }
        for (int section = 0; section != 4; ++section) {
            bool first = true;
            for (const Variable& variable : type.members) {
                if (variable.section != section || (variable.hidden && !shown_))
                    continue;
                if (first)
                    roundUp(16);
                first = false;
                if (section == 2 && isPassedByAddress(variable)) {
                    roundUp(16);
                    next_ += 48;
                } else {
                    place(variable);
                }
            }
        }
    }

    static bool isPassedByAddress(const Variable& variable) {
        return !variable.dimensions.empty() || variable.leaf < 0 ||
               kLeaves[static_cast<std::size_t>(variable.leaf)].byAddress;
    }

    void place(const Variable& variable) {
        if (variable.hidden && !shown_)
            return;
        if (variable.dimensions.empty()) {
            placeOne(variable, variable.name);
            return;
        }
        roundUp(16);
        placeElements(variable, 0, variable.name + "[");
        roundUp(16);
    }

    void placeElements(const Variable& variable, std::size_t dimension, const std::string& name) {
        const auto& [low, high] = variable.dimensions[dimension];
        const bool isLast = dimension + 1 == variable.dimensions.size();
        for (int index = low; index <= high; ++index) {
            const std::string indexed = name + std::to_string(index);
            if (isLast)
                placeOne(variable, indexed + "]");
            else
                placeElements(variable, dimension + 1, indexed + ",");
        }
        if (isLast)
            roundUp(8);
    }

    void placeOne(const Variable& variable, const std::string& name) {
        if (variable.leaf < 0) {
            items_.push_back(name + " {");
            roundUp(16);
            if (variable.type >= 0)
                placeType(system_.types[static_cast<std::size_t>(variable.type)]);
            else
                placeAll(variable.members);
            roundUp(16);
            return;
        }
        const Leaf& leaf = kLeaves[static_cast<std::size_t>(variable.leaf)];
        roundUp(leaf.even ? 16 : std::min(leaf.bits, 8U));
        std::string address = "DB" + std::to_string(next_ / 8);
        if (leaf.bits == 1)
            address += "." + std::to_string(next_ % 8);
        if (*leaf.item != '\0')
            items_.push_back(name + " " + leaf.item + " " + address);
        next_ += leaf.bits;
    }

    const System& system_;
    bool shown_;
    unsigned next_ = 0;
    std::vector<std::string> items_;
};

TEST(PrepareLayout, IsThatOfTheRules) {
    for (unsigned seed = 0; seed != 10'000; ++seed) {
        Maker maker(seed);
        const System system = maker.make();
        const testing::Files files = Scribe(system, maker).files();
        const bool shown = seed % 2 == 0;
        const ui::PreparedSource prepared =
            prepareSources(files, {.showHidden = shown, .constants = {}, .blocks = {}});
        ASSERT_EQ(testing::leftOutOf(files, prepared), std::vector<std::string>());
        ASSERT_EQ(testing::importedItems(prepared.text), Surveyor(system, shown).survey())
            << "seed " << seed << "\n"
            << files[0].bytes << files[1].bytes << prepared.text;
        const testing::Files again{{.name = "a.db", .bytes = prepared.text}};
        ASSERT_EQ(prepareSources(again, {}).text, prepared.text) << "seed " << seed;
    }
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::prepare
