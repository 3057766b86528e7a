#include "CoreTesting.hpp"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <functional>

namespace corvane::workbench::core::test {

namespace {

bool isInMemory(const std::filesystem::path& file) {
    void* const handle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr)
        ::dlclose(handle);
    return handle != nullptr;
}

std::size_t registeredSkills() {
    std::size_t count = 0;
    skill::Skill::Class::forEachRegistered([&](const auto&) { ++count; });
    return count;
}

std::vector<std::string> skillNames(const PluginHost& plugins) {
    std::vector<std::string> names;
    for (const auto& skill : plugins.skills())
        names.emplace_back(skill.skillClass->name());
    return names;
}

using Names = std::vector<std::string>;

/// A copy of the plug-in that comes with the program, writable by its owner only.
std::filesystem::path copyOfOwnPlugin(const TemporaryFolder& folder) {
    const auto file = folder.path() / "copy.so";
    std::filesystem::copy_file(CORVANE_OWN_PLUGIN, file);
    EXPECT_EQ(::chmod(file.c_str(), 0644), 0);
    return file;
}

/// Why a plug-in is not loaded; "" where it is.
std::string reasonAgainst(const std::filesystem::path& file) {
    PluginHost plugins;
    plugins.load(file);
    return plugins.failures().empty() ? "" : plugins.failures().front().reason;
}

} // namespace

TEST(PluginHost, DescribesWhatAPlugInBrings) {
    PluginHost plugins;
    plugins.load(testPlugin("Wiring"));

    ASSERT_EQ(plugins.failures().size(), 0U);
    ASSERT_EQ(plugins.skills().size(), 1U);
    const auto& skill = plugins.skills().front();
    EXPECT_EQ(skill.skillClass->name(), "Wiring");
    EXPECT_EQ(skill.file, testPlugin("Wiring"));
    EXPECT_NE(skill.skill, nullptr);

    ASSERT_EQ(skill.classes.size(), 4U);
    const Names keys{"@Skill.Wiring.Rack", "@Skill.Wiring.Box", "@Skill.Wiring.Pin",
                     "@Skill.Wiring.Note"};
    for (std::size_t i = 0; i != keys.size(); ++i) {
        EXPECT_EQ(skill.classes[i].documentKey, keys[i]);
        EXPECT_EQ(skill.classes[i].topLevel, i == 0);
        EXPECT_EQ(plugins.findClass(keys[i]), &skill.classes[i]);
        EXPECT_EQ(&plugins.entryOf(*skill.classes[i].elementClass), &skill.classes[i]);
    }
    EXPECT_EQ(plugins.findClass("@Skill.Wiring.Shelf"), nullptr);
    EXPECT_EQ(plugins.findClass("@Skill.S7.PLC"), nullptr);
}

TEST(PluginHost, UnloadsWithEverythingThatThePlugInsBrought) {
    for (int round = 0; round != 3; ++round) {
        {
            PluginHost plugins;
            plugins.load(testPlugin("Wiring"));
            plugins.load(CORVANE_OWN_PLUGIN);
            EXPECT_EQ(skillNames(plugins), (Names{"Wiring", "S7"}));
            EXPECT_EQ(registeredSkills(), 2U);
        }
        EXPECT_EQ(registeredSkills(), 0U);
        EXPECT_FALSE(isInMemory(testPlugin("Wiring")));
        EXPECT_FALSE(isInMemory(CORVANE_OWN_PLUGIN));
    }
}

TEST(PluginHost, PassesOverAFileThatIsLoaded) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink(testPlugin("Wiring"), folder.path() / "Again.so");
    PluginHost plugins;
    plugins.load(testPlugin("Wiring"));
    plugins.load(testPlugin("Wiring"));
    plugins.load(folder.path() / "Again.so");
    EXPECT_EQ(skillNames(plugins), Names{"Wiring"});
    EXPECT_EQ(plugins.failures().size(), 0U);
}

TEST(PluginHost, LoadsAFolderInTheOrderOfNames) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink(testPlugin("Wiring"), folder.path() / "b.so");
    std::filesystem::create_symlink(CORVANE_OWN_PLUGIN, folder.path() / "a.so");
    folder.write("c.txt", "no plug-in");
    PluginHost plugins;
    plugins.loadFolder(folder.path());
    EXPECT_EQ(skillNames(plugins), (Names{"S7", "Wiring"}));
    EXPECT_EQ(plugins.failures().size(), 0U);
}

TEST(PluginHost, TakesAFolderThatDoesNotExistForAnEmptyOne) {
    const TemporaryFolder folder;
    PluginHost plugins;
    plugins.loadFolder(folder.path() / "none");
    EXPECT_TRUE(plugins.skills().empty());
    EXPECT_TRUE(plugins.failures().empty());
}

struct BrokenPlugin {
    std::string name;
    std::string reason;

    friend std::ostream& operator<<(std::ostream& stream, const BrokenPlugin& plugin) {
        return stream << plugin.name;
    }
};

class BrokenPluginTest : public testing::TestWithParam<BrokenPlugin> {};

// A plug-in that cannot be loaded says why, leaves nothing behind and stops no other.
TEST_P(BrokenPluginTest, IsReportedAndLeavesTheOthersAlone) {
    const auto file = testPlugin(GetParam().name);
    PluginHost plugins;
    plugins.load(testPlugin("Wiring"));
    plugins.load(file);
    plugins.load(CORVANE_OWN_PLUGIN);

    EXPECT_EQ(skillNames(plugins), (Names{"Wiring", "S7"}));
    ASSERT_EQ(plugins.failures().size(), 1U);
    EXPECT_EQ(plugins.failures().front().file, file);
    EXPECT_EQ(plugins.failures().front().reason, GetParam().reason);
    EXPECT_FALSE(isInMemory(file));
    EXPECT_EQ(registeredSkills(), 2U);
}

INSTANTIATE_TEST_SUITE_P(
    PluginHost, BrokenPluginTest,
    testing::Values(BrokenPlugin{"MissingSymbol", "undefined symbol: corvaneSymbolThatNobodyHas"},
                    BrokenPlugin{"NoSkill", "it brings no skill"},
                    BrokenPlugin{"DuplicateName", "the skill name “Wiring” is taken by " +
                                                      testPlugin("Wiring").string()},
                    BrokenPlugin{"DuplicateUuid", "the UUID of the skill “Impostor” is taken by " +
                                                      testPlugin("Wiring").string()},
                    BrokenPlugin{"DuplicateClass", "the element class “Thing” is registered twice"},
                    BrokenPlugin{"ThrowingException", "the licence has ended"},
                    BrokenPlugin{"ThrowingNumber", "it threw what is no exception"},
                    BrokenPlugin{"Absent", "No such file or directory"}),
    [](const auto& broken) { return broken.param.name; });

TEST(PluginHost, ReportsAFileThatIsNoModule) {
    const TemporaryFolder folder;
    PluginHost plugins;
    plugins.load(folder.write("text.so", "this is a text and not even a short one, by any means; "
                                         "the loader looks at its head and finds no module\n"));
    ASSERT_EQ(plugins.failures().size(), 1U);
    EXPECT_EQ(plugins.failures().front().reason, "invalid ELF header");
    EXPECT_TRUE(plugins.skills().empty());
}

TEST(PluginHost, LoadsOnlyRegularFiles) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path() / "folder.so");
    ASSERT_EQ(::mkfifo((folder.path() / "pipe.so").c_str(), 0600), 0);
    PluginHost plugins;
    plugins.loadFolder(folder.path());
    ASSERT_EQ(plugins.failures().size(), 2U);
    for (const auto& failure : plugins.failures())
        EXPECT_EQ(failure.reason, "it is no regular file");
}

// Half a copy would end the program as soon as the loader touches what is not there.
TEST(PluginHost, LoadsOnlyWholeFiles) {
    const TemporaryFolder folder;
    const auto file = copyOfOwnPlugin(folder);
    const auto size = std::filesystem::file_size(file);
    EXPECT_EQ(reasonAgainst(file), "");
    for (const std::uintmax_t part : {size - 1, size / 2, size / 100, std::uintmax_t{64}}) {
        std::filesystem::resize_file(file, part);
        EXPECT_TRUE(reasonAgainst(file).starts_with("it is not whole: " + std::to_string(part) +
                                                    " of at least "))
            << part << ": " << reasonAgainst(file);
    }
}

TEST(PluginHost, LoadsOnlyWhatNobodyElseMayChange) {
    const TemporaryFolder folder;
    const auto file = copyOfOwnPlugin(folder);
    const auto ofFile = "others may write to it; only its owner, you or the system, should";
    const auto ofFolder = "others may write to its folder, " + folder.path().string();
    const auto change = [&](const std::filesystem::path& path, unsigned mode) {
        return [=] { ASSERT_EQ(::chmod(path.c_str(), mode), 0) << path; };
    };
    const std::vector<std::pair<std::function<void()>, std::string>> rows = {
        {change(file, 0646), ofFile},
        {change(file, 0644), ""},
        {change(folder.path(), 0777), ofFolder},
        {change(folder.path(), 01777), ""},
        {change(folder.path(), 0755), ""},
    };
    for (const auto& [prepare, reason] : rows) {
        prepare();
        EXPECT_EQ(reasonAgainst(file), reason);
    }
    // A link is as safe as what it leads to.
    const TemporaryFolder links;
    std::filesystem::create_symlink(file, links.path() / "link.so");
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    EXPECT_EQ(reasonAgainst(links.path() / "link.so"), ofFolder);
}

TEST(PluginHost, LoadsNothingThatBelongsToAnotherUser) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the system's owner can give a file away";
    constexpr uid_t kOther = 1234;
    const TemporaryFolder folder;
    const auto file = copyOfOwnPlugin(folder);
    ASSERT_EQ(::chown(file.c_str(), kOther, 0), 0);
    EXPECT_TRUE(reasonAgainst(file).starts_with("others may write to it"));
    ASSERT_EQ(::chown(file.c_str(), 0, kOther), 0);
    EXPECT_EQ(reasonAgainst(file), "");
    ASSERT_EQ(::chmod(file.c_str(), 0664), 0);
    EXPECT_TRUE(reasonAgainst(file).starts_with("others may write to it"));
}

TEST(PluginHost, ReportsAFolderThatIsNotLookedInto) {
    const TemporaryFolder folder;
    const auto file = copyOfOwnPlugin(folder);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    PluginHost plugins;
    plugins.loadFolder(folder.path());
    plugins.loadFolder(file);
    EXPECT_TRUE(plugins.skills().empty());
    ASSERT_EQ(plugins.failures().size(), 2U);
    EXPECT_EQ(plugins.failures()[0].file, folder.path());
    EXPECT_EQ(plugins.failures()[0].reason,
              "others may write to its folder, " + folder.path().string());
    EXPECT_EQ(plugins.failures()[1].file, file);
    EXPECT_EQ(plugins.failures()[1].reason, "Not a directory");
}

} // namespace corvane::workbench::core::test
