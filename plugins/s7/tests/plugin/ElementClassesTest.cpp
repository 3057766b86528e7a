#include "ElementTree.hpp"

#include <algorithm>
#include <array>
#include <ostream>
#include <typeinfo>

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

struct ClassRow {
    const skill::Element::Class& elementClass;
    std::string_view name;
    std::string_view uuid;
    std::string_view description;
    std::string_view displayName;
    std::string_view shortName;
    int classCode;
    const std::type_info& elementType;
    std::vector<std::string_view> children; // names of the classes that it may hold
};

const std::vector<ClassRow>& rows() {
    static const std::vector<ClassRow> all = {
        {plcClass(),
         "PLC",
         "15728303-44fc-4684-8046-0d22967496f5",
         "S7 compatible plc",
         "S7 Compatible PLC",
         "PLC",
         6,
         typeid(Plc),
         {"DataBlock", "Struct", "Item", "Command"}},
        {dataBlockClass(),
         "DataBlock",
         "2c8e6ca2-51c2-417f-8245-3212af20a29c",
         "S7 data block",
         "Data Block",
         "DB",
         7,
         typeid(DataBlock),
         {"Struct", "Item"}},
        {structClass(),
         "Struct",
         "acf337c0-c2d1-4a00-95f4-8a3c412cf35b",
         "S7 data structure",
         "Structure",
         "Struct",
         9,
         typeid(Struct),
         {"Struct", "Item"}},
        {itemClass(),
         "Item",
         "0ab0172a-3d1c-45bf-8581-f08e117f063d",
         "S7 data item",
         "Data Item",
         "Data",
         2,
         typeid(Item),
         {}},
        {commandClass(),
         "Command",
         "a03a23c1-0557-4b69-8b0d-28c66a10696f",
         "S7 command",
         "Command",
         "Command",
         10,
         typeid(Command),
         {}},
    };
    return all;
}

TEST(ElementClasses, HaveTheirIdentities) {
    for (const ClassRow& row : rows()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.elementClass.name(), row.name);
        EXPECT_EQ(row.elementClass.uuid().toString(), row.uuid);
        EXPECT_EQ(utf8(row.elementClass.description()), row.description);
        EXPECT_EQ(utf8(row.elementClass.displayName()), row.displayName);
        EXPECT_EQ(row.elementClass.shortName(), row.shortName);
        EXPECT_EQ(row.elementClass.classCode(), row.classCode);
    }
}

TEST(ElementClasses, TranslateTheirTextsWheneverTheyAreAsked) {
    for (const ClassRow& row : rows()) {
        SCOPED_TRACE(row.name);
        const std::string context = "workbench::skill::Element::Class|";
        {
            const MarkingTranslator translator;
            EXPECT_EQ(utf8(row.elementClass.description()), context + std::string(row.description));
            EXPECT_EQ(utf8(row.elementClass.displayName()), context + std::string(row.displayName));
            EXPECT_EQ(row.elementClass.shortName(), row.shortName);
        }
        EXPECT_EQ(utf8(row.elementClass.description()), row.description);
    }
}

TEST(ElementClasses, AcceptTheChildrenOfTheTable) {
    for (const ClassRow& parent : rows())
        for (const ClassRow& child : rows())
            EXPECT_EQ(parent.elementClass.acceptsChild(child.elementClass),
                      std::ranges::count(parent.children, child.name) == 1)
                << child.name << " below " << parent.name;
}

TEST(ElementClasses, HaveAFactoryOfTheirOwnEach) {
    for (const ClassRow& row : rows()) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(&row.elementClass.factory(), &row.elementClass.factory());
        EXPECT_EQ(std::ranges::count_if(rows(),
                                        [&](const ClassRow& other) {
                                            return &other.elementClass.factory() ==
                                                   &row.elementClass.factory();
                                        }),
                  1);
    }
}

TEST(ElementClasses, MakeElementsThroughTheirFactories) {
    for (const ClassRow& row : rows()) {
        SCOPED_TRACE(row.name);
        const auto made = row.elementClass.factory().createElement();
        const skill::Element& element = *made;
        EXPECT_EQ(typeid(element), row.elementType);
        EXPECT_EQ(element.modelElement(), nullptr);
    }
}

TEST(ElementClasses, CloneElementsOfTheirOwnAlone) {
    for (const ClassRow& made : rows()) {
        const auto original = made.elementClass.factory().createElement();
        for (const ClassRow& other : rows()) {
            SCOPED_TRACE(std::string(made.name) + " given to " + std::string(other.name));
            if (&other != &made) {
                EXPECT_THROW(
                    static_cast<void>(other.elementClass.factory().cloneElement(*original)),
                    std::bad_cast);
                continue;
            }
            const auto copy = other.elementClass.factory().cloneElement(*original);
            const skill::Element& element = *copy;
            EXPECT_EQ(typeid(element), made.elementType);
            EXPECT_NE(copy, original);
        }
    }
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
