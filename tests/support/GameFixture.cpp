#include "support/GameFixture.h"

#include <cstring>
#include <fstream>
#include <vector>

#include "GameRegistry.h"
#include "app/Application.h"
#include "audio/SoundManager.h"
#include "core/DebugLog.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLWindow.h"
#include "platform/Files.h"
#include "platform/null/NullMedia.h"
#include "platform/null/NullPlatform.h"
#include "player/PowerupKinds.h"
#include "player/PowerupManager.h"
#include "player/WeaponManager.h"
#include "world/SceneryManager.h"
#include "world/SceneryModels.h"

namespace {

constexpr Bounds kPlayerBounds = {-3.0F, 3.0F, -1.0F, 1.0F, -3.0F, 3.0F};
constexpr Bounds kEnemyBounds = {-2.0F, 2.0F, -1.0F, 1.0F, -2.0F, 2.0F};
constexpr Bounds kSmallBounds = {-1.0F, 1.0F, -1.0F, 1.0F, -1.0F, 1.0F};

constexpr const char* kPlayerModels[] = {
    "SingleLaser",      "DoubleLasers",     "TripleLaser", "QuadLasers",       "Cannon",
    "BasicEngines",     "TwinBasicEngines", "BigEngines",  "TwinInterEngines", "TwinBigEngines",
    "PlayerBase-small", "Target",           "logo",        "Nebulorix"};
constexpr const char* kEnemyModels[] = {"Dravek",  "jalka", "Dravek2Shot",
                                        "Fryjahn", "boss1", "boss2"};

}  // namespace

void RoomFixture::SetUp() {
    previousFolder = std::filesystem::current_path();
    std::string pattern = (std::filesystem::temp_directory_path() / "nebulorix-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder = pattern;
    std::filesystem::current_path(folder);
    for (const char* name : {"Data", "Objects", "images", "levels", "Music"}) {
        std::filesystem::create_directory(name);
    }
    CaptureLog(&log);
    platform::null::Reset();
    platform::null::ResetMedia();
    std::memset(keyDown, 0, sizeof keyDown);
    lastChar = 0;
    score = 0;
    money = 0;
    ASSERT_FALSE(FillRegistry("test", 800, 600));
    soundManager->Init();
}

void RoomFixture::TearDown() {
    EmptyRegistry();
    CaptureLog(nullptr);
    std::filesystem::current_path(previousFolder);
    std::filesystem::remove_all(folder);
}

void RoomFixture::WriteFile(const std::string& gamePath, const std::string& content) {
    std::ofstream(platform::ResolvePath(gamePath), std::ios::binary) << content;
}

void RoomFixture::WriteModel(const std::string& gamePath, const Bounds& bounds) {
    const Vec3 corners[] = {{bounds.minX, bounds.minY, bounds.minZ},
                            {bounds.minX, bounds.maxY, bounds.maxZ},
                            {bounds.maxX, bounds.maxY, bounds.maxZ},
                            {bounds.maxX, bounds.minY, bounds.minZ}};
    std::string file =
        "Vertices: 4\nFaces: 1\nMaterials: 0\nSeparators: 0 \nSepIndex: \nvertices:\n";
    for (const Vec3& corner : corners) {
        const float values[] = {0.0F, 1.0F, 0.0F, corner.x, corner.y, corner.z};
        file.append(reinterpret_cast<const char*>(values), sizeof values);
    }
    file += "\n#MatDefs:\n";
    WriteFile(gamePath, file);
}

void GameFixture::SetUp() {
    RoomFixture::SetUp();
    WriteModel("Objects\\PlayerBase.aob", kPlayerBounds);
    for (const char* name : kPlayerModels) {
        WriteModel(std::string("Objects\\") + name + ".aob", kSmallBounds);
    }
    for (const char* name : kEnemyModels) {
        WriteModel(std::string("Objects\\") + name + ".aob", kEnemyBounds);
    }
    for (int kind = 1; kind <= kWeaponKinds; ++kind) {
        WriteModel("Objects\\Weapon" + std::to_string(kind) + ".aob", kSmallBounds);
    }
    for (int kind = 0; kind < kMissileKinds; ++kind) {
        WriteModel("Objects\\Missile" + std::to_string(kind) + ".aob", kSmallBounds);
    }
    for (const PowerupKind& kind : kPowerups) {
        WriteModel(kind.model, kSmallBounds);
    }
    for (const SceneryModel& kind : kSceneryModels) {
        WriteModel(kind.model, kSmallBounds);
    }
    ASSERT_FALSE(WeaponManager::LoadModels());
    ASSERT_FALSE(SceneryManager::LoadModels());
    ASSERT_FALSE(PowerupManager::LoadModels());
    Ship::CreateQuadric();
    EnemyShip::ResetFormationSway();
    ASSERT_FALSE(AddGameToRegistry());
    log.clear();
}

void GameFixture::TearDown() {
    Ship::DeleteQuadric();
    RoomFixture::TearDown();
}

void GameFixture::RunFrames(int frames) {
    for (int i = 0; i < frames; ++i) {
        glWindow->BeginScene();
        levelManager->Draw();
        glWindow->EndScene();
        levelManager->Update();
    }
}

void GameFixture::WriteLevel(int number, const std::string& waves, int view) {
    WriteFile("levels\\Level" + std::to_string(number) + ".lvl",
              "Title: Test\nAuthor: Tests\nView: " + std::to_string(view) +
                  "\nPaths: 1\nPoints: 2\n: 0 0 -40  0 0 -20\n" + waves);
}

std::string GameFixture::OneGroup(int type, int ships) {
    return "Waves: 1\nWave bonus: 1000\nGroups: 1\nBonus: 500 Path: 0 Type: " +
           std::to_string(type) + " Ships: " + std::to_string(ships) +
           " Interval: 1 Start: 0 Fire: 0 Dive: 0 Dives: 0\n";
}
