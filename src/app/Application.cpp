#include "app/Application.h"

#include <array>
#include <ctime>
#include <filesystem>

#include "app/TrayIcon.h"
#include "audio/MusicPlayer.h"
#include "audio/SoundManager.h"
#include "core/DebugLog.h"
#include "core/Joystick.h"
#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/DisplayMode.h"
#include "game/LevelManager.h"
#include "graphics/GLExtensions.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"
#include "platform/Files.h"
#include "platform/Random.h"
#include "platform/VirtualKeys.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"
#include "player/WeaponManager.h"
#include "scores/HiscoreTable.h"
#include "scores/OnlineHiscores.h"
#include "scores/UserPrefs.h"
#include "world/Explosion.h"
#include "world/SceneryManager.h"

namespace {

constexpr const char* kShipModel = "Objects\\PlayerBase.aob";
constexpr const char* kHiscoreFile = "Data\\NXHS.bin";

bool shutDown = false;

template <typename Object>
void Delete(Object*& object) {
    delete object;
    object = nullptr;
}

// A first start finds no folder for its files. Without one the game runs and keeps nothing.
void MakeDataFolder() {
    std::error_code ignored;
    std::filesystem::create_directory(platform::ResolvePath("Data"), ignored);
}

void RequestClose() {
    platform::SendMessage({.kind = platform::MessageKind::Close, .window = hWnd});
}

// The steps of start-up, each with what it needs from those before it. A step that ends the program
// has run the shut-down when it returns.

void OpenWindow() {
    glExtensions = new GLExtensions;
    glWindow = new GLWindow;
    glWindow->AddTenant(
        {.created = [] { SetTrayIcon(true); }, .destroying = [] { SetTrayIcon(false); }});
    AddGameTenants(*glWindow);
    glWindow->AskFullscreen();  // asks to close when it fails
}

void OpenJoystick() {
    joystick = new Joystick;
    bool found = false;
    if (const int code = joystick->Init(found)) {
        ShutDown(code);
    } else if (!found) {
        Delete(joystick);
    }
}

void MakeKeyMap() {
    keyMap = new KeyMap;
}

void OpenAudio() {
    soundManager = SoundManager::Instance();
    soundManager->Init();
    musicPlayer = MusicPlayer::Instance();
    musicPlayer->Scan();
    musicPlayer->PlayNext();
}

void MakePlayer() {
    playerShip = new PlayerShip;
    if (!playerShip->LoadModel(kShipModel)) {
        Log("ERROR: Cant load player ship: %s\n", kShipModel);
        RequestClose();
    }
}

void MakeGame() {
    levelManager = new LevelManager(playerShip);
    if (levelManager->Init()) {
        RequestClose();
    }
}

void OpenScores() {
    hiscoreTable = new HiscoreTable;
    hiscoreTable->Load(kHiscoreFile);
    hiscoreClient = new OnlineHiscores;
}

// After the log and the preferences, in this order.
constexpr std::array kStartUpSteps = {OpenWindow, OpenJoystick, MakeKeyMap, OpenAudio,
                                      MakePlayer, MakeGame,     OpenScores};

void RunFrame() {
    glWindow->BeginScene();
    levelManager->Draw();
    levelManager->GetRehearsal().Continue();
    glWindow->EndScene();
    platform::SwapBuffers(hDC);
    if (levelManager->Update()) {
        Log("ERROR: Error loading a level!");
    }
}

void RestartRehearsal() {
    if (levelManager != nullptr) {
        levelManager->GetRehearsal().Restart();
    }
}

void HandleMusicKey(int virtualKey) {
    switch (virtualKey) {
        case platform::VK_NEXT:
            musicPlayer->Pause();
            break;
        case platform::VK_PRIOR:
            musicPlayer->Resume();
            break;
        case platform::VK_HOME:
            musicPlayer->Stop();
            break;
        case platform::VK_END:
            musicPlayer->PlayNext();
            break;
        case platform::VK_INSERT:
            musicPlayer->ChangeVolume(+1);
            break;
        case platform::VK_DELETE:
            musicPlayer->ChangeVolume(-1);
            break;
        default:
            break;
    }
}

void HandleKeyDown(int virtualKey) {
    keyDown[virtualKey] = 1;
    lastChar = KeyMap::Translate(virtualKey);
    if (keyDown[platform::VK_CONTROL] != 0 && keyDown[platform::VK_RETURN] != 0) {
        FlipFullscreen();
        // Used up: the next frame must not take this Enter for the choice of a menu line or for the
        // end of a name.
        keyDown[platform::VK_RETURN] = 0;
        lastChar = 0;
    }
    HandleMusicKey(virtualKey);
}

void HandleCommand(int command) {
    if (command == kExitCommand) {
        RequestClose();
    } else if (command == kToggleFullscreenCommand) {
        FlipFullscreen();
    }
}

}  // namespace

void AddGameTenants(GLWindow& window) {
    window.AddTenant({.created = Ship::CreateQuadric, .destroying = Ship::DeleteQuadric});
    window.AddTenant({.created = [] { WeaponManager::LoadModels(); }});
    window.AddTenant({.created = [] { SceneryManager::LoadModels(); }});
    window.AddTenant({.created = [] { PowerupManager::LoadModels(); }});
    window.AddTenant(
        {.dropForRebuild = Explosion::DeleteGLObjects, .rebuild = Explosion::CreateGLObjects});
    window.AddTenant({.rebuild = RestartRehearsal});
}

void StartUp() {
    shutDown = false;
    platform::SetWindowProcedure(HandleMessage);
    platform::SeedRandom(static_cast<uint32_t>(std::time(nullptr)));
    MakeDataFolder();
    OpenDebugLog();
    userPrefs = new UserPrefs;
    for (void (*step)() : kStartUpSteps) {
        step();
        if (shutDown) {
            return;
        }
    }
}

void ShutDown(int exitCode) {
    if (shutDown) {
        return;
    }
    shutDown = true;
    if (userPrefs != nullptr) {
        userPrefs->Save();
    }
    EmptyRegistry();
    CloseDebugLog();
    platform::PostQuit(exitCode);
}

void EmptyRegistry() {
    Delete(userPrefs);
    if (glWindow != nullptr) {
        glWindow->DestroyGLWindow();
    }
    Delete(joystick);
    ObjectManager::Destroy();
    Delete(glWindow);
    Delete(glExtensions);
    if (soundManager != nullptr) {
        soundManager->Shutdown();
        SoundManager::DestroyInstance();
        soundManager = nullptr;
    }
    if (musicPlayer != nullptr) {
        musicPlayer->Shutdown();
        MusicPlayer::DestroyInstance();
        musicPlayer = nullptr;
    }
    if (levelManager != nullptr) {
        Delete(levelManager);  // and the player's ship with it
    } else {
        delete playerShip;
    }
    playerShip = nullptr;
    Delete(hiscoreTable);  // saved when an entry was added
    Delete(hiscoreClient);
    Delete(keyMap);
}

void HandleMessage(const platform::Message& message) {
    using platform::MessageKind;
    if (message.kind == MessageKind::Close) {
        ShutDown(0);
    }
    if (shutDown) {
        return;
    }
    switch (message.kind) {
        case MessageKind::Paint:
            RunFrame();
            break;
        case MessageKind::Size:
            glWindow->ResizeView(message.width, message.height);
            Log("Screensize changed to %dx%d\n\n", message.width, message.height);
            break;
        case MessageKind::KeyDown:
            HandleKeyDown(message.code);
            break;
        case MessageKind::KeyUp:
            keyDown[message.code] = 0;
            break;
        case MessageKind::SysKeyDown:
            if (message.code == platform::VK_RETURN) {
                FlipFullscreen();
            }
            break;
        case MessageKind::MouseMove:
            platform::ShowCursor(false);
            break;
        case MessageKind::Tray:
            ShowTrayMenu();
            break;
        case MessageKind::Command:
            HandleCommand(message.code);
            break;
        case MessageKind::Close:
            break;
    }
}

int RunMessageLoop() {
    platform::Message message;
    while (platform::GetMessage(message)) {
        platform::DispatchMessage(message);
    }
    return platform::ExitCode();
}
