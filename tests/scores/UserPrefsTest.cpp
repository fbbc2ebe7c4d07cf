#include "scores/UserPrefs.h"

#include <cstring>
#include <fstream>
#include <sstream>

#include "core/Registry.h"
#include "platform/Files.h"
#include "support/GameFixture.h"

namespace {

std::string ReadBack(const std::string& gamePath) {
    std::ifstream file(platform::ResolvePath(gamePath), std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

// A record as the program writes it, its version and proxy host to choose.
std::string Record(char major, const std::string& proxyHost) {
    std::string record("\x00\x00\x00\x00\x00\x00", 6);
    record[0] = major;
    record += std::string("\x00\x04\x00\x03\x10\x00\x01\x00\x00", 9);  // 1024 x 768 x 16
    record += std::string("\x01\x00\x00\x00", 4);                      // server 1
    record += "WSADFG";
    record += std::string("\x01\x00\x00\x00\x38\x0C\x00\x00", 8);  // proxy used, port 3128
    return record + proxyHost + "\r";
}

class UserPrefsTest : public RoomFixture {};

TEST_F(UserPrefsTest, AFirstStartTakesTheDefaultsAndTwoServers) {
    const UserPrefs prefs;
    EXPECT_TRUE(prefs.GetDefaultsApplied());
    EXPECT_EQ(prefs.GetScreenWidth(), 800);
    EXPECT_EQ(prefs.GetScreenHeight(), 600);
    EXPECT_EQ(prefs.GetColourBits(), 32);
    EXPECT_TRUE(prefs.GetTransparency() && prefs.GetFog() && prefs.GetOnlineHiscores());
    EXPECT_FALSE(prefs.GetAntialiasing() || prefs.UseProxy());
    EXPECT_EQ(std::string(prefs.GetKeys().begin(), prefs.GetKeys().end()), "IKJL B");
    ASSERT_EQ(prefs.GetServerCount(), 2);
    EXPECT_EQ(prefs.GetServerPort(0), 8080);
    EXPECT_EQ(prefs.GetServerPath(1), "/servlet/NebulorixHST");
    EXPECT_FALSE(std::filesystem::exists("Data/HSTServers.dat"));
}

TEST_F(UserPrefsTest, TheRecordIsReadAndWrittenByteForByte) {
    const std::string record = Record(1, "proxy.test");
    ASSERT_EQ(record.size(), 44U) << "a proxy host of 10 characters makes 44 bytes";
    WriteFile("Data\\UserPrefs.bin", record);
    const UserPrefs prefs;
    EXPECT_FALSE(prefs.GetDefaultsApplied());
    EXPECT_EQ(prefs.GetScreenWidth(), 1024);
    EXPECT_EQ(prefs.GetColourBits(), 16);
    EXPECT_TRUE(prefs.GetAntialiasing());
    EXPECT_FALSE(prefs.GetTransparency() || prefs.GetFog() || prefs.GetOnlineHiscores());
    EXPECT_EQ(prefs.GetServerIndex(), 1);
    EXPECT_TRUE(prefs.UseProxy());
    EXPECT_EQ(prefs.GetProxyPort(), 3128);
    EXPECT_EQ(prefs.GetProxyHost(), "proxy.test");
    ASSERT_FALSE(prefs.Save());
    EXPECT_EQ(ReadBack("Data\\UserPrefs.bin"), record);
}

TEST_F(UserPrefsTest, OlderShortAndHostileRecordsAreHarmless) {
    WriteFile("Data\\UserPrefs.bin", Record(0, "proxy.test"));
    EXPECT_EQ(UserPrefs().GetScreenWidth(), 1024) << "an old record keeps its own fields";
    EXPECT_FALSE(UserPrefs().UseProxy()) << "but has no proxy";

    const std::string whole = Record(1, "proxy.test");
    for (size_t size = 0; size < whole.size(); ++size) {
        WriteFile("Data\\UserPrefs.bin", whole.substr(0, size));
        const UserPrefs prefs;
        EXPECT_EQ(prefs.GetDefaultsApplied(), size < 25) << size << " bytes";
        EXPECT_FALSE(prefs.GetProxyHost().empty()) << size << " bytes";
    }
    std::string hostile = Record(1, std::string(3000, 'x'));
    hostile.replace(6, 4, "\xFF\xFF\x00\x00", 4);
    hostile.replace(15, 4, "\xFF\xFF\xFF\x7F", 4);
    WriteFile("Data\\UserPrefs.bin", hostile);
    const UserPrefs prefs;
    EXPECT_EQ(prefs.GetScreenWidth(), 800);
    EXPECT_EQ(prefs.GetServerIndex(), 0);
    EXPECT_EQ(prefs.GetCurrentServerHost(), prefs.GetServerHost(0));
    EXPECT_LE(prefs.GetProxyHost().size(), 259U);
    EXPECT_TRUE(Logged("out of range"));
}

TEST_F(UserPrefsTest, AddingAServerWritesTheListWithTheBuiltInOnes) {
    UserPrefs prefs;
    ASSERT_FALSE(prefs.AddServer("scores.test", "/table", 81));
    EXPECT_EQ(prefs.GetServerCount(), 3);
    EXPECT_EQ(prefs.GetServerHost(2), "scores.test");
    const std::string expected =
        "NumServers: 3\n"
        "Server: hst.example\t Path: /examples/servlet/NebulorixHST\t Port: 8080\n"
        "Server: hst2.example\t Path: /servlet/NebulorixHST\t Port: 80\n"
        "Server: scores.test\t Path: /table\t Port: 81\n";
    EXPECT_EQ(ReadBack("Data\\HSTServers.dat"), expected);
    EXPECT_EQ(ReadBack("Data\\tmpSrvrs.dat"), expected);
    EXPECT_EQ(UserPrefs().GetServerCount(), 3);
}

TEST_F(UserPrefsTest, AServerListThatCannotBeReadGivesTheDefaults) {
    WriteFile("Data\\UserPrefs.bin", Record(1, "proxy.test"));
    for (const char* list : {"NumServers: 0\n", "", "NumServers: -5\n", "NumServers: 2000000000\n",
                             "NumServers: 2\nServer: a Path: /b Port: 80\n", "NumServers: x\n",
                             "NumServers: 1\nServer: a Path: /b Port: 99999\n"}) {
        WriteFile("Data\\HSTServers.dat", list);
        const UserPrefs prefs;
        EXPECT_TRUE(prefs.GetDefaultsApplied()) << list;
        EXPECT_EQ(prefs.GetServerCount(), 2) << list;
    }
    WriteFile("Data\\HSTServers.dat", "NumServers: 1\r\nServer: a\t Path: /b\t Port: 80\r\n");
    EXPECT_EQ(UserPrefs().GetServerPath(0), "/b") << "a list with CR LF reads the same";
}

TEST_F(UserPrefsTest, AReadOnlyFolderLosesNothing) {
    UserPrefs prefs;
    ASSERT_FALSE(prefs.Save());
    std::filesystem::rename("Data", "Elsewhere");
    EXPECT_TRUE(prefs.Save());
    EXPECT_TRUE(prefs.AddServer("scores.test", "/table", 81));
    EXPECT_TRUE(Logged("Failed to open/create file Data\\tmpSrvrs.dat\n"));
    EXPECT_EQ(prefs.GetServerCount(), 2);
}

}  // namespace
