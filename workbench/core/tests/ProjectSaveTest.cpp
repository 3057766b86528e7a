#include "CoreTesting.hpp"

#include "workbench/core/files/FileReplacement.hpp"

#include <corvane/workbench/host/Tree.hpp>

#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <csignal>

namespace corvane::workbench::core::test {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kRack = R"({"@Skill.Wiring.Rack": {"name": "a", "id": "r"}})";

std::string fileWith(std::string_view elements) {
    return R"({"corvane": 1, "elements": [)" + std::string(elements) + "]}";
}

class ProjectSaveTest : public ProjectTest {
protected:
    /// A project in a file of its own.
    Project open(std::string_view name, std::string_view elements = kRack) const {
        return {plugins, folder.write(name, fileWith(elements))};
    }
};

/// While it lives, no file of this process grows beyond `bytes`: writing fails half-way, as it does
/// on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : handler_(::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        ::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

} // namespace

TEST_F(ProjectSaveTest, WritesOneLineForEachElement) {
    auto project = open("p.json", R"({"@Skill.Wiring.Rack": {"name": "a", "children": [
        {"@Skill.Wiring.Box": {"name": "b", "children": [
            {"@Skill.Wiring.Note": {"name": "\"n\"", "text": "ä\n"}}]}},
        {"@Skill.Wiring.Pin": {"name": "p", "peer": "/a/b"}}]}})");
    project.save();
    EXPECT_EQ(contentOf(folder.path() / "p.json"),
              R"({"corvane": 1, "elements": [
  {"@Skill.Wiring.Rack": {"name": "a", "id": "", "children": [
    {"@Skill.Wiring.Box": {"name": "b", "id": "", "children": [
      {"@Skill.Wiring.Note": {"name": "\"n\"", "text": "ä\n"}}
    ]}},
    {"@Skill.Wiring.Pin": {"name": "p", "id": "", "value": "", "peer": "/a/b"}}
  ]}}
]}
)");
    EXPECT_EQ(folder.files(), std::vector<std::string>{"p.json"});
}

TEST_F(ProjectSaveTest, SavesAgainAndAgain) {
    auto project = open("p.json");
    host::rename(project.element("/a"), "b");
    project.save();
    host::rename(project.element("/b"), "c");
    project.save();
    EXPECT_EQ(elementsOf(Project(plugins, folder.path() / "p.json")),
              R"({"@Skill.Wiring.Rack": {"name": "c", "id": "r"}})");
}

TEST_F(ProjectSaveTest, CreatesAProjectThatDoesNotExist) {
    auto project = Project::openOrCreate(plugins, folder.path() / "new.json");
    EXPECT_TRUE(folder.files().empty());
    project.save();
    EXPECT_EQ(contentOf(folder.path() / "new.json"), "{\"corvane\": 1, \"elements\": []}\n");
}

TEST_F(ProjectSaveTest, LeavesTheOldFileWhereWritingFailsHalfWay) {
    std::string many(kRack);
    for (int i = 0; i != 20'000; ++i)
        many += "," + std::string(kRack);
    auto project = open("p.json", many);
    const auto before = contentOf(folder.path() / "p.json");
    host::rename(project.element("/a"), "renamed");
    {
        const FileSizeLimit limit(500'000);
        EXPECT_EQ(messageOf([&] { project.save(); }),
                  "cannot write " + (folder.path() / "p.json").string() + ": File too large");
    }
    EXPECT_EQ(contentOf(folder.path() / "p.json"), before);
    EXPECT_EQ(folder.files(), std::vector<std::string>{"p.json"});
    project.save(); // nothing is lost: there may be room by now
    EXPECT_NE(contentOf(folder.path() / "p.json").find("renamed"), std::string::npos);
}

TEST_F(ProjectSaveTest, LeavesTheOldFileWhereAnElementCannotBeSaved) {
    auto project = open("p.json", R"({"@Skill.Wiring.Rack": {"name": "a", "children": [
        {"@Skill.Wiring.Note": {"name": "n", "text": "unsavable"}}]}})");
    const auto before = contentOf(folder.path() / "p.json");
    EXPECT_EQ(messageOf([&] { project.save(); }), "the note cannot be saved");
    EXPECT_EQ(contentOf(folder.path() / "p.json"), before);
    EXPECT_EQ(folder.files(), std::vector<std::string>{"p.json"});
}

TEST_F(ProjectSaveTest, KeepsPermissions) {
    auto project = open("p.json");
    constexpr auto kPermissions =
        fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;
    fs::permissions(folder.path() / "p.json", kPermissions);
    // A change of permissions is none of the content.
    project.save();
    EXPECT_EQ(fs::status(folder.path() / "p.json").permissions(), kPermissions);
}

TEST_F(ProjectSaveTest, KeepsASymbolicLink) {
    fs::create_directory(folder.path() / "elsewhere");
    folder.write("elsewhere/p.json", fileWith(kRack));
    fs::create_symlink("elsewhere/p.json", folder.path() / "link.json");
    Project project(plugins, folder.path() / "link.json");
    host::rename(project.element("/a"), "renamed");
    project.save();
    EXPECT_TRUE(fs::is_symlink(folder.path() / "link.json"));
    EXPECT_NE(contentOf(folder.path() / "elsewhere/p.json").find("renamed"), std::string::npos);
    EXPECT_EQ(folder.files(), (std::vector<std::string>{"elsewhere", "link.json"}));
}

// Each link of the chain is read from the folder that it stands in.
TEST_F(ProjectSaveTest, FollowsLinksWhoseFileIsNotThereYet) {
    fs::create_directory(folder.path() / "elsewhere");
    fs::create_symlink("elsewhere/next.json", folder.path() / "link.json");
    fs::create_symlink("p.json", folder.path() / "elsewhere/next.json");
    auto project = Project::openOrCreate(plugins, folder.path() / "link.json");
    project.save();
    EXPECT_TRUE(fs::is_symlink(folder.path() / "link.json"));
    EXPECT_TRUE(fs::is_symlink(folder.path() / "elsewhere/next.json"));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(folder.path() / "elsewhere/p.json")));
    project.save(); // it knows what it wrote
    EXPECT_EQ(elementsOf(Project(plugins, folder.path() / "link.json")), "");
}

TEST_F(ProjectSaveTest, SaysThatLinksLeadNowhere) {
    auto project = load(kRack);
    const auto loop = folder.path() / "loop.json";
    fs::create_symlink("loop.json", loop);
    EXPECT_EQ(messageOf([&] { project.saveTo(loop, Project::OnConflict::overwrite); }),
              "cannot write " + loop.string() + ": Too many levels of symbolic links");
    fs::create_symlink("nowhere/p.json", folder.path() / "lost.json");
    EXPECT_EQ(messageOf([&] { project.saveTo(folder.path() / "lost.json"); }),
              "cannot write " + (folder.path() / "lost.json").string() +
                  ": No such file or directory");
    EXPECT_TRUE(fs::is_symlink(loop));
    EXPECT_TRUE(fs::is_symlink(folder.path() / "lost.json"));
}

TEST_F(ProjectSaveTest, RefusesToOverwriteWhatChangedSinceItWasRead) {
    const auto file = folder.path() / "p.json";
    auto project = open("p.json");
    const auto other = fileWith(R"({"@Skill.Wiring.Rack": {"name": "other"}})");
    folder.write("p.json", other);
    EXPECT_EQ(messageOf([&] { project.save(); }),
              file.string() + " was changed by another program and is not overwritten");
    EXPECT_EQ(contentOf(file), other);

    project.save(Project::OnConflict::overwrite);
    EXPECT_EQ(elementsOf(Project(plugins, file)), kRack);
    project.save(); // the conflict is settled
}

// The content may change without its size.
TEST_F(ProjectSaveTest, NoticesAChangeOfTheTimeAlone) {
    const auto file = folder.path() / "p.json";
    auto project = open("p.json");
    fs::last_write_time(file, fs::last_write_time(file) + std::chrono::nanoseconds(1000));
    EXPECT_NE(messageOf([&] { project.save(); }), "");
}

TEST_F(ProjectSaveTest, RefusesToOverwriteWhatIsNotItsOwn) {
    auto project = Project::openOrCreate(plugins, folder.path() / "new.json");
    folder.write("new.json", "created meanwhile");
    EXPECT_NE(messageOf([&] { project.save(); }), "");
    EXPECT_EQ(contentOf(folder.path() / "new.json"), "created meanwhile");

    auto other = open("p.json");
    EXPECT_NE(messageOf([&] { other.saveTo(folder.path() / "new.json"); }), "");
    EXPECT_EQ(contentOf(folder.path() / "new.json"), "created meanwhile");
    other.saveTo(folder.path() / "another.json");
    other.save();
    EXPECT_EQ(elementsOf(Project(plugins, folder.path() / "another.json")), kRack);
}

TEST_F(ProjectSaveTest, NoticesThatTheFileWentAway) {
    auto project = open("p.json");
    fs::remove(folder.path() / "p.json");
    EXPECT_NE(messageOf([&] { project.save(); }), "");
    EXPECT_TRUE(folder.files().empty());
}

TEST_F(ProjectSaveTest, SaysWhichFileCannotBeRead) {
    EXPECT_EQ(messageOf([&] { const Project project(plugins, folder.path() / "none.json"); }),
              (folder.path() / "none.json").string() + ": No such file or directory");
    EXPECT_EQ(messageOf([&] { const Project project(plugins, folder.path()); }),
              folder.path().string() + ": Is a directory");
}

TEST_F(ProjectSaveTest, AddsElementsWhereTheyAreAccepted) {
    auto project = load(kRack);
    const auto& rack = *plugins.findClass("@Skill.Wiring.Rack");
    const auto& pin = *plugins.findClass("@Skill.Wiring.Pin");
    auto& root = project.model().root();
    EXPECT_EQ(project.add(root, rack, "a").path(), "/a 2");
    EXPECT_EQ(project.add(project.element("/a"), pin, "p").path(), "/a/p");
    const std::string refusal = R"(an element of the class “Pin” cannot stand there)";
    EXPECT_EQ(messageOf([&] { project.add(root, pin, "p"); }), refusal);
    EXPECT_EQ(messageOf([&] { project.add(project.element("/a/p"), pin, "p"); }), refusal);
    EXPECT_EQ(messageOf([&] { static_cast<void>(project.element("/a/q")); }),
              R"(the project has no element “/a/q”)");
}

TEST_F(ProjectSaveTest, ReplacesNothingWhereTheWriterThrows) {
    const auto file = folder.write("f.txt", "old");
    EXPECT_EQ(messageOf([&] {
                  replaceFile(file, std::nullopt, [](utils::io::OutputStream& stream) {
                      stream.write("half of it");
                      throw std::runtime_error("stop");
                  });
              }),
              "stop");
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(folder.files(), std::vector<std::string>{"f.txt"});
}

} // namespace corvane::workbench::core::test
