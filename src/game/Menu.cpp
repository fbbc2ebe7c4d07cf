#include "game/Menu.h"

#include <GL/gl.h>

#include <array>
#include <cstring>
#include <span>

#include "audio/SoundManager.h"
#include "core/DebugLog.h"
#include "core/Joystick.h"
#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/DisplayMode.h"
#include "game/LevelManager.h"
#include "game/OnlineDialogs.h"
#include "graphics/GLWindow.h"
#include "platform/Messages.h"
#include "platform/VirtualKeys.h"
#include "scores/OnlineHiscores.h"
#include "scores/UserPrefs.h"

namespace {

constexpr const char* kHeading = "-= Nebulorix v1.0.0 =-";
constexpr int kHeadingOffset = 80;  // pixels below the upper edge
constexpr int kLineSpacing = 20;
constexpr int kFirstLineRow = 7;  // the first line stands one row below this one
constexpr int kPromptOffset = 140;

// A held key or stick moves the highlight about ten lines a second.
constexpr int kInputPauseMs = 100;
constexpr int kKeyBoundPauseMs = 75;
constexpr int32_t kStickThreshold = 100;  // of 1000

// A line that ends in a blank names an action: "On" while its setting is off, "Off" while it is on.
constexpr std::array kMainLines = {"Start New Game", "Options", "Quit Game"};
constexpr std::array kPauseLines = {"Resume Game", "Options", "Quit Game"};
constexpr std::array kOptionsLines = {
    "Display OpenGL Driver Info",
    "Change Screen Resolution",
    "Flip Fullscreen",
    "Change Polygon Mode",
    "Turn Sound On/Off",
    "Change Key Config",
    "Turn Transparency ",
    "Turn FSAA ",
    "Turn Fog ",
    "Change Online Hiscore Options",
    "Go Back to Main Menu",
};
constexpr std::array kResolutionLines = {
    "640 x 480 @ 16bit",   "640 x 480 @ 32bit",   "800 x 600 @ 16bit",       "800 x 600 @ 32bit",
    "1024 x 768 @ 16bit",  "1024 x 768 @ 32bit",  "1280 x 1024 @ 16bit",     "1280 x 1024 @ 32bit",
    "1600 x 1200 @ 16bit", "1600 x 1200 @ 32bit", "Go Back to Options Menu",
};
constexpr std::array kPolygonLines = {
    "Point Models", "Wireframe Models", "Flat Models", "Smooth Models", "Go Back to Options Menu",
};
constexpr std::array kOnlineLines = {
    "Turn Online Hiscores ",   "Select Online HST server", "Add new Online HST server",
    "Set Proxy Configuration", "Go Back to Options Menu",
};
constexpr const char* kBackToOptions = "Go Back to Options Menu";

struct Resolution {
    int16_t width;
    int16_t height;
    uint8_t bits;
};
// One for each line of the resolution page but its last.
constexpr std::array<Resolution, 10> kResolutions = {{
    {640, 480, 16},
    {640, 480, 32},
    {800, 600, 16},
    {800, 600, 32},
    {1024, 768, 16},
    {1024, 768, 32},
    {1280, 1024, 16},
    {1280, 1024, 32},
    {1600, 1200, 16},
    {1600, 1200, 32},
}};

constexpr std::array<const char*, kActionCount> kActionNames = {"Up",    "Down",  "Left",
                                                                "Right", "Fire1", "Fire2"};

// The action that the key configuration asks for next. Leaving the menu keeps it, so that the next
// visit goes on with the next prompt.
int keyConfigStep = 0;

std::span<const char* const> PageLines(int32_t page) {
    switch (page) {
        case Menu::kMainPage:
            return kMainLines;
        case Menu::kPausePage:
            return kPauseLines;
        case Menu::kOptionsPage:
            return kOptionsLines;
        case Menu::kResolutionPage:
            return kResolutionLines;
        case Menu::kPolygonPage:
            return kPolygonLines;
        case Menu::kOnlinePage:
            return kOnlineLines;
        default:
            return {};
    }
}

// The setting that a line ending in "On" or "Off" switches.
bool SettingOfLine(int32_t page, int32_t line) {
    if (page == Menu::kOnlinePage) {
        return userPrefs->GetOnlineHiscores();
    }
    switch (line) {
        case 7:
            return userPrefs->GetTransparency();
        case 8:
            return userPrefs->GetAntialiasing();
        default:
            return userPrefs->GetFog();
    }
}

// The music keys keep working during the key configuration and cannot be bound.
bool IsMusicKey(int virtualKey) {
    switch (virtualKey) {
        case platform::VK_PRIOR:
        case platform::VK_NEXT:
        case platform::VK_END:
        case platform::VK_HOME:
        case platform::VK_INSERT:
        case platform::VK_DELETE:
            return true;
        default:
            return false;
    }
}

void RequestClose() {
    // Posted, not sent: the game must not vanish while its own update is still running.
    platform::PostMessage({.kind = platform::MessageKind::Close, .window = hWnd});
}

}  // namespace

void Menu::Reset() {
    selected = 1;
    page = kPausePage;
}

void Menu::Init() {
    Reset();
    closeRequested = false;
}

void Menu::Open(int kind) {
    Init();
    if (kind == kMainMenu) {
        page = kMainPage;
    } else if (kind != kPauseMenu) {
        Log("ERROR: Got illegal menu option: %d\n", kind);
    }
}

void Menu::ShowPage(Page newPage) {
    Reset();
    page = newPage;
}

int32_t Menu::LineCount() const {
    if (page == kServersPage) {
        return userPrefs->GetServerCount() + 1;
    }
    return static_cast<int32_t>(PageLines(page).size());
}

std::string Menu::LineText(int32_t line) const {
    if (page == kServersPage) {
        if (line > userPrefs->GetServerCount()) {
            return kBackToOptions;
        }
        const int32_t server = line - 1;
        return userPrefs->GetServerHost(server) + userPrefs->GetServerPath(server) + "  port " +
               std::to_string(userPrefs->GetServerPort(server));
    }
    std::string text = PageLines(page)[line - 1];
    if (text.back() == ' ') {
        text += SettingOfLine(page, line) ? "Off" : "On";
    }
    return text;
}

void Menu::Draw() {
    const int width = glWindow->GetWidth();
    const int height = glWindow->GetHeight();
    PrintText(glWindow, CentredX(width, static_cast<int>(std::strlen(kHeading))),
              height - kHeadingOffset, 1.0F, 0.0F, 0.0F, "%s", kHeading);
    if (page == kKeyConfigPage) {
        DrawKeyPrompt();
        return;
    }
    for (int32_t line = 1; line <= LineCount(); ++line) {
        const std::string text = LineText(line);
        const float red = line == selected ? 1.0F : 0.0F;
        PrintText(glWindow, CentredX(width, static_cast<int>(text.size())),
                  height - (line + kFirstLineRow) * kLineSpacing, red, 1.0F, 0.0F, "%s",
                  text.c_str());
    }
}

void Menu::DrawKeyPrompt() {
    const std::string prompt =
        std::string("Press a key for \"") + kActionNames[keyConfigStep] + "\"";
    PrintText(glWindow, CentredX(glWindow->GetWidth(), static_cast<int>(prompt.size())),
              glWindow->GetHeight() - kPromptOffset, 0.6F, 0.0F, 1.0F, "%s", prompt.c_str());
}

Menu::Input Menu::ReadInput() {
    Input input;
    if (joystick != nullptr) {
        if (const platform::ControllerState* state = joystick->GetState()) {
            input.left = state->lX < -kStickThreshold;
            input.right = state->lX > kStickThreshold;
            input.up = state->lY < -kStickThreshold;
            input.down = state->lY > kStickThreshold;
            input.select = state->buttons[0];
            input.back = state->buttons[1];
        }
    }
    input.up |= keyMap->IsHeld(Action::Up) || keyDown[platform::VK_UP] != 0;
    input.down |= keyMap->IsHeld(Action::Down) || keyDown[platform::VK_DOWN] != 0;
    input.left |= keyMap->IsHeld(Action::Left) || keyDown[platform::VK_LEFT] != 0;
    input.right |= keyMap->IsHeld(Action::Right) || keyDown[platform::VK_RIGHT] != 0;
    input.select |= keyMap->IsHeld(Action::Fire1) || keyDown[platform::VK_SPACE] != 0 ||
                    keyDown[platform::VK_RETURN] != 0;
    if (keyDown[platform::VK_ESCAPE] != 0) {
        input.back = true;
        keyDown[platform::VK_ESCAPE] = 0;
    }
    return input;
}

void Menu::Update(GameState& next) {
    if (page == kKeyConfigPage) {
        ScanKeyConfig();
    }
    const Input input = ReadInput();
    if (input.up && selected > 1) {
        --selected;
    }
    if (input.down && selected < LineCount()) {
        ++selected;
    }
    if (input.select) {
        keyMap->Consume(::Action::Fire1);
        keyDown[platform::VK_SPACE] = 0;
        keyDown[platform::VK_RETURN] = 0;
        Action(next);
    }
    if (input.Any()) {
        platform::Pause(kInputPauseMs);
    }
    if (input.back || closeRequested) {
        if (next == GameState::MainMenu) {
            next = GameState::Title;
        } else {
            next = GameState::Playing;
            closeRequested = false;
        }
    }
}

void Menu::Action(GameState& next) {
    const int32_t code = page + selected;
    if (page == kServersPage) {
        ServerAction(selected - 1);
        return;
    }
    if (page == kResolutionPage && selected <= static_cast<int32_t>(kResolutions.size())) {
        const Resolution& mode = kResolutions[selected - 1];
        userPrefs->SetScreenWidth(mode.width);
        userPrefs->SetScreenHeight(mode.height);
        userPrefs->SetColourBits(mode.bits);
        RecreateWindow(mode.width, mode.height, mode.bits);
        return;
    }
    if (OptionsAction(code) || PolygonAction(code)) {
        // Fog, blending and filling are parts of a driver's shaders, too.
        levelManager->GetRehearsal().Restart();
        return;
    }
    switch (code) {
        case 51:
            next = GameState::Playing;
            break;
        case 52:
        case 102:
        case 311:
        case 405:
        case 505:
            ShowPage(kOptionsPage);
            break;
        case 53:
            RequestClose();
            next = GameState::NoChange;
            break;
        case 101:
            closeRequested = true;
            break;
        case 103:
            RequestClose();
            break;
        case 501:
            userPrefs->ToggleOnlineHiscores();
            hiscoreClient->Restart();
            break;
        case 502:
            page = kServersPage;
            selected = userPrefs->GetServerIndex() + 1;
            break;
        case 503:
            ShowAddServerDialog();
            break;
        case 504:
            ShowProxyDialog();
            break;
        default:
            break;
    }
}

// The options page; false when the code belongs to another page.
bool Menu::OptionsAction(int32_t code) {
    switch (code) {
        case 201:
            platform::Pause(kInputPauseMs);
            glWindow->ShowGLInfo();
            return true;
        case 202:
            ShowPage(kResolutionPage);
            return true;
        case 203:
            FlipFullscreen();
            return true;
        case 204:
            page = kPolygonPage;  // the highlight stays on the fourth line, "Smooth Models"
            return true;
        case 205:
            soundManager->ToggleSound();
            return true;
        case 206:
            page = kKeyConfigPage;
            return true;
        case 207:
            userPrefs->ToggleTransparency();
            return true;
        case 208:
            userPrefs->ToggleAntialiasing();
            RecreateWindow(static_cast<int16_t>(glWindow->GetWidth()),
                           static_cast<int16_t>(glWindow->GetHeight()), glWindow->GetBits());
            return true;
        case 209:
            userPrefs->ToggleFog();
            return true;
        case 210:
            page = kOnlinePage;
            selected = 1;
            return true;
        case 211:
            Reset();  // shows the pause page, from wherever the options were entered
            return true;
        default:
            return false;
    }
}

bool Menu::PolygonAction(int32_t code) {
    switch (code) {
        case 401:
            glWindow->SetPolygonMode(GL_FRONT_AND_BACK, GL_POINT);
            return true;
        case 402:
            glWindow->SetPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
            return true;
        case 403:
            glWindow->SetPolygonMode(GL_FRONT, GL_FILL);
            glShadeModel(GL_FLAT);
            return true;
        case 404:
            glWindow->SetPolygonMode(GL_FRONT, GL_FILL);
            glShadeModel(GL_SMOOTH);
            return true;
        default:
            return false;
    }
}

void Menu::ServerAction(int32_t server) {
    if (server < userPrefs->GetServerCount()) {
        userPrefs->SetServerIndex(server);
        hiscoreClient->Restart();
    }
    ShowPage(kOptionsPage);
}

// Binds the first key that is held, one a frame: of two held together the one with the lower code,
// and the other in the next frame. Every key passed on the way is consumed, so that Return or
// Escape can be bound without choosing a line or leaving the menu.
void Menu::ScanKeyConfig() {
    for (int virtualKey = 0; virtualKey < platform::kVirtualKeyCount - 1; ++virtualKey) {
        if (keyDown[virtualKey] == 0) {
            continue;
        }
        keyDown[virtualKey] = 0;
        if (IsMusicKey(virtualKey)) {
            continue;
        }
        userPrefs->SetKey(keyConfigStep, static_cast<uint8_t>(virtualKey));
        if (++keyConfigStep == kActionCount) {
            keyConfigStep = 0;
            ShowPage(kOptionsPage);
            keyMap->Reload();
        }
        platform::Pause(kKeyBoundPauseMs);
        return;
    }
}
