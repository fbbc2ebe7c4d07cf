#include "GameRegistry.h"

#include "audio/SoundManager.h"
#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLExtensions.h"
#include "graphics/GLWindow.h"
#include "player/PlayerShip.h"
#include "scores/HiscoreTable.h"
#include "scores/OnlineHiscores.h"
#include "scores/UserPrefs.h"

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
