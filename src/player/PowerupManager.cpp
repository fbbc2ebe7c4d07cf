#include "player/PowerupManager.h"

#include "audio/SoundManager.h"
#include "core/DebugLog.h"
#include "core/Registry.h"
#include "graphics/ObjectManager.h"
#include "platform/Random.h"
#include "player/PlayerShip.h"

namespace {

constexpr int32_t kBoughtInvulnerability = 750;  // frames
constexpr int kEntryChance = 5;                  // one in so many for each entry of a range

std::array<uint32_t, kPowerupEntries> models = {};  // display lists

// What a destroyed enemy may leave: entries [first, last], or nothing.
struct DropRange {
    int first;
    int last;
};
constexpr DropRange kNothing = {0, -1};
constexpr DropRange kSuckers = {kSuckerEntry, kCoinEntry - 1};
constexpr DropRange kCoins = {kCoinEntry, kGemEntry - 1};
constexpr DropRange kGems = {kGemEntry, kPowerupEntries - 1};
constexpr DropRange kUpgrades = {0, kShopEntries - 1};

constexpr std::array<DropRange, 10> kDropRanges = {
    kSuckers, kCoins, kCoins, kCoins, kGems, kUpgrades, kNothing, kNothing, kNothing, kNothing,
};

bool IsWeaponCode(int32_t code) {
    return code >= kSingleLaser && code <= kCannon;
}

int32_t WeaponOf(int32_t code) {
    return code - kSingleLaser + 1;
}

void ApplyUpgrade(PlayerShip& player, int32_t code, bool award) {
    switch (code) {
        case kSingleLaser:
        case kDoubleLaser:
        case kTripleLaser:
        case kQuadLaser:
        case kCannon:
            player.SetWeapon(WeaponOf(code));
            player.AddBullet();
            break;
        case kHomingMissile:
            player.AddHomingMissile();
            break;
        case kDumbfireMissile:
            player.AddDumbfireMissile();
            break;
        case kMissileSpeedup:
            player.AddMissileSpeed();
            break;
        case kExtraBullet:
            player.AddBullet();
            break;
        case kEngineUpgrade:
            player.UpgradeEngine();
            break;
        case kShield:
            player.AddShield();
            break;
        case kAutofire:
            player.SetAutofire(true);
            break;
        case kExtraLife:
            player.AddLife();
            break;
        case kInvulnerability:
            player.SetInvulnerable(kBoughtInvulnerability);
            break;
        case kMissileCapacity:
            player.AddMissileCapacity();
            break;
        case kBulletCapacity:
            player.AddBulletCapacity();
            break;
        case kSucker1:
        case kSucker2:
        case kSucker3:
            player.LoseUpgrades(award, code);
            break;
        case kWeakMagnet:
            player.SetMagnet(false);
            break;
        case kStrongMagnet:
            player.SetMagnet(true);
            break;
        default:
            Log("ERROR: Oh Dear, lost a power up! - %d\n", code);
            break;
    }
}

}  // namespace

PowerupManager::PowerupManager() = default;
PowerupManager::~PowerupManager() = default;

bool PowerupManager::Init() {
    return false;
}

bool PowerupManager::LoadModels() {
    for (int entry = 0; entry < kPowerupEntries; ++entry) {
        models[entry] = ObjectManager::Instance()->Load(kPowerups[entry].model);
        if (models[entry] == 0) {
            Log("ERROR: Powerup: %s not found\n", kPowerups[entry].model);
            return true;
        }
    }
    return false;
}

uint32_t PowerupManager::Model(int entry) {
    return models[entry];
}

void PowerupManager::SetView(int32_t view) {
    Powerup::SetView(view);
}

bool PowerupManager::Drop(Vec3 at) {
    if (powerups.FreeCount() == 0) {
        return true;
    }
    const DropRange range = kDropRanges[platform::Random() % kDropRanges.size()];
    for (int entry = range.first; entry <= range.last; ++entry) {
        if (platform::OneIn(kEntryChance)) {
            powerups.Take()->Place(at, models[entry], kPowerups[entry].code);
            return false;
        }
    }
    return true;
}

void PowerupManager::UpdateAll(const PlayerShip* player) {
    MagnetPull pull;
    if (player != nullptr && player->IsMagnetActive(pull.selective)) {
        pull.on = true;
        pull.towards = player->GetPosition();
    }
    powerups.ReleaseIf([&](Powerup& powerup) { return powerup.Update(pull, player); });
}

void PowerupManager::Collect(PlayerShip& player) {
    powerups.ReleaseIf([&](const Powerup& powerup) {
        const bool collected = powerup.HitTest(player);
        if (collected) {
            Apply(player, powerup.GetKind(), true);
        }
        return collected;
    });
}

void PowerupManager::DrawAll() {
    for (int i = 0; i < LiveCount(); ++i) {
        powerups.Live(i).Draw();
    }
}

void PowerupManager::Clear() {
    if (LiveCount() == 0 && powerups.FreeCount() != kCapacity) {
        Log("ERROR: PowerUp lost\n");
    }
    while (LiveCount() > 0) {
        powerups.Release(0);
    }
}

void PowerupManager::Apply(PlayerShip& player, int32_t code, bool award) {
    const int entry = FindPowerupEntry(code);
    if (award && entry >= 0 && kPowerups[entry].value > 0) {
        score += kPowerups[entry].value;
        soundManager->PlayPickupSound(entry);
    }
    switch (code) {
        case kCoin1:
            money += 10;
            break;
        case kCoin2:
            money += 50;
            break;
        case kCoin3:
            money += 100;
            break;
        // A gem gives its own points on top of its value.
        case kGem1:
            score += 1000;
            break;
        case kGem2:
            score += 5000;
            break;
        case kGem3:
            score += 25000;
            break;
        default:
            ApplyUpgrade(player, code, award);
            break;
    }
}

bool PowerupManager::IsValid(const PlayerShip& player, int32_t code) {
    if (IsWeaponCode(code)) {
        return player.GetWeapon() != WeaponOf(code);
    }
    bool strong = false;
    const bool hasMagnet = player.GetMagnet(strong);
    switch (code) {
        case kHomingMissile:
            return player.GetHomingMissiles() < player.GetMissileCapacity();
        case kDumbfireMissile:
            return player.GetDumbfireMissiles() < player.GetMissileCapacity();
        case kMissileSpeedup:
            return player.GetMissileSpeed() < PlayerShip::kMaxMissileSpeed;
        case kExtraBullet:
            return player.GetBullets() < player.GetBulletCapacity();
        case kEngineUpgrade:
            return player.GetEngineLevel() + 1 < PlayerShip::kEngineLevels;
        case kShield:
            return player.GetShields() < PlayerShip::kMaxShields;
        case kAutofire:
            return !player.GetAutofire();
        case kExtraLife:
            return player.GetHitPoints() < PlayerShip::kMaxLives;
        case kInvulnerability:
            return !player.IsProtected();
        case kMissileCapacity:
            return player.GetMissileCapacity() < PlayerShip::kMaxMissileCapacity;
        case kBulletCapacity:
            return player.GetBulletCapacity() < PlayerShip::kMaxBulletCapacity;
        case kWeakMagnet:
            return !hasMagnet;
        case kStrongMagnet:
            return !(hasMagnet && strong);
        default:
            Log("ERROR: Oh Dear, lost a power up when deciding if valid! - %d\n", code);
            return true;
    }
}

// Suckers and the lesser magnet are never wanted, and no gun that is not better than the present.
bool PowerupManager::IsWanted(const PlayerShip& player, int32_t code) {
    if (IsWeaponCode(code)) {
        return player.GetWeapon() < WeaponOf(code);
    }
    return code != kSucker1 && code != kSucker2 && code != kSucker3 && code != kWeakMagnet;
}

bool PowerupManager::OpenShop(int32_t moneyNow) {
    return shop.Open(moneyNow);
}

void PowerupManager::DrawShop() {
    shop.Draw();
}

bool PowerupManager::UpdateShop() {
    return shop.Update();
}
