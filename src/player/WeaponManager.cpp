#include "player/WeaponManager.h"

#include <algorithm>

#include "audio/SoundManager.h"
#include "core/DebugLog.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"
#include "player/Collision.h"
#include "world/EnemyShip.h"

namespace {

constexpr std::array<const char*, kWeaponKinds> kWeaponModels = {
    "objects\\Weapon1.aob", "objects\\Weapon2.aob", "objects\\Weapon3.aob",
    "objects\\Weapon4.aob", "objects\\Weapon5.aob",
};
constexpr std::array<const char*, kMissileKinds> kMissileModels = {
    "objects\\Missile0.aob",
    "objects\\Missile1.aob",
};

// Display lists, by weapon kind (entry 0 unused) and by missile kind.
std::array<uint32_t, kWeaponKinds + 1> weaponModels = {};
std::array<uint32_t, kMissileKinds> missileModels = {};

LevelManager* targetFinder = nullptr;  // for missiles

bool IsSideView(int32_t view) {
    return view == 2 || view == 3;
}

// The enemies' shots leave from where the ship's model has its guns. Only enemy ships fire through
// the enemies' manager, so what fires here is one.
std::array<Vec3, EnemyShip::kMaxGuns> EnemyGuns(const Ship& ship, int32_t kind) {
    std::array<Vec3, EnemyShip::kMaxGuns> guns = {};
    static_cast<const EnemyShip&>(ship).GetGunOffsets(kind, guns);
    return guns;
}

}  // namespace

WeaponManager::WeaponManager(bool playerSide)
    : playerSide(playerSide), shots(playerSide ? kPlayerShots : kEnemyShots) {}

bool WeaponManager::Init() {
    return false;
}

bool WeaponManager::LoadModels() {
    for (int i = 0; i < kWeaponKinds; ++i) {
        weaponModels[i + 1] = ObjectManager::Instance()->Load(kWeaponModels[i]);
        if (weaponModels[i + 1] == 0) {
            Log("ERROR: Weapon: %s not found\n", kWeaponModels[i]);
            return true;
        }
    }
    for (int i = 0; i < kMissileKinds; ++i) {
        missileModels[i] = ObjectManager::Instance()->Load(kMissileModels[i]);
        if (missileModels[i] == 0) {
            Log("ERROR: Missile: %s not found\n", kMissileModels[i]);
            return true;
        }
    }
    return false;
}

void WeaponManager::SetLinks(LevelManager* levelManager, ExplosionManager* explosions) {
    targetFinder = levelManager;
    Shot::SetLinks(levelManager, explosions);
}

uint32_t WeaponManager::MissileModel(int32_t missileKind) {
    return missileModels[missileKind];
}

bool WeaponManager::Fire(int32_t kind, const Ship& ship, const FireAllowance& allowance) {
    if (FreeCount() == 0) {
        return true;
    }
    if (kind < 1 || kind > kWeaponKinds) {
        Log("ERROR: Weapon: Bad weapon type\n");
        return true;
    }
    int available = FreeCount();
    if (playerSide) {
        available = std::min(available, allowance.bullets - BulletsInFlight());
    }
    bool fired = false;
    if (available >= ShotsPerVolley(kind)) {
        FireVolley(kind, ship);
        fired = true;
    }
    if (playerSide) {
        // Missiles leave whether or not the guns may fire.
        fired |= FireMissile(kMissileHoming, ship, allowance);
        fired |= FireMissile(kMissileDumbfire, ship, allowance);
    }
    return !fired;
}

// The caller has seen to it that one is free.
Shot& WeaponManager::TakeShot() {
    Shot& shot = *shots.Take();
    shot.active = true;
    shot.isMissile = false;
    shot.target = nullptr;
    ++shotsFired;
    return shot;
}

void WeaponManager::FireVolley(int32_t kind, const Ship& ship) {
    const WeaponKind& weapon = kWeapons[kind];
    const float direction = playerSide ? -1.0F : 1.0F;

    Volley volley = {};
    Shot& first = TakeShot();
    first.position = ship.GetPosition();
    first.velocity = {0.0F, 0.0F, weapon.speed * direction};
    first.damage = weapon.damage;
    first.life = weapon.life;
    first.colour = weapon.light;
    first.model = weaponModels[kind];
    volley[0] = &first;
    for (int i = 1; i < weapon.shotsPerVolley; ++i) {
        volley[i] = &TakeShot();
        volley[i]->InitFrom(first);
    }

    if (kind == kWeaponDouble) {
        PlaceDouble(volley, ship);
    } else if (kind == kWeaponTriple) {
        SpreadTriple(volley);
    } else if (kind == kWeaponQuad) {
        PlaceQuad(volley, ship);
    }
}

void WeaponManager::PlaceDouble(const Volley& volley, const Ship& ship) const {
    Vec3 barrel = IsSideView(glWindow->GetView()) ? kDoubleBarrelSide : kDoubleBarrel;
    if (!playerSide) {
        barrel = EnemyGuns(ship, kWeaponDouble)[0];
    }
    volley[0]->position = volley[0]->position - barrel;
    volley[1]->position = volley[1]->position + barrel;
}

// The outer shots spread in the plane of the view, on both sides of the fight.
void WeaponManager::SpreadTriple(const Volley& volley) const {
    const float direction = playerSide ? -1.0F : 1.0F;
    const bool sideView = IsSideView(glWindow->GetView());
    for (int i = 1; i <= 2; ++i) {
        const float sideways = (i == 1 ? -kTripleSpread : kTripleSpread) * direction;
        volley[i]->velocity.z = kOuterSpeed * direction;
        (sideView ? volley[i]->velocity.y : volley[i]->velocity.x) = sideways;
    }
}

void WeaponManager::PlaceQuad(const Volley& volley, const Ship& ship) const {
    const bool sideView = IsSideView(glWindow->GetView());
    std::array<Vec3, kMaxVolley> barrels = sideView ? kQuadBarrelsSide : kQuadBarrels;
    if (!playerSide) {
        barrels = EnemyGuns(ship, kWeaponQuad);
    } else if (sideView) {
        // Stacked on two levels, the four would fly as two: the outer ones fan out across.
        volley[0]->velocity = {0.0F, -kQuadSpread, -kOuterSpeed};
        volley[3]->velocity = {0.0F, kQuadSpread, -kOuterSpeed};
    }
    for (int i = 0; i < kMaxVolley; ++i) {
        volley[i]->position = volley[i]->position + barrels[i];
    }
}

bool WeaponManager::FireMissile(int32_t missileKind, const Ship& ship,
                                const FireAllowance& allowance) {
    const bool homing = missileKind == kMissileHoming;
    int32_t& inFlight = homing ? liveHoming : liveDumbfire;
    if (FreeCount() == 0 || inFlight >= (homing ? allowance.homing : allowance.dumbfire)) {
        return false;
    }
    GameObject* target = homing ? targetFinder->PickTarget() : nullptr;
    if (homing && target == nullptr) {
        return false;
    }
    const MissileKind& missile = kMissiles[missileKind];
    const float factor = static_cast<float>(allowance.missileSpeed) * kMissileSpeedStep + 1.0F;
    const float speed = factor * missile.speed;

    Shot& shot = TakeShot();
    ++inFlight;
    shot.isMissile = true;
    shot.missileKind = missileKind;
    shot.target = target;
    shot.position = ship.GetPosition();
    shot.velocity = homing ? Vec3{} : Vec3{0.0F, 0.0F, -speed};
    shot.homingSpeed = homing ? speed : 0.0F;
    shot.damage = missile.damage;
    shot.life = missile.life;
    shot.colour = missile.light;
    shot.model = missileModels[missileKind];
    return true;
}

void WeaponManager::UpdateAll() {
    shots.ReleaseIf([this](Shot& shot) {
        const bool finished = shot.Update();
        if (finished) {
            NoteRemoval(shot);
        }
        return finished;
    });
}

void WeaponManager::DrawAll() {
    for (int i = 0; i < LiveCount(); ++i) {
        shots.Live(i).Draw();
    }
}

// The busiest loop of the game: every enemy asks for every shot of the player's, every frame. The
// target's box is looked up once, and again after each hit, which may have taken its last shield.
bool WeaponManager::CollideWith(GameObject& target) {
    bool anyHit = false;
    PlacedBox box(target.GetPosition(), target.GetBounds());
    for (int i = 0; i < LiveCount();) {
        const Shot& shot = shots.Live(i);
        if (!box.Contains(shot.position)) {
            ++i;
            continue;
        }
        shot.SoundHit();
        target.TakeDamage(shot.GetDamage());
        Remove(i);
        ++shotsHit;
        anyHit = true;
        box = PlacedBox(target.GetPosition(), target.GetBounds());
    }
    return anyHit;
}

void WeaponManager::NoteRemoval(const Shot& shot) {
    if (shot.isMissile) {
        --(shot.missileKind == kMissileDumbfire ? liveDumbfire : liveHoming);
        soundManager->PlayMissileExplosion();
    }
}

void WeaponManager::Remove(int index) {
    NoteRemoval(shots.Live(index));
    shots.Release(index);
}

bool WeaponManager::Clear() {
    shotsHit = 0;
    shotsFired = 0;
    if (LiveCount() == 0 && FreeCount() != shots.Capacity()) {
        Log("ERROR: Weapon: lost a weapon\n");
        return true;
    }
    while (LiveCount() > 0) {
        Remove(0);
    }
    return false;
}

void WeaponManager::ForgetTargets() {
    for (int i = 0; i < LiveCount(); ++i) {
        shots.Live(i).target = nullptr;
    }
}
