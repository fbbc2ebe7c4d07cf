#include "platform/Files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>

using testing::ElementsAre;

namespace {

namespace fs = std::filesystem;

// Each test has the working folder to itself.
class Files : public testing::Test {
protected:
    void SetUp() override {
        old = fs::current_path();
        std::string name = (fs::temp_directory_path() / "files-XXXXXX").string();
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        fs::current_path(name);
    }
    void TearDown() override {
        const fs::path mine = fs::current_path();
        fs::current_path(old);
        fs::remove_all(mine);
    }

    static void Put(const fs::path& path, const std::string& content) {
        std::ofstream(path, std::ios::binary) << content;
    }
    static std::string Get(const fs::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static bool Write(const std::string& path, const std::string& content) {
        return platform::WriteWholeFile(path, content.data(), content.size());
    }

    std::vector<uint8_t> bytes;

private:
    fs::path old;
};

// The number of a process that has ended.
pid_t DeadProcess() {
    const pid_t pid = fork();
    if (pid == 0) {
        _exit(0);
    }
    waitpid(pid, nullptr, 0);
    return pid;
}

}  // namespace

TEST_F(Files, GamePathsFindTheirFilesInAnyLetterCase) {
    fs::create_directories("Objects/Enemy");
    Put("Objects/Enemy/Saucer.aob", "model");
    EXPECT_EQ(platform::ResolvePath("objects\\ENEMY\\saucer.AOB"), "Objects/Enemy/Saucer.aob");
    EXPECT_EQ(platform::ResolvePath(".\\objects/enemy\\"), "./Objects/Enemy/");
    EXPECT_EQ(platform::ResolvePath("objects\\New\\Thing.aob"), "Objects/New/Thing.aob")
        << "what does not exist keeps its spelling";
    EXPECT_EQ(platform::ResolvePath(fs::current_path().string() + "\\OBJECTS"),
              fs::current_path().string() + "/Objects");
    EXPECT_EQ(platform::ResolvePath(""), "");

    Put("readme", "lower");
    Put("README", "upper");
    EXPECT_EQ(platform::ResolvePath("readme"), "readme") << "the exact spelling goes first";
    EXPECT_EQ(platform::ResolvePath("ReadMe"), "README") << "then the first in byte order";

    EXPECT_THAT(platform::ListFolder("OBJECTS"), ElementsAre("Enemy"));
    EXPECT_THAT(platform::ListFolder(""), ElementsAre("Objects", "README", "readme"));
    EXPECT_TRUE(platform::ListFolder("Nowhere").empty());
}

TEST_F(Files, ReadingIsBoundedAndTakesRegularFilesOnly) {
    Put("five", "12345");
    EXPECT_FALSE(platform::ReadWholeFile("five", bytes, 5));
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "12345");
    EXPECT_TRUE(platform::ReadWholeFile("five", bytes, 4));
    EXPECT_TRUE(bytes.empty());
    Put("none", "");
    EXPECT_FALSE(platform::ReadWholeFile("none", bytes, 0));

    fs::create_directory("folder");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    EXPECT_TRUE(platform::ReadWholeFile("folder", bytes, 100));
    EXPECT_TRUE(platform::ReadWholeFile("pipe", bytes, 100)) << "must not wait for a writer";
    EXPECT_TRUE(platform::ReadWholeFile("missing", bytes, 100));

    std::string text;
    Put("text", "a\r\nb\rc\n\r\n\r");
    EXPECT_FALSE(platform::ReadWholeText("text", text, 100));
    EXPECT_EQ(text, "a\nb\rc\n\n\r");
}

TEST_F(Files, AFileIsReplacedInOneStepUnderItsNameOnDisk) {
    fs::create_directory("Data");
    Put("Data/UserPrefs.bin", "old");
    fs::permissions("Data/UserPrefs.bin", fs::perms(0640));
    EXPECT_FALSE(Write("data\\userprefs.BIN", "new"));
    EXPECT_EQ(Get("Data/UserPrefs.bin"), "new");
    EXPECT_EQ(fs::status("Data/UserPrefs.bin").permissions(), fs::perms(0640));
    EXPECT_FALSE(Write("Data\\Empty", ""));
    EXPECT_THAT(platform::ListFolder("Data"), ElementsAre("Empty", "UserPrefs.bin"));

    fs::create_symlink("Data/UserPrefs.bin", "link");
    EXPECT_FALSE(Write("link", "through"));
    EXPECT_TRUE(fs::is_symlink("link"));
    EXPECT_EQ(Get("Data/UserPrefs.bin"), "through");
}

TEST_F(Files, AFailedWriteLeavesTheOldFileAndNothingElse) {
    Put("table", "the old table");
    // A file that may grow no further, as on a full disk.
    rlimit before = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit full = before;
    full.rlim_cur = 1000;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
    const bool failed = Write("table", std::string(5000, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_TRUE(failed);
    EXPECT_EQ(Get("table"), "the old table");

    EXPECT_TRUE(Write("nowhere/table", "x")) << "no such folder";
    EXPECT_TRUE(Write("table/inside", "x")) << "a file is no folder";
    fs::create_directory("folder");
    EXPECT_TRUE(Write("folder", "x"));
    EXPECT_THAT(platform::ListFolder("."), ElementsAre("folder", "table"));
    if (geteuid() != 0) {  // nothing is read-only to root
        fs::permissions("folder", fs::perms(0555));
        EXPECT_TRUE(Write("folder/new", "x"));
        EXPECT_TRUE(fs::is_empty("folder"));
    }
}

TEST_F(Files, LeftoversOfKilledSavesGoWithTheNextSaveOfThatFile) {
    const std::string dead = "prefs." + std::to_string(DeadProcess()) + ".saving";
    const std::string living = "prefs." + std::to_string(getppid()) + ".saving";
    Put(dead, "half");
    Put(living, "half");
    Put("other." + std::to_string(DeadProcess()) + ".saving", "half");
    Put("prefs.notes.saving", "the player's own");
    EXPECT_FALSE(Write("prefs", "whole"));
    EXPECT_EQ(Get("prefs"), "whole");
    EXPECT_FALSE(fs::exists(dead));
    EXPECT_TRUE(fs::exists(living)) << "another game is writing that one now";
    EXPECT_TRUE(fs::exists("prefs.notes.saving"));
    EXPECT_EQ(platform::ListFolder(".").size(), 4U);
}
