#include "GameStage.h"

#include <cstdlib>
#include <fstream>

#include "GameRegistry.h"
#include "app/Application.h"
#include "audio/SoundManager.h"
#include "core/DebugLog.h"
#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLWindow.h"
#include "platform/Random.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* kTitle = "Nebulorix";

void Hold(Action action, bool held) {
    keyDown[keyMap->Get(action)] = held ? 1 : 0;
}

}  // namespace

GameStage::GameStage(const fs::path& assets, int16_t width, int16_t height)
    : previousFolder(fs::current_path()) {
    const fs::path source = fs::absolute(assets);
    std::string pattern = (fs::temp_directory_path() / "nebulorix-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr || platform::OpenDisplay()) {
        return;
    }
    folder = pattern;
    for (const char* name : {"Objects", "images"}) {
        fs::create_directory_symlink(source / name, folder / name);
    }
    fs::copy(source / "levels", folder / "levels");
    fs::current_path(folder);

    CaptureLog(&log);
    platform::SeedRandom(1);
    const auto prepare = [](GLWindow& window) {
        window.SetFullscreen(false);
        AddGameTenants(window);
    };
    if (FillRegistry(kTitle, width, height, prepare)) {
        return;
    }
    soundManager->ToggleSound();
    failed = AddGameToRegistry();
}

GameStage::~GameStage() {
    EmptyRegistry();
    CaptureLog(nullptr);
    platform::CloseDisplay();
    fs::current_path(previousFolder);
    fs::remove_all(folder);
}

void GameStage::WriteLevel1(const std::string& text) {
    std::ofstream(folder / "levels" / "Level1.lvl") << text;
}

bool GameStage::Resize(int16_t width, int16_t height) {
    glWindow->DestroyGLWindow();
    if (glWindow->CreateGLWindow(kTitle, width, height, 32)) {
        return true;
    }
    glWindow->RebuildGLResources();
    glWindow->ResizeView(width, height);
    return false;
}

void GameStage::Draw() {
    glWindow->BeginScene();
    levelManager->Draw();
    levelManager->GetRehearsal().Continue();
    glWindow->EndScene();
}

void GameStage::Update() {
    levelManager->Update();
}

void GameStage::Swap() {
    platform::SwapBuffers(hDC);
}

void HoldFire(bool held) {
    Hold(Action::Fire1, held);
}

void HoldSideways(int direction) {
    Hold(Action::Left, direction < 0);
    Hold(Action::Right, direction > 0);
}
