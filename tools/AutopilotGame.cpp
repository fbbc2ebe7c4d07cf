#include "AutopilotGame.h"

#include <array>
#include <cstring>
#include <sstream>

#include "GameRegistry.h"
#include "app/Application.h"
#include "audio/SoundManager.h"
#include "core/DebugLog.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLWindow.h"
#include "platform/Random.h"
#include "player/PlayerShip.h"

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
    if (FillRegistry("Autopilot", 800, 600, AddGameTenants)) {
        Log("ERROR: the window without a display was refused\n");
    }
    soundManager->Init();
    if (AddGameToRegistry()) {
        Log("ERROR: the player's ship or the game lacks a model\n");
    }
}

AutopilotGame::~AutopilotGame() {
    EmptyRegistry();
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
