#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

#include <unistd.h>

namespace corvane::test {

namespace fs = std::filesystem;

namespace {

/// While it lives, this process and the programs that it starts have the rights of an ordinary
/// user, who owns the workplace: the administrator may write where permissions forbid it.
class OrdinaryUser {
public:
    explicit OrdinaryUser(const Sandbox& place) : changed_(::geteuid() == 0) {
        if (!changed_)
            return;
        EXPECT_EQ(::chown(place.folder().c_str(), kUser, kUser), 0);
        for (const auto& entry : fs::directory_iterator(place.folder()))
            EXPECT_EQ(::chown(entry.path().c_str(), kUser, kUser), 0);
        EXPECT_EQ(::setresuid(kUser, kUser, 0), 0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (!changed_)
            return;
        EXPECT_EQ(::setresuid(0, 0, 0), 0);
    }

    /// False where the program lies in a folder of the administrator's own.
    [[nodiscard]] static bool mayRunTheProgram() { return ::access(CORVANE_PROGRAM, X_OK) == 0; }

private:
    static constexpr uid_t kUser = 65534; // nobody
    bool changed_;
};

/// A project and a file to import.
class PermissionsTest : public testing::Test {
public:
    PermissionsTest() {
        place.write("P.json", R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "h", "children": [
    {"@Skill.S7.Command": {"name": "c"}}]}}]})");
        place.write("a.db", dataBlock("Data", "x : Bool;"));
    }
    PermissionsTest(const PermissionsTest&) = delete;
    PermissionsTest& operator=(const PermissionsTest&) = delete;
    ~PermissionsTest() override {
        fs::permissions(place.folder(), fs::perms::owner_all); // so that it can be removed
    }

    /// Expects that no verb saves, and that each says so.
    void expectNothingSaved() {
        const auto before = place.read("P.json");
        const std::vector<std::vector<std::string>> jobs{
            {"set", "P.json", "/PLC", "Rack number=1"}, {"add", "P.json", "/PLC", "Command"},
            {"rename", "P.json", "/PLC", "Press"},      {"remove", "P.json", "/PLC/c"},
            {"import", "a.db", "--project", "P.json"},
        };
        for (const auto& job : jobs) {
            EXPECT_EQ(place.run(job), failed("cannot write P.json: Permission denied")) << job[0];
            EXPECT_EQ(place.read("P.json"), before);
            EXPECT_EQ(place.files(), (std::vector<std::string>{"P.json", "a.db"}));
        }
    }

    Sandbox place;
};

constexpr auto kRead = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;

} // namespace

// Though a new file could take its name.
TEST_F(PermissionsTest, AFileThatMustNotBeWrittenIsNotReplaced) {
    fs::permissions(place.folder() / "P.json", kRead);
    const OrdinaryUser user(place);
    if (!OrdinaryUser::mayRunTheProgram())
        GTEST_SKIP() << "an ordinary user may not run the program";
    expectNothingSaved();
    EXPECT_EQ(fs::status(place.folder() / "P.json").permissions(), kRead);
}

TEST_F(PermissionsTest, AFolderThatTakesNoFileKeepsTheOldOne) {
    fs::permissions(place.folder(), fs::perms::owner_read | fs::perms::owner_exec);
    const OrdinaryUser user(place);
    if (!OrdinaryUser::mayRunTheProgram())
        GTEST_SKIP() << "an ordinary user may not run the program";
    expectNothingSaved();
}

} // namespace corvane::test
