#include <GL/gl.h>

#include <cmath>
#include <iterator>
#include <map>
#include <set>

#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "game/Menu.h"
#include "game/TitleScreen.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"
#include "platform/VirtualKeys.h"
#include "platform/null/NullGl.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"
#include "player/WeaponManager.h"
#include "scores/HiscoreTable.h"
#include "scores/UserPrefs.h"
#include "support/GameFixture.h"
#include "world/SceneryModels.h"

namespace {

using platform::VK_ESCAPE;
using platform::VK_RETURN;
using platform::VK_SPACE;

class GameTest : public GameFixture {
protected:
    static GameState State() { return levelManager->GetState(); }
    static void Press(int virtualKey) {
        keyDown[virtualKey] = 1;
        RunFrames(1);
        keyDown[virtualKey] = 0;
    }
    static void Type(char character) {
        lastChar = character;
        RunFrames(1);
    }
    // Kills the enemies of the current wave by their own damage.
    static void KillWave() {
        AttackWave* wave = levelManager->GetCurrentWave();
        for (int g = 0; wave != nullptr && g < wave->GroupCount(); ++g) {
            for (int s = 0; s < wave->GetGroup(g).ShipCount(); ++s) {
                wave->GetGroup(g).GetShip(s).TakeDamage(1000);
            }
        }
    }
    static void LosePlayer() {
        while (State() == GameState::Playing) {
            playerShip->SetInvulnerable(0);
            playerShip->TakeDamage(100);
            RunFrames(1);
        }
    }
};

TEST_F(GameTest, TheTitleIsLeftByAnyOfThreeKeysAndAGamePrepared) {
    WriteLevel(1, OneGroup(0, 3));
    for (const int key : {VK_ESCAPE, VK_SPACE, VK_RETURN}) {
        score = 77;
        Press(key);
        RunFrames(1);
        ASSERT_EQ(State(), GameState::MainMenu) << key;
        EXPECT_EQ(score, 0);
        EXPECT_EQ(levelManager->GetLevel(), 1) << "level 1 stands ready behind the menu";
        ASSERT_NE(levelManager->GetCurrentWave(), nullptr);
        Press(VK_ESCAPE);
        RunFrames(1);
        ASSERT_EQ(State(), GameState::Title);
    }
    Press(VK_ESCAPE);
    Press(VK_RETURN);
    EXPECT_EQ(State(), GameState::Playing);
    Press(VK_SPACE);
    EXPECT_EQ(State(), GameState::Playing) << "Space fires during play";
    Press(VK_ESCAPE);
    EXPECT_EQ(State(), GameState::Paused);
    Press(VK_ESCAPE);
    EXPECT_EQ(State(), GameState::Playing);
}

TEST_F(GameTest, ALevelEnds151FramesAfterItsLastWave) {
    WriteLevel(1, OneGroup(0, 3));
    WriteLevel(2, OneGroup(0, 1), 2);
    levelManager->StartAt(1);
    RunFrames(4);
    KillWave();
    RunFrames(1);
    EXPECT_EQ(score, 3 * 100 + 500 + 1000) << "ships, group and wave";
    int frames = 1;
    while (levelManager->GetLevel() == 1 && frames < 1000) {
        RunFrames(1);
        ++frames;
    }
    EXPECT_EQ(frames, 151);
    EXPECT_EQ(levelManager->GetLevelsCompleted(), 1);
    EXPECT_TRUE(glWindow->IsViewBlending());
    EXPECT_EQ(glWindow->GetView(), 2);
    RunFrames(149);
    EXPECT_TRUE(glWindow->IsViewBlending());
    RunFrames(1);
    EXPECT_FALSE(glWindow->IsViewBlending());
    EXPECT_EQ(playerShip->GetPosition(), (Vec3{0.0F, 0.0F, 10.0F}));
}

TEST_F(GameTest, AfterLevel36ComesLevel1AndMissingFilesAreSkipped) {
    WriteLevel(36, "Waves: 0\n");
    WriteLevel(2, OneGroup(0, 1));
    levelManager->StartAt(36);
    RunFrames(151);
    EXPECT_EQ(levelManager->GetLevel(), 1);
    EXPECT_EQ(levelManager->GetLevelsCompleted(), 36);
    EXPECT_TRUE(Logged("ERROR: Level: levels\\Level1.lvl not found\n"));
    RunFrames(151);
    EXPECT_EQ(levelManager->GetLevel(), 2) << "the game waits and tries the next number";
}

TEST_F(GameTest, AMalformedLevelIsRefusedWithItsLine) {
    WriteLevel(1,
               "Waves: 1\nWave bonus: 0\nGroups: 1\nBonus: 0 Path: 7 Type: 0 Ships: 1 "
               "Interval: 1 Start: 0 Fire: 0 Dive: 0 Dives: 0\n");
    levelManager->StartAt(1);
    EXPECT_TRUE(Logged("ERROR: Level: levels\\Level1.lvl: line 10:")) << log;
    EXPECT_EQ(levelManager->GetCurrentWave(), nullptr);
    RunFrames(10);
}

TEST_F(GameTest, TheShopOpensAfterEveryFifthLevelForWhoCanAffordSomething) {
    for (int level = 1; level <= 36; ++level) {
        WriteLevel(level, "Waves: 0\n", 4);
    }
    levelManager->StartAt(5);
    money = 24;
    RunFrames(152);
    EXPECT_EQ(State(), GameState::Playing);
    EXPECT_EQ(levelManager->GetLevel(), 6);
    levelManager->StartAt(10);
    money = 25;
    RunFrames(152);
    ASSERT_EQ(State(), GameState::Shop);
    EXPECT_EQ(glWindow->GetView(), 1);
    EXPECT_EQ(levelManager->GetLevel(), 10);
    Press(VK_ESCAPE);
    EXPECT_EQ(State(), GameState::Playing);
    EXPECT_EQ(levelManager->GetLevel(), 11);
    EXPECT_EQ(levelManager->GetCurrentView(), 4);
}

TEST_F(GameTest, TheLastShipLostEndsTheGameAfter100Frames) {
    WriteLevel(1, OneGroup(0, 3));
    levelManager->StartAt(1);
    score = 100;  // equal to the lowest entry: no hiscore
    LosePlayer();
    ASSERT_EQ(State(), GameState::GameOver);
    int frames = 0;
    while (State() == GameState::GameOver && frames < 1000) {
        RunFrames(1);
        ++frames;
    }
    EXPECT_EQ(frames, 100);
    EXPECT_EQ(State(), GameState::Title);
}

TEST_F(GameTest, AQualifyingScoreIsStoredUnderTheNameTyped) {
    WriteLevel(4, OneGroup(0, 3));
    levelManager->StartAt(4);
    score = 1950;
    LosePlayer();
    RunFrames(101);
    ASSERT_EQ(State(), GameState::NameEntry);
    for (const char c : std::string("\bab\bc12345678901234567890")) {
        Type(c);
    }
    Type('\b');
    Type('\r');
    EXPECT_EQ(State(), GameState::NameEntry) << "stored in the frame after Return";
    RunFrames(1);
    EXPECT_EQ(State(), GameState::Title);
    EXPECT_STREQ(hiscoreTable->Entry(1).name, "ac12345678901234567.");
    EXPECT_EQ(hiscoreTable->Entry(1).level, 4) << "levels completed and one";
    EXPECT_EQ(hiscoreTable->Entry(1).hitRatio, 0.0F);
    EXPECT_EQ(std::filesystem::file_size("Data/NXHS.bin"), 800U);

    levelManager->StartAt(1);
    score = 5000;
    LosePlayer();
    RunFrames(101);
    Type('\r');
    RunFrames(1);
    EXPECT_STREQ(hiscoreTable->Entry(0).name, "....................");
}

TEST_F(GameTest, TheTitleCyclesThroughItsPages) {
    using Page = TitleScreen::Page;
    const TitleScreen& title = levelManager->GetTitle();
    RunFrames(900);
    EXPECT_EQ(title.GetPage(), Page::Logo);
    RunFrames(1);
    EXPECT_EQ(title.GetPage(), Page::LocalHiscores);
    RunFrames(1);
    EXPECT_EQ(title.GetLine(0).substr(0, 34), "VEXO................ 000002000 000");
    RunFrames(499);
    EXPECT_EQ(title.GetPage(), Page::OnlineHiscores);
    RunFrames(1);
    EXPECT_EQ(title.GetLine(19), "Online Hiscores Disabled. Enable in Options");
    RunFrames(499);
    EXPECT_EQ(title.GetPage(), Page::Logo);
}

// Of a drawing of the list in the record: how many lights of shots were on, by light from 1 up.
std::map<int, int> RehearsalsByLights(uint32_t list) {
    namespace null = platform::null;
    std::map<int, int> rehearsals;
    std::set<double> on;
    for (size_t i = 0; i < null::RecordedGlCalls(); ++i) {
        const null::GlCall& call = null::RecordedGlCall(i);
        const std::string name = call.name;
        if (name == "glPushAttrib") {
            on.clear();
        } else if (name == "glEnable") {
            on.insert(call.arguments[0]);
        } else if (name == "glCallList" && call.arguments[0] == list) {
            const auto lights = std::distance(on.lower_bound(GL_LIGHT1), on.upper_bound(GL_LIGHT7));
            rehearsals[on.count(GL_SCISSOR_TEST) == 1 ? static_cast<int>(lights) : -1] += 1;
        }
    }
    return rehearsals;
}

TEST_F(GameTest, AllModelsAreRehearsedWithEverySetOfLightsAndNothingIsLeftBehind) {
    namespace null = platform::null;
    Rehearsal& rehearsal = levelManager->GetRehearsal();
    null::ClearGlRecord();
    rehearsal.Continue();
    EXPECT_TRUE(rehearsal.IsDone());
    EXPECT_EQ(null::GlCallCount("glCallList"), 3 * (static_cast<int64_t>(kSceneryModels.size()) +
                                                    ObjectManager::Instance()->ModelCount()));
    EXPECT_EQ(null::ModelViewDepth() + null::AttributeDepth() + null::GlMisuses(), 0);
    EXPECT_FALSE(null::IsEnabled(GL_LIGHT1) || null::IsEnabled(GL_SCISSOR_TEST));
    EXPECT_TRUE(null::IsEnabled(GL_LIGHTING));

    // A model that comes with a later level is next; a new context begins all over.
    WriteModel("Objects\\New.aob", {-1, 1, -1, 1, -1, 1});
    const uint32_t list = ObjectManager::Instance()->Load("Objects\\New.aob");
    EXPECT_FALSE(rehearsal.IsDone());
    null::ClearGlRecord();
    rehearsal.Continue();
    const std::map<int, int> once = {{0, 1}, {2, 1}, {7, 1}};
    EXPECT_EQ(RehearsalsByLights(list), once);
    EXPECT_EQ(null::GlCallCount("glCallList"), 3);
    rehearsal.Restart();
    EXPECT_FALSE(rehearsal.IsDone());
}

TEST(HiscoreLines, ShowWhatTheWidthAllows) {
    setenv("TZ", "UTC", 1);
    HiscoreEntry entry;
    SetName(entry, "Ann Lee.............");
    entry.score = 1234;
    entry.level = 7;
    entry.hitRatio = 33.4F;
    entry.version = kProgramVersion;
    entry.time = 1110888305;  // 15 March 2005, 12:05:05
    EXPECT_EQ(HiscoreLine(entry, 640), "Ann Lee............. 000001234 033 007 1.0.0");
    EXPECT_EQ(HiscoreLine(entry, 800), "Ann Lee............. 000001234 033 007 1.0.0 15MAR05");
    EXPECT_EQ(HiscoreLine(entry, 1024),
              "Ann Lee............. 000001234 033 007 1.0.0 15MAR05 12:05:05");
    EXPECT_EQ(HiscoreLine(entry, 1600),
              "Ann Lee............. 000001234    33.4 007 1.0.0 15MAR05 12:05:05");
    entry.hitRatio = INFINITY;
    entry.score = INT32_MIN;
    entry.time = UINT32_MAX;
    HiscoreLine(entry, 640);  // the sanitizers watch
}

}  // namespace
