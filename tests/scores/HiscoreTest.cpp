#include <cstring>
#include <fstream>
#include <sstream>

#include "platform/Random.h"
#include "scores/HiscoreProtocol.h"
#include "scores/HiscoreTable.h"
#include "support/GameFixture.h"

namespace {

class HiscoreTableTest : public RoomFixture {
protected:
    static std::string ReadBack() {
        std::ifstream file("Data/NXHS.bin", std::ios::binary);
        std::ostringstream content;
        content << file.rdbuf();
        return content.str();
    }
};

TEST_F(HiscoreTableTest, ANewResultRanksBelowOlderOnesWithItsScore) {
    HiscoreTable table;
    EXPECT_EQ(table.TopScore(), 2000);
    table.Insert(100, "equal to the lowest", 1, 0.0F);
    EXPECT_EQ(table.Entry(19).score, 100);
    EXPECT_STREQ(table.Entry(19).name, "VEXO................");
    table.Insert(1950, "Ann", 7, 25.0F);
    EXPECT_STREQ(table.Entry(1).name, "Ann");
    EXPECT_EQ(table.LowestScore(), 200) << "the old lowest has dropped out";
    table.Insert(1950, "Bob", 1, 0.0F);
    EXPECT_STREQ(table.Entry(2).name, "Bob");
}

TEST_F(HiscoreTableTest, TheFileKeepsEveryFieldAndHidesTheNames) {
    HiscoreTable table;
    table.Insert(0x01020304, "ABCDEFGHIJKLMNOPQRST", 40, 12.5F);
    table.Insert(1999, "Bob", 1, 0.0F);
    ASSERT_FALSE(table.Save("Data\\NXHS.bin"));
    const std::string file = ReadBack();
    ASSERT_EQ(file.size(), 800U);
    // Record 0: byte j of the name is lowered by j mod 3, its zero included.
    for (int j = 0; j < 21; ++j) {
        const char plain = j < 20 ? static_cast<char>('A' + j) : '\0';
        EXPECT_EQ(file[j], static_cast<char>(plain - j % 3)) << "byte " << j;
    }
    EXPECT_EQ(file.substr(21, 4), "\x04\x03\x02\x01");
    EXPECT_EQ(file.substr(25, 4), std::string("\x28\x00\x00\x00", 4));
    EXPECT_EQ(file.substr(29, 4), std::string("\x00\x00\x48\x41", 4));
    EXPECT_EQ(file.substr(33, 3), std::string("\x01\x00\x00", 3));

    HiscoreTable loaded;
    loaded.Load("Data\\NXHS.bin");
    for (int i = 0; i < kHiscoreEntries; ++i) {
        EXPECT_STREQ(loaded.Entry(i).name, table.Entry(i).name) << i;
        EXPECT_EQ(loaded.Entry(i).score, table.Entry(i).score) << i;
        EXPECT_EQ(loaded.Entry(i).time, table.Entry(i).time) << i;
    }
    ASSERT_FALSE(table.Save("Data\\NXHS.bin"));
    EXPECT_NE(ReadBack(), file) << "short names are padded with other noise each time";
}

TEST_F(HiscoreTableTest, FilesOfAnotherSizeAreRefusedAndHostileOnesContained) {
    HiscoreTable table;
    table.Load("Data\\NXHS.bin");
    EXPECT_TRUE(Logged("\nWARNING: Cant load hiscores from file\n\n"));
    for (const int size : {0, 799, 801, 100000}) {
        log.clear();
        WriteFile("Data\\NXHS.bin", std::string(size, 'x'));
        table.Load("Data\\NXHS.bin");
        EXPECT_TRUE(Logged("\nWARNING: Hiscores file is invalid\n\n")) << size;
        EXPECT_EQ(table.TopScore(), 2000) << size;
    }
    for (int run = 0; run < 200; ++run) {
        std::string noise(800, '\0');
        for (char& byte : noise) {
            byte = static_cast<char>(platform::Random());
        }
        WriteFile("Data\\NXHS.bin", noise);
        table.Load("Data\\NXHS.bin");
        for (int i = 0; i < kHiscoreEntries; ++i) {
            EXPECT_LE(std::strlen(table.Entry(i).name), 20U);
        }
    }
}

// --- The online protocol ---

HiscoreEntry AnnLee() {
    HiscoreEntry entry;
    SetName(entry, "Ann Lee.............");
    entry.score = 12345;
    entry.level = 3;
    entry.hitRatio = 0.5F;
    entry.version = kProgramVersion;
    entry.time = 1100000000;
    return entry;
}

// A server's answer with scores 20000, 19000, ... and threshold 555.
std::string Answer() {
    std::string text;
    for (int i = 0; i < kHiscoreEntries; ++i) {
        text += "Al:B" + std::string(i % 3, 'x') + "_" + std::to_string((20 - i) * 1000) +
                "_7_33.25_120_1100000000_";
    }
    return text + "555!";
}

TEST(HiscoreProtocol, RequestsAreExactToTheByte) {
    HiscoreServer server;
    server.host = "h.test";
    server.path = "/p";
    server.port = 8080;
    EXPECT_EQ(TableRequestStart(server), "GET /p?Op=SetScores&V=");
    EXPECT_EQ(ScoreRequestStart(server), "GET /p?Op=SetScore&V=");
    server.useProxy = true;
    EXPECT_EQ(TableRequestStart(server), "GET http://h.test:8080/p?Op=SetScores&V=");
    EXPECT_EQ(ScoreRequestStart(server), "GET http://h.test:8080/p?Op=SetScores&V=");
    server.port = 80;
    EXPECT_EQ(TableRequestStart(server), "GET http://h.test/p?Op=SetScores&V=");
    EXPECT_EQ(ScoreRequestStart(server), "GET http://h.test:80/p?Op=SetScores&V=");

    const std::string headers =
        "HTTP/1.1\nAccept: image/gif, image/x-xbitmap, image/jpeg, image/pjpeg, */*\n"
        "Accept-Language: en-gb\nXXXXXXXXXXXXXXX: XXXXXXXXXXXXX\n"
        "User-Agent: Nebulorix v1.0.0\rConnection: Keep-Alive\r\n\r\n";
    EXPECT_EQ(TableRequestTail(), " " + headers);
    EXPECT_EQ(ScoreRequestTail(), "\n" + headers);

    std::string request;
    AppendEntry(request, AnnLee());
    EXPECT_EQ(request, "Ann:Lee_12345_3_0.500000_100_1100000000");
}

TEST(HiscoreProtocol, ADamagedNameCannotBreakTheRequest) {
    HiscoreEntry entry = AnnLee();
    SetName(entry, "A_B\r\nC\x80");
    std::string request;
    AppendEntry(request, entry);
    EXPECT_EQ(request.substr(0, request.find("_12345")), "A-B--C-");
}

TEST(HiscoreProtocol, AnswersAreReadWithAndWithoutHeaders) {
    for (const std::string& head :
         {std::string(), std::string("HTTP/1.1 200 OK\r\nA: b\r\n\r\n")}) {
        OnlineTable table;
        int32_t threshold = 0;
        ASSERT_FALSE(ParseResponse(head + Answer(), table, threshold)) << head;
        EXPECT_EQ(threshold, 555);
        EXPECT_STREQ(table[0].name, "Al B................");
        EXPECT_EQ(table[19].score, 1000);
        EXPECT_EQ(table[5].level, 7);
        EXPECT_FLOAT_EQ(table[5].hitRatio, 33.25F);
        EXPECT_EQ(table[5].version[1], 2);
        EXPECT_EQ(table[5].time, 1100000000U);
    }
    EXPECT_TRUE(IsUnwantedResponse("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n" + Answer()));
    EXPECT_TRUE(IsUnwantedResponse("<html>"));
    EXPECT_FALSE(IsUnwantedResponse(Answer()));
}

TEST(HiscoreProtocol, CutAndGarbledAnswersChangeNothing) {
    const std::string whole = Answer();
    const size_t thresholdStart = whole.rfind('_') + 1;
    OnlineTable table;
    int32_t threshold = -7;
    for (size_t size = 0; size <= thresholdStart; ++size) {
        EXPECT_TRUE(ParseResponse(whole.substr(0, size), table, threshold)) << size << " bytes";
    }
    EXPECT_EQ(threshold, -7);
    EXPECT_EQ(table[0].score, 0);
    platform::SeedRandom(3);
    for (int run = 0; run < 2000; ++run) {
        std::string damaged = whole;
        for (int i = 0; i < 5; ++i) {
            damaged[platform::Random() % damaged.size()] = static_cast<char>(platform::Random());
        }
        ParseResponse(damaged, table, threshold);  // the sanitizers watch
        EXPECT_LE(std::strlen(table[0].name), 20U);
    }
}

}  // namespace
