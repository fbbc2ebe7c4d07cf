#include "ModelSizes.h"

#include <algorithm>

#include "player/PowerupKinds.h"
#include "player/WeaponKinds.h"
#include "world/EnemyTypes.h"
#include "world/SceneryModels.h"

namespace {

constexpr SizeClass kHull = {"player's hull", 5.0F, {7.0F, 3.0F, 7.0F}, 4.0F};
constexpr SizeClass kMod = {"ship's part", 0.5F, {7.0F, 3.0F, 7.0F}, 4.0F};
constexpr SizeClass kIcon = {"lives icon", 1.5F, {2.4F, 2.4F, 2.4F}, 2.0F};
constexpr SizeClass kRing = {"aiming ring", 1.0F, {6.0F, 0.5F, 6.0F}, 2.0F};
constexpr SizeClass kBolt = {"bolt", 0.5F, {1.0F, 1.0F, 2.2F}, 2.2F};
constexpr SizeClass kMissile = {"missile", 0.8F, {0.8F, 0.8F, 1.4F}, 1.4F};
constexpr SizeClass kEnemy = {"enemy", 2.5F, {4.05F, 4.05F, 4.05F}, 2.5F};
constexpr SizeClass kFirstBossSize = {"first boss", 14.0F, {16.0F, 16.0F, 16.0F}, 8.0F};
constexpr SizeClass kSecondBossSize = {"second boss", 16.0F, {24.0F, 24.0F, 24.0F}, 10.0F};
constexpr SizeClass kPowerup = {"powerup", 1.5F, {2.6F, 2.6F, 2.6F}, 2.6F};
constexpr SizeClass kRock = {"rock or debris", 2.0F, {6.5F, 6.5F, 6.5F}, 6.5F};
constexpr SizeClass kFarObject = {"planet or station", 6.0F, {16.0F, 16.0F, 16.0F}, 16.0F};
constexpr SizeClass kNebula = {"nebula", 40.0F, {70.0F, 4.0F, 70.0F}, 70.0F};
constexpr SizeClass kProgramLogo = {"program's logo", 4.0F, {6.0F, 1.5F, 6.0F}, 6.0F};
constexpr SizeClass kStudioLogo = {"studio's logo", 8.0F, {14.0F, 10.0F, 2.0F}, 14.0F};

struct NamedModel {
    const char* path;
    const SizeClass* size;
};

constexpr NamedModel kFirstModels[] = {
    {"objects\\Weapon1.aob", &kBolt},     {"objects\\Weapon2.aob", &kBolt},
    {"objects\\Weapon3.aob", &kBolt},     {"objects\\Weapon4.aob", &kBolt},
    {"objects\\Weapon5.aob", &kBolt},     {"objects\\Missile0.aob", &kMissile},
    {"objects\\Missile1.aob", &kMissile},
};

constexpr NamedModel kShipModels[] = {
    {"Objects\\PlayerBase.aob", &kHull},       {"Objects\\SingleLaser.aob", &kMod},
    {"Objects\\DoubleLasers.aob", &kMod},      {"Objects\\TripleLaser.aob", &kMod},
    {"Objects\\QuadLasers.aob", &kMod},        {"Objects\\Cannon.aob", &kMod},
    {"Objects\\BasicEngines.aob", &kMod},      {"Objects\\TwinBasicEngines.aob", &kMod},
    {"Objects\\BigEngines.aob", &kMod},        {"Objects\\TwinInterEngines.aob", &kMod},
    {"Objects\\TwinBigEngines.aob", &kMod},    {"Objects\\PlayerBase-small.aob", &kIcon},
    {"Objects\\Target.aob", &kRing},           {"objects\\logo.aob", &kStudioLogo},
    {"objects\\Nebulorix.aob", &kProgramLogo},
};

const SizeClass& SceneryClass(int32_t kind) {
    const auto isOf = [kind](SceneryLayer layer) {
        const auto& kinds = kSceneryKinds[static_cast<size_t>(layer)];
        return std::find(kinds.begin(), kinds.end(), kind) != kinds.end();
    };
    if (isOf(SceneryLayer::Foreground)) {
        return kRock;
    }
    return isOf(SceneryLayer::Background) ? kNebula : kFarObject;
}

void AddEnemies(std::vector<ExpectedModel>& models) {
    for (int32_t type = 0; const EnemyType* const row = FindEnemyType(type); ++type) {
        const bool isNew = std::none_of(models.begin(), models.end(), [row](const auto& model) {
            return model.path == row->model;
        });
        if (isNew) {
            models.push_back({row->model, &kEnemy});
        }
    }
    models.push_back({FindEnemyType(kFirstBossType)->model, &kFirstBossSize});
    models.push_back({FindEnemyType(kFirstBossType + 1)->model, &kSecondBossSize});
}

}  // namespace

std::vector<ExpectedModel> ExpectedModels() {
    std::vector<ExpectedModel> models;
    for (const auto& [path, size] : kFirstModels) {
        models.push_back({path, size});
    }
    for (size_t kind = 0; kind < kSceneryModels.size(); ++kind) {
        models.push_back({kSceneryModels[kind].model, &SceneryClass(static_cast<int32_t>(kind))});
    }
    for (const PowerupKind& powerup : kPowerups) {
        models.push_back({powerup.model, &kPowerup});
    }
    for (const auto& [path, size] : kShipModels) {
        models.push_back({path, size});
    }
    AddEnemies(models);
    return models;
}
