#include "GameRegistry.h"

#include "audio/SoundManager.h"
#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLExtensions.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"
#include "player/PlayerShip.h"
#include "scores/HiscoreTable.h"
#include "scores/OnlineHiscores.h"
#include "scores/UserPrefs.h"

namespace {

template <typename Object>
void Delete(Object*& object) {
    delete object;
    object = nullptr;
}

}  // namespace

bool FillRegistry(const char* title, int16_t width, int16_t height,
                  void (*prepare)(GLWindow& window)) {
    userPrefs = new UserPrefs;
    if (userPrefs->GetOnlineHiscores()) {
        userPrefs->ToggleOnlineHiscores();
    }
    keyMap = new KeyMap;
    glExtensions = new GLExtensions;
    glWindow = new GLWindow;
    if (prepare != nullptr) {
        prepare(*glWindow);
    }
    soundManager = SoundManager::Instance();
    return glWindow->CreateGLWindow(title, width, height, 32);
}

bool AddGameToRegistry() {
    playerShip = new PlayerShip;
    const bool loaded = playerShip->LoadModel("Objects\\PlayerBase.aob");
    levelManager = new LevelManager(playerShip);
    const bool failed = levelManager->Init();
    hiscoreTable = new HiscoreTable;
    hiscoreClient = new OnlineHiscores;
    return failed || !loaded;
}

void EmptyRegistry() {
    if (glWindow != nullptr) {
        glWindow->DestroyGLWindow();
    }
    ObjectManager::Destroy();
    Delete(glWindow);
    Delete(glExtensions);
    if (soundManager != nullptr) {
        soundManager->Shutdown();
        SoundManager::DestroyInstance();
        soundManager = nullptr;
    }
    Delete(levelManager);  // and the player's ship with it
    playerShip = nullptr;
    Delete(hiscoreTable);
    Delete(hiscoreClient);
    Delete(keyMap);
    Delete(userPrefs);
}
