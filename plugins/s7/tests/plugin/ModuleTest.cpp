#include "AtExitRecorder.hpp"
#include "LoadedModule.hpp"

#include <corvane/workbench/bindings/PropertyConfigurationContext.hpp>
#include <corvane/workbench/model/Attribute.hpp>
#include <corvane/workbench/process/Event.hpp>
#include <corvane/workbench/process/Task.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

constexpr const char* kModule = S7_MODULE;

TEST(Module, RegistersItsSkillAsLongAsItIsLoaded) {
    EXPECT_TRUE(skillClasses("S7").empty());
    {
        const LoadedModule module(kModule);
        EXPECT_EQ(skillClasses("S7").size(), 1U);
        EXPECT_TRUE(isInMemory(kModule));
    }
    EXPECT_TRUE(skillClasses("S7").empty());
    EXPECT_FALSE(isInMemory(kModule));
}

TEST(Module, ComesAndGoesAnyNumberOfTimes) {
    for (int i = 0; i != 5; ++i) {
        {
            const LoadedModule module(kModule);
            ASSERT_EQ(skillClasses("S7").size(), 1U);
            EXPECT_NE(LoadedModule::skillClass().createSkill(), nullptr);
        }
        ASSERT_TRUE(skillClasses("S7").empty());
        ASSERT_FALSE(isInMemory(kModule));
    }
}

TEST(Module, StaysWhileItIsOpenedTwice) {
    std::optional<LoadedModule> first(kModule);
    const LoadedModule second(kModule);
    first.reset();
    EXPECT_EQ(skillClasses("S7").size(), 1U);
}

/// One element of each class, configured, with an error where it has one, and copied: whatever that
/// brings into being must not keep the module in memory.
void useEveryClass() {
    for (const char* const name : {"PLC", "Command", "DataBlock", "Item", "Struct"}) {
        const auto& elementClass = LoadedModule::elementClass(name);
        const auto element = elementClass.factory().createElement();
        bindings::PropertyConfigurationContext context;
        context.begin(*element);
        element->configureProperties(context);
        context.commit();
        element->publishConfigured();
        EXPECT_FALSE(elementClass.displayName().empty());
        EXPECT_EQ(elementClass.factory().cloneElement(*element)->localPropertyErrorCount(), 0U);
    }
}

TEST(Module, GoesAfterItsElementsWereUsed) {
    for (int i = 0; i != 3; ++i) {
        {
            const LoadedModule module(kModule);
            useEveryClass();
            EXPECT_THROW(static_cast<void>(LoadedModule::element("Item", R"({"none":1})")),
                         config::UnknownParameterError);
        }
        EXPECT_FALSE(isInMemory(kModule));
    }
}

/// What a program prints; empty with the reason where it fails.
std::string outputOf(const std::string& command) {
    std::FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        throw std::runtime_error("cannot run " + command);
    std::string output;
    std::array<char, 4096> buffer{};
    while (const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), pipe))
        output.append(buffer.data(), size);
    if (pclose(pipe) != 0)
        throw std::runtime_error("failed: " + command);
    return output;
}

std::string exportedSymbols(const char* file) {
    return outputOf(std::string(NM " -D --defined-only '").append(file).append("'"));
}

TEST(Module, ExportsNothing) {
    EXPECT_EQ(exportedSymbols(kModule), "");
    EXPECT_NE(exportedSymbols(WORKBENCH_LIBRARY), ""); // the question is one that can be answered
}

template <class Member>
std::vector<const void*> addressesOf(const skill::Element& element,
                                     bool (skill::Element::*walk)(function_ref<bool(const Member&)>)
                                         const) {
    std::vector<const void*> addresses;
    (element.*walk)([&](const Member& member) {
        addresses.push_back(&member);
        return false;
    });
    return addresses;
}

std::vector<const void*> attributesOf(const skill::Element& element) {
    return addressesOf(element, &skill::Element::forEachAttribute);
}

/// The first attribute of a set of value attributes, where the set itself begins.
const void* valuesOf(bool writable) {
    return attributesOf(*LoadedModule::element(
        "Item", writable ? R"({"dataType":"SInt","writable":true})" : R"({"dataType":"SInt"})"))[0];
}

/// The statics of the module in the order in which they come up, as the host sees them: a class
/// stands behind its factory.
std::vector<const void*> expectedStatics() {
    const auto plc = LoadedModule::element("PLC", "{}");
    const auto command = LoadedModule::element("Command", "{}");
    const auto plcAttributes = attributesOf(*plc);
    const auto commandAttributes = attributesOf(*command);
    const auto events = addressesOf(*command, &skill::Element::forEachEvent);
    const auto tasks = addressesOf(*command, &skill::Element::forEachTask);

    std::vector<const void*> statics = {plcAttributes.at(1), plcAttributes.at(2),
                                        commandAttributes.at(2), commandAttributes.at(4)};
    const auto addClasses = [&](std::initializer_list<const char*> names) {
        for (const char* const name : names) {
            const auto& elementClass = LoadedModule::elementClass(name);
            statics.push_back(&elementClass.factory());
            statics.push_back(&elementClass);
        }
    };
    addClasses({"Item", "Struct"});
    statics.insert(statics.end(), events.begin(), events.end());
    statics.push_back(valuesOf(true));
    statics.push_back(valuesOf(false));
    addClasses({"Command", "DataBlock", "PLC"});
    statics.push_back(&LoadedModule::skillClass());
    statics.insert(statics.end(), tasks.begin(), tasks.end());
    return statics;
}

TEST(Module, BringsItsStaticsUpInOrderAndDownInReverse) {
    const AtExitRecording recording;
    {
        AtExitRecording::record(true);
        const LoadedModule module(kModule);
        AtExitRecording::record(false);
        EXPECT_EQ(AtExitRecording::announced(), expectedStatics());
        EXPECT_TRUE(AtExitRecording::destroyed().empty());
    }
    std::vector<std::size_t> reverse(AtExitRecording::announced().size());
    EXPECT_EQ(reverse.size(), 21U);
    for (std::size_t i = 0; i != reverse.size(); ++i)
        reverse[i] = reverse.size() - 1 - i;
    EXPECT_EQ(AtExitRecording::destroyed(), reverse);
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
