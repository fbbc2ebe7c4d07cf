#include "game/Menu.h"

#include <GL/gl.h>

#include "audio/SoundManager.h"
#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLWindow.h"
#include "platform/Messages.h"
#include "platform/VirtualKeys.h"
#include "platform/null/NullMedia.h"
#include "scores/UserPrefs.h"
#include "support/GameFixture.h"

namespace {

using platform::VK_DOWN;
using platform::VK_ESCAPE;
using platform::VK_RETURN;

class MenuTest : public GameFixture {
protected:
    void SetUp() override {
        GameFixture::SetUp();
        menu.Init();
    }
    // One press of a key; returns the state that the menu asks for.
    GameState Press(int virtualKey, GameState state = GameState::Paused) {
        keyDown[virtualKey] = 1;
        GameState next = state;
        menu.Draw();
        menu.Update(next);
        keyDown[virtualKey] = 0;
        return next;
    }
    // Moves the highlight to a line of the current page and chooses it.
    GameState Choose(int line, GameState state = GameState::Paused) {
        while (menu.GetSelected() > line) {
            Press(platform::VK_UP);
        }
        while (menu.GetSelected() < line) {
            Press(VK_DOWN);
        }
        return Press(VK_RETURN, state);
    }
    void OpenOptions() {
        menu.Open(Menu::kPauseMenu);
        Choose(2);
        ASSERT_EQ(menu.GetPage(), Menu::kOptionsPage);
    }
    static bool CloseWasAsked() {
        platform::Message message;
        while (platform::PeekMessage(message)) {
            if (message.kind == platform::MessageKind::Close) {
                return true;
            }
        }
        return false;
    }

    Menu menu;
};

TEST_F(MenuTest, OptionsLeadBackToThePausePageFromWhereverTheyWereEntered) {
    menu.Open(Menu::kMainMenu);
    Choose(2, GameState::MainMenu);
    ASSERT_EQ(menu.GetPage(), Menu::kOptionsPage);
    EXPECT_EQ(menu.GetSelected(), 1);
    Choose(11, GameState::MainMenu);
    EXPECT_EQ(menu.LineText(1), "Resume Game");
    EXPECT_EQ(Choose(1, GameState::MainMenu), GameState::Title);
}

TEST_F(MenuTest, TheHighlightStopsAtBothEnds) {
    OpenOptions();
    for (int i = 0; i < 20; ++i) {
        Press(VK_DOWN);
    }
    EXPECT_EQ(menu.GetSelected(), 11);
    for (int i = 0; i < 20; ++i) {
        Press('I');  // the key bound to Up
    }
    EXPECT_EQ(menu.GetSelected(), 1);
}

TEST_F(MenuTest, OptionLinesNameTheActionAndDoIt) {
    OpenOptions();
    const bool sound = soundManager->IsEnabled();
    Choose(5);
    EXPECT_NE(soundManager->IsEnabled(), sound);
    EXPECT_EQ(menu.LineText(7), "Turn Transparency Off");
    Choose(7);
    EXPECT_EQ(menu.LineText(7), "Turn Transparency On");
    EXPECT_FALSE(userPrefs->GetTransparency());
    EXPECT_EQ(menu.LineText(8), "Turn FSAA On");
    Choose(8);
    EXPECT_EQ(menu.LineText(8), "Turn FSAA Off");
    EXPECT_EQ(menu.LineText(9), "Turn Fog Off");
    levelManager->GetRehearsal().Continue();
    Choose(9);
    EXPECT_FALSE(userPrefs->GetFog());
    EXPECT_FALSE(levelManager->GetRehearsal().IsDone()) << "without fog all looks different";
    const bool fullscreen = glWindow->IsFullscreen();
    Choose(3);
    EXPECT_NE(glWindow->IsFullscreen(), fullscreen);
    EXPECT_EQ(menu.GetPage(), Menu::kOptionsPage);
}

TEST_F(MenuTest, AllTenResolutionsAreTakenAtOnce) {
    OpenOptions();
    Choose(2);
    for (int line = 1; line <= 10; ++line) {
        Choose(line);
        const std::string mode = std::to_string(userPrefs->GetScreenWidth()) + " x " +
                                 std::to_string(userPrefs->GetScreenHeight()) + " @ " +
                                 std::to_string(userPrefs->GetColourBits()) + "bit";
        EXPECT_EQ(menu.LineText(line), mode);
        EXPECT_EQ(glWindow->GetWidth(), userPrefs->GetScreenWidth());
        EXPECT_EQ(menu.GetPage(), Menu::kResolutionPage) << "the page stays";
    }
    Choose(11);
    EXPECT_EQ(menu.GetPage(), Menu::kOptionsPage);
}

TEST_F(MenuTest, ServersAreListedWithTheCurrentOneHighlighted) {
    ASSERT_FALSE(userPrefs->AddServer("scores.test", "/table", 81));
    userPrefs->SetServerIndex(1);
    OpenOptions();
    Choose(10);
    EXPECT_EQ(menu.GetPage(), Menu::kOnlinePage);
    EXPECT_EQ(menu.LineText(1), "Turn Online Hiscores On");
    Choose(2);
    EXPECT_EQ(menu.GetPage(), Menu::kServersPage);
    EXPECT_EQ(menu.GetSelected(), 2);
    EXPECT_EQ(menu.LineText(3), "scores.test/table  port 81");
    EXPECT_EQ(menu.LineText(4), "Go Back to Options Menu");
    Choose(3);
    EXPECT_EQ(userPrefs->GetServerIndex(), 2);
    EXPECT_EQ(menu.GetPage(), Menu::kOptionsPage);
}

TEST(KeyTranslation, TypesLettersDigitsAndThreeOthers) {
    keyDown[platform::VK_SHIFT] = 0;
    EXPECT_EQ(KeyMap::Translate('A'), 'a');
    keyDown[platform::VK_SHIFT] = 1;
    EXPECT_EQ(KeyMap::Translate('A'), 'A');
    EXPECT_EQ(KeyMap::Translate('7'), '7');
    keyDown[platform::VK_SHIFT] = 0;
    EXPECT_EQ(KeyMap::Translate(platform::VK_BACK), 8);
    EXPECT_EQ(KeyMap::Translate(platform::VK_F1), 0);
    EXPECT_EQ(KeyMap::Translate(VK_DOWN), 0);
}

}  // namespace
