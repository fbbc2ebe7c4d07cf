// The level check: that the game's levels pass, and that each fault is told, with its place.

#include "LevelCheck.h"

#include <gmock/gmock.h>

#include "support/GameFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct Draft {
    std::string title = "Test";
    int view = 1;
    std::string start = "0 0 -40";
    int type = 0;
    int ships = 5;
    int interval = 20;
    std::string dive = "Dive: 500  Dives: 1,2";
    std::string moreGroups = "";
    int groups = 1;
};

class LevelCheckTest : public GameFixture {
protected:
    static std::vector<std::string> Faults(const Draft& level) {
        WriteFile("levels\\Level1.lvl",
                  "Title:" + level.title + "\nAuthor:Tests\nView:" + std::to_string(level.view) +
                      "\nPaths:1\nPoints:2\n:" + level.start + "  0 0 -20\nWaves:1\nBonus:0\n" +
                      "Groups:" + std::to_string(level.groups) + "\nBonus:0 Path:0 Type:" +
                      std::to_string(level.type) + " Ships:" + std::to_string(level.ships) +
                      " Interval:" + std::to_string(level.interval) + " Start:0 Fire:0 " +
                      level.dive + "\n" + level.moreGroups);
        return LevelFaults("levels/Level1.lvl");
    }
    static std::string Boss() {
        return "Bonus:0 Path:0 Type:500 Ships:1 Interval:1 Start:0 Fire:0 Dive:0 Dives:0\n";
    }
};

TEST_F(LevelCheckTest, AFairLevelPassesInEveryView) {
    EXPECT_THAT(Faults({}), IsEmpty());
    EXPECT_THAT(Faults({.view = 2, .start = "0 0 -45"}), IsEmpty());
    EXPECT_THAT(Faults({.view = 3, .start = "0 -40 0"}), IsEmpty());
    EXPECT_THAT(Faults({.view = 4, .start = "0 60 -34"}), IsEmpty());
}

TEST_F(LevelCheckTest, ThePlaceOfTheFaultIsTold) {
    EXPECT_THAT(Faults({.type = 7}), ElementsAre(HasSubstr("line 10: there is no enemy type 7")));
    EXPECT_THAT(Faults({.start = "0 0 -28"}),
                ElementsAre(HasSubstr("wave 1, group 1: its path begins inside the picture")));
    EXPECT_THAT(Faults({.title = " "}), ElementsAre("the title is empty"));
}

TEST_F(LevelCheckTest, APathIsJudgedInTheViewOfItsLevel) {
    // Above the field this is far outside; from the side it is the middle of the picture.
    EXPECT_THAT(Faults({.start = "0 45 20"}), IsEmpty());
    EXPECT_THAT(Faults({.view = 2, .start = "0 25 20"}),
                ElementsAre(HasSubstr("begins inside the picture")));
    // Behind the eye nothing is seen.
    EXPECT_THAT(Faults({.view = 4, .start = "0 0 60"}), IsEmpty());
}

TEST_F(LevelCheckTest, RowsMustFitThePictureWithTheirSway) {
    EXPECT_THAT(Faults({.ships = 13}), IsEmpty());
    EXPECT_THAT(Faults({.ships = 14}), ElementsAre(HasSubstr("sway out of the picture")));
    EXPECT_THAT(Faults({.view = 2, .start = "0 0 -45", .ships = 9}), IsEmpty());
    EXPECT_THAT(Faults({.view = 2, .start = "0 0 -45", .ships = 10}),
                ElementsAre(HasSubstr("sway out of the picture")));
}

TEST_F(LevelCheckTest, WhoeverCannotBeShotOrNeverComesIsRefused) {
    EXPECT_THAT(Faults({.dive = "Dive: 1  Dives: 1,2,0"}),
                ElementsAre(HasSubstr("dives without a rest")));
    EXPECT_THAT(Faults({.dive = "Dive: 1  Dives: 1,3"}), IsEmpty());
    EXPECT_THAT(Faults({.interval = 5000}), ElementsAre(HasSubstr("its last ship would come")));
    EXPECT_THAT(Faults({.start = "0 0 -9000"}), ElementsAre(HasSubstr("seconds for its path")));
}

TEST_F(LevelCheckTest, BossesNeedRoom) {
    EXPECT_THAT(Faults({.type = 501, .ships = 1, .moreGroups = Boss(), .groups = 2}),
                ElementsAre(HasSubstr("two bosses stand inside one another")));
    EXPECT_THAT(Faults({.type = 501, .ships = 2}),
                ElementsAre(HasSubstr("bosses in one row stand inside one another")));
}

TEST_F(LevelCheckTest, MissingLevelsAreFound) {
    WriteFile("levels\\Extra.lvl", "");
    EXPECT_EQ(LevelFiles(".").size(), 37U) << "the game's 36 and a maker's own";
    EXPECT_THAT(LevelFaults("levels/Level36.lvl"), ElementsAre(HasSubstr("cannot be read")));
}

TEST_F(LevelCheckTest, TheLevelsOfTheGamePass) {
    for (const std::string& name : LevelFiles(ASSETS_FOLDER)) {
        EXPECT_THAT(LevelFaults(ASSETS_FOLDER "/levels/" + name), IsEmpty()) << name;
    }
}

}  // namespace
