#include "world/LevelText.h"

#include <gmock/gmock.h>

#include "platform/Random.h"
#include "support/GameFixture.h"
#include "world/AttackWave.h"

// What a level maker may write, what is refused, and how the refusal reads.

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kPaths =
    "Title: First\nAuthor: Someone\nView: 2\nPaths: 2\n"
    "Points: 2\n : 0 0 -40   10.5 -2e1 +3\nPoints: 2\n: 1 2 3 4 5 6\n";
constexpr const char* kWaves =
    "Waves: 2\nBonus: 1000\nGroups: 2\n"
    "B: 500 P: 0 T: 0 S: 5 I: 20 St: 0 F: 300 D: 500 K: 1,2,3\n"
    "B: -5 P: 1 T: 501 S: 1 I: 0 St: 90 F: 0 D: 0 K: 0\n"
    "Bonus: 0\nGroups: 1\nB: 0 P: 1 T: 5 S: 64 I: 1 St: 1 F: 1 D: 1 K: 5, 4, 3,2,1\n";

struct Level {
    PathTable paths;
    std::vector<std::unique_ptr<AttackWave>> waves;
    std::string title;
    std::string fault;
};

Level Read(std::string text) {
    LevelText file(std::move(text));
    Level level;
    level.title = file.ReadLine();
    file.ReadLine();
    file.ReadInt("view", 1, 4);
    const int32_t paths = file.ReadInt("number of paths", 0, 256);
    for (int32_t i = 0; i < paths && !file.HasFailed(); ++i) {
        level.paths.push_back(std::make_unique<Path>());
        const bool failed = level.paths.back()->Read(file);
        EXPECT_EQ(failed, file.HasFailed());
    }
    const int32_t waves = file.ReadInt("number of waves", 0, 64);
    for (int32_t i = 0; i < waves && !file.HasFailed(); ++i) {
        level.waves.push_back(std::make_unique<AttackWave>());
        const bool failed = level.waves.back()->Read(file, level.paths);
        EXPECT_EQ(failed, file.HasFailed());
    }
    level.fault = file.Fault();
    return level;
}

// A level of one group, with one of its fields or its path replaced.
std::string FaultOf(const std::string& path, const std::string& group) {
    return Read("T: a\nA: b\nV: 1\nPaths: 1\n" + path + "\nWaves: 1\nBonus: 1\nGroups: 1\n" + group)
        .fault;
}

constexpr const char* kGoodPath = "N: 2 : 0 0 0 1 1 1";
constexpr const char* kGoodGroup = "B: 1 P: 0 T: 0 S: 1 I: 1 S: 1 F: 1 D: 1 K: 1";

using LevelRecords = GameFixture;

}  // namespace

TEST(LevelText, TextFieldsKeepTheirBlankAndAreCutAt259Characters) {
    LevelText file("// no colon here\nTitle: A day \nAuthor:" + std::string(300, 'x') +
                   "\nView\n:3 stars\nLast:");
    EXPECT_EQ(file.ReadLine(), " A day ");
    EXPECT_EQ(file.ReadLine(), std::string(259, 'x'));
    EXPECT_EQ(file.ReadInt("view", 1, 4), 3) << "the rest of the long line is no field";
    EXPECT_EQ(file.ReadLine(), "") << "a field at the very end";
    EXPECT_EQ(file.ReadLine(), "") << "past the end";
    EXPECT_FALSE(file.HasFailed());
}

TEST(LevelText, ALongLineWithAColonSpillsIntoTheNextField) {
    LevelText file("T:" + std::string(259, 'x') + "yz:7\nView: 3");
    EXPECT_EQ(file.ReadLine().size(), 259U);
    EXPECT_EQ(file.ReadInt("view", 0, 9), 7);
}

TEST(LevelText, NumbersMayStandOnTheNextLineAndCarryASign) {
    LevelText file("a:\n\n \t-12rest b: +7 c: 3.9 d: 2147483647 : +1.5e1 .5\n-0.25");
    EXPECT_EQ(file.ReadInt("a", -99, 99), -12);
    EXPECT_EQ(file.ReadInt("b", 0, 99), 7);
    EXPECT_EQ(file.ReadInt("c", 0, 99), 3);
    EXPECT_EQ(file.ReadInt("d", 0, 2147483647), 2147483647);
    file.SkipToColon("points");
    EXPECT_EQ(file.ReadFloat("x"), 15.0F);
    EXPECT_EQ(file.ReadFloat("y"), 0.5F);
    EXPECT_EQ(file.ReadFloat("z"), -0.25F);
    EXPECT_FALSE(file.HasFailed());
}

TEST(LevelText, ListsEndAtTheFirstCharacterThatIsNoComma) {
    LevelText file("K: 3,4,1\nK: 1 ,2 K:2,\n 5;K: 1,2,3,4,5,6 K: 1,2,3,4,5:9 K: 8");
    EXPECT_THAT(file.ReadIntList("kinds", 5), ElementsAre(3, 4, 1));
    EXPECT_THAT(file.ReadIntList("kinds", 5), ElementsAre(1)) << "a blank before the comma";
    EXPECT_THAT(file.ReadIntList("kinds", 5), ElementsAre(2, 5)) << "a line end after the comma";
    EXPECT_THAT(file.ReadIntList("kinds", 5), ElementsAre(1, 2, 3, 4, 5)) << "a sixth is not read";
    EXPECT_THAT(file.ReadIntList("kinds", 5), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_EQ(file.ReadInt("next", 0, 9), 8) << "the colon that ended the list has been consumed";
    EXPECT_FALSE(file.HasFailed());
}

TEST(LevelText, TheFirstFaultNamesItsLineAndStays) {
    LevelText file("a: 1\nb:\n x\nc: 5");
    EXPECT_EQ(file.ReadInt("a", 0, 9), 1);
    EXPECT_EQ(file.ReadInt("speed", 2, 9), 2) << "a safe value";
    EXPECT_EQ(file.Fault(), "line 3: the speed is not a whole number");
    EXPECT_EQ(file.ReadInt("c", 7, 9), 7);
    EXPECT_EQ(file.ReadFloat("d"), 0.0F);
    file.Fail("another");
    EXPECT_EQ(file.Fault(), "line 3: the speed is not a whole number");
}

TEST_F(LevelRecords, AWholeLevelArrivesAsWritten) {
    Level level = Read(std::string(kPaths) + kWaves + "Nothing: else is read");
    ASSERT_EQ(level.fault, "");
    EXPECT_EQ(level.title, " First");
    ASSERT_EQ(level.paths.size(), 2U);
    EXPECT_EQ(level.paths[0]->GetPoint(1), (Vec3{10.5F, -20.0F, 3.0F}));
    ASSERT_EQ(level.waves.size(), 2U);
    ASSERT_EQ(level.waves[0]->GroupCount(), 2);
    const EnemyGroup& first = level.waves[0]->GetGroup(0);
    EXPECT_EQ(first.ShipCount(), 5);
    EXPECT_EQ(first.LaunchInterval(), 20);
    EXPECT_EQ(first.GetOrders().fireChance, 300);
    EXPECT_EQ(first.GetOrders().diveChance, 500);
    EXPECT_THAT(first.GetOrders().diveKinds, ElementsAre(1, 2, 3));
    EnemyGroup& second = level.waves[0]->GetGroup(1);
    EXPECT_EQ(second.StartFrame(), 90);
    EXPECT_EQ(second.GetOrders().row, 1) << "its index in the wave";
    EXPECT_EQ(second.GetShip(0).GetType(), 501);
    EXPECT_EQ(second.GetShip(0).GetPosition(), (Vec3{1.0F, 2.0F, 3.0F})) << "start of path 1";
    EXPECT_FALSE(second.GetShip(0).active) << "not launched yet";
    EXPECT_EQ(Read("T:a\nA:b\nV:1\nPaths:0\nWaves:0").fault, "") << "an empty level is a level";
}

TEST_F(LevelRecords, BrokenRecordsAreRefusedWithAReason) {
    ASSERT_EQ(FaultOf(kGoodPath, kGoodGroup), "");
    EXPECT_EQ(FaultOf("N: 1 : 0 0 0", kGoodGroup),
              "line 5: the number of points of a path is not from 2 to 4096");
    EXPECT_EQ(FaultOf(kGoodPath, "B: 1 P: 1"), "line 9: the path of a group is not from 0 to 0");
    EXPECT_EQ(FaultOf(kGoodPath, "B: 1 P: 0 T: 6"), "line 9: there is no enemy type 6");
    struct Row {
        const char* record;
        const char* reason;
    };
    constexpr Row kPathRows[] = {
        {"N: -3 : 0 0 0", "number of points"},
        {"N: 99999999999999999999 :", "number of points"},
        {"N: 2 : 0 0 0 1 1", "z of a point"},
        {"N: 2 : 0 nan 0 1 1 1", "y of a point"},
        {"N: 2 : 0 0 0 1e99 1 1", "x of a point"},
        {"N: 2 : 0 0 0 inf 1 1", "x of a point"},
    };
    for (const Row& row : kPathRows) {
        EXPECT_THAT(FaultOf(row.record, kGoodGroup), HasSubstr(row.reason)) << row.record;
    }
    constexpr Row kGroupRows[] = {
        {"B: x", "bonus of a group"},
        {"B: 1 P: -1", "path of a group"},
        {"B: 1 P: 0 T: 0 S: 0", "number of ships"},
        {"B: 1 P: 0 T: 0 S: 1001", "number of ships"},
        {"B: 1 P: 0 T: 0 S: 1 I: -1", "launch interval"},
        {"B: 1 P: 0 T: 0 S: 1 I: 1 S: -1", "start frame"},
        {"B: 1 P: 0 T: 0 S: 1 I: 1 S: 1 F: -1", "fire chance"},
        {"B: 1 P: 0 T: 0 S: 1 I: 1 S: 1 F: 1 D: x", "dive chance"},
        {"B: 1 P: 0 T: 0 S: 1 I: 1 S: 1 F: 1 D: 1", "the file ends before the list of dive kinds"},
        {"B: 1 P: 0 T: 0 S: 1 I: 1 S: 1 F: 1 D: 1 K: 1,a", "list of dive kinds"},
    };
    for (const Row& row : kGroupRows) {
        EXPECT_THAT(FaultOf(kGoodPath, row.record), HasSubstr(row.reason)) << row.record;
    }
    const std::string noPaths = "T:a\nA:b\nV:1\nPaths:0\nWaves:1\nBonus: 1\n";
    EXPECT_THAT(Read(noPaths + "Groups: 0").fault, HasSubstr("number of groups"));
    EXPECT_THAT(Read(noPaths + "Groups: 1\nB: 1 P: 0").fault, HasSubstr("the level has none"));
}

TEST_F(LevelRecords, ADamagedLevelLoadsOrIsRefusedButNeverBreaksTheGame) {
    const std::string whole = std::string(kPaths) + kWaves;
    int loaded = 0;
    for (int damage = 0; damage < 3000; ++damage) {
        std::string text = whole;
        for (int i = platform::Random() % 4; i >= 0; --i) {
            const size_t at = platform::Random() % (text.size() + 1);
            const char byte = static_cast<char>(
                platform::Random() % 4 == 0 ? platform::Random() % 256
                                            : "0123456789-+.,: \nex"[platform::Random() % 19]);
            if (platform::Random() % 8 == 0) {
                text.resize(at);
            }
            text.replace(at, platform::Random() % 3, platform::Random() % 3, byte);
        }
        Level level = Read(std::move(text));
        loaded += level.fault.empty() ? 1 : 0;
        for (const auto& wave : level.waves) {
            for (int frame = 0; frame < 3 && level.fault.empty(); ++frame) {
                wave->Update();
                wave->Draw();
                wave->PickRandomShip();
            }
        }
    }
    EXPECT_GT(loaded, 300) << "labels and many numbers may be anything";
    EXPECT_LT(loaded, 2700) << "damage that matters must be found";
}
