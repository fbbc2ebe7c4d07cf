#include "AutopilotGame.h"

#include <array>
#include <cstring>
#include <sstream>

#include "audio/SoundManager.h"
#include "core/DebugLog.h"
#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLExtensions.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"
#include "platform/Random.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"
#include "player/WeaponManager.h"
#include "scores/HiscoreTable.h"
#include "scores/OnlineHiscores.h"
#include "scores/UserPrefs.h"
#include "world/SceneryManager.h"

namespace {

constexpr int32_t kLevelsPerSector = 6;

// A row for each sector, from what whole games had at its start.
constexpr std::array<Arms, 6> kTypicalArms = {{
    // weapon, engine, bullets, capacity, shields, homing, dumbfire, autofire
    {1, 0, 3, 12, 0, 0, 0, false},
    {2, 2, 14, 16, 1, 0, 0, false},
    {2, 2, 17, 18, 1, 0, 1, false},
    {2, 2, 18, 20, 2, 0, 1, false},
    {2, 2, 19, 20, 2, 1, 1, false},
    {2, 2, 19, 20, 2, 1, 1, false},
}};

template <typename Object>
void Delete(Object*& object) {
    delete object;
    object = nullptr;
}

template <typename Step>
void Times(int32_t count, Step step) {
    for (int32_t i = 0; i < count; ++i) {
        step();
    }
}

}  // namespace

const Arms& TypicalArms(int32_t level) {
    return kTypicalArms[(level - 1) / kLevelsPerSector];
}

AutopilotGame::AutopilotGame() {
    CaptureLog(&log);
    userPrefs = new UserPrefs;
    if (userPrefs->GetOnlineHiscores()) {
        userPrefs->ToggleOnlineHiscores();
    }
    keyMap = new KeyMap;
    glExtensions = new GLExtensions;
    glWindow = new GLWindow;
    if (glWindow->CreateGLWindow("Autopilot", 800, 600, 32)) {
        Log("ERROR: the window without a display was refused\n");
    }
    soundManager = SoundManager::Instance();
    soundManager->Init();
    WeaponManager::LoadModels();
    SceneryManager::LoadModels();
    PowerupManager::LoadModels();
    playerShip = new PlayerShip;
    if (!playerShip->LoadModel("Objects\\PlayerBase.aob")) {
        Log("ERROR: the player's ship has no model\n");
    }
    levelManager = new LevelManager(playerShip);
    levelManager->Init();
    hiscoreTable = new HiscoreTable;
    hiscoreClient = new OnlineHiscores;
}

AutopilotGame::~AutopilotGame() {
    Delete(hiscoreClient);
    Delete(hiscoreTable);
    Delete(levelManager);
    playerShip = nullptr;
    glWindow->DestroyGLWindow();
    ObjectManager::Destroy();
    Delete(glWindow);
    Delete(glExtensions);
    soundManager->Shutdown();
    SoundManager::DestroyInstance();
    soundManager = nullptr;
    Delete(keyMap);
    Delete(userPrefs);
    CaptureLog(nullptr);
}

void AutopilotGame::StartAt(int32_t level, uint32_t seed) {
    platform::SeedRandom(seed);
    EnemyShip::ResetFormationSway();
    std::memset(keyDown, 0, sizeof keyDown);
    levelManager->StartAt(level);
}

void AutopilotGame::TakeArms(const Arms& arms) {
    PlayerShip& ship = levelManager->GetPlayer();
    ship.SetWeapon(arms.weapon);
    ship.SetAutofire(arms.autofire);
    Times(arms.engine, [&] { ship.UpgradeEngine(); });
    Times(arms.bulletCapacity - ship.GetBulletCapacity(), [&] { ship.AddBulletCapacity(); });
    while (ship.GetBullets() < arms.bullets && ship.GetBullets() < ship.GetBulletCapacity()) {
        ship.AddBullet();
    }
    Times(arms.shields, [&] { ship.AddShield(); });
    Times(arms.homing, [&] { ship.AddHomingMissile(); });
    Times(arms.dumbfire, [&] { ship.AddDumbfireMissile(); });
}

void AutopilotGame::PlayFrame() {
    // The camera's blend runs down as scenes begin; the rest of the drawing changes nothing.
    if (glWindow->IsViewBlending()) {
        glWindow->BeginScene();
        glWindow->EndScene();
    }
    if (levelManager->Update()) {
        Log("ERROR: Error loading a level!\n");
    }
}

std::string AutopilotGame::Faults() const {
    std::istringstream lines(log);
    std::string faults;
    for (std::string line; std::getline(lines, line);) {
        if (line.find("ERROR") != std::string::npos || line.find("WARNING") != std::string::npos) {
            faults += line + "\n";
        }
    }
    return faults;
}
