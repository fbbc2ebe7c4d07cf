#include "world/EnemyShip.h"

#include <algorithm>
#include <optional>

#include "audio/SoundManager.h"
#include "core/DebugLog.h"
#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "platform/Random.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"
#include "player/WeaponManager.h"
#include "world/EnemyTypes.h"
#include "world/ExplosionManager.h"

namespace {

constexpr float kFacingDown = 180.0F;

// The formation: slots 5 units apart, across the screen of the current view.
constexpr float kSlotSpacing = 5.0F;
constexpr float kFirstRow = 10.0F;
constexpr float kSwayStep = 0.1F;  // units of a sway step

// How near a dive's waypoint counts as reached, beyond the dive speed and the waypoint's own
// tolerance.
constexpr float kArrivalSlack = 0.2F;
// Added for each dive kind: those that dive at the player turn away before they touch it.
constexpr std::array<float, 6> kDiveTolerances = {3.0F, 0.0F, 0.0F, 0.0F, 0.0F, 3.0F};

// The fixed waypoints of a dive, at either side of the screen.
struct DivePoint {
    int32_t kind;
    float side;  // -1 left, 1 right in the view from above
    float z;
};
constexpr std::array<DivePoint, 4> kDivePoints = {{
    {1, -1.0F, 26.0F},
    {2, 1.0F, 26.0F},
    {3, -1.0F, 0.0F},
    {4, 1.0F, 0.0F},
}};
constexpr float kDiveAcross = 35.0F;  // units off the middle along X
constexpr float kDiveAside = 27.0F;   // along Y, seen from the side

bool IsDiveKind(int32_t kind) {
    return kind >= 0 && kind < static_cast<int32_t>(kDiveTolerances.size());
}

// Where a dive of that kind goes as the camera stands now; nothing in a view without such a point.
std::optional<Vec3> DiveTarget(int32_t kind) {
    for (const DivePoint& point : kDivePoints) {
        if (point.kind != kind) {
            continue;
        }
        switch (glWindow->GetView()) {
            case 1:
            case 4:
                return Vec3{point.side * kDiveAcross, 0.0F, point.z};
            case 2:
                return Vec3{0.0F, -point.side * kDiveAside, point.z};
            case 3:
                return Vec3{0.0F, point.side * kDiveAside, point.z};
            default:
                return std::nullopt;
        }
    }
    return playerShip->GetPosition();
}

// Guns of the enemies that do not fire from their middle.
struct GunPlace {
    int32_t weapon = 0;
    int32_t type = 0;
    int count = 0;
    std::array<Vec3, EnemyShip::kMaxGuns> guns;
};
constexpr std::array<GunPlace, 3> kGunPlaces = {{
    {2, 2, 1, {{{0.5F, 0.0F, 0.0F}}}},
    {2, 500, 1, {{{6.5F, 0.0F, 0.0F}}}},
    {4,
     5,
     4,
     {{{-1.0F, -1.0F, 0.8F}, {-1.0F, 1.0F, 0.8F}, {1.0F, 1.0F, 0.8F}, {1.0F, -1.0F, 0.8F}}}},
}};

}  // namespace

int32_t EnemyShip::formationSway = 0;
int32_t EnemyShip::swayDirection = 1;
WeaponManager* EnemyShip::playerWeapons = nullptr;
WeaponManager* EnemyShip::enemyWeapons = nullptr;
ExplosionManager* EnemyShip::explosionManager = nullptr;
PowerupManager* EnemyShip::powerupManager = nullptr;

EnemyShip::EnemyShip(const EnemyOrders& orders, int32_t column) : orders(orders), column(column) {
    position = orders.path->GetStart();
    const EnemyType* kind = FindEnemyType(orders.type);
    if (kind == nullptr) {
        Log("ERROR: Failed To Load, no such ship\n");
        return;
    }
    scoreValue = kind->scoreValue;
    hitPoints = kind->hitPoints;
    shields = kind->shields;
    speed = kind->speed;
    weapon = kind->weapon;
    shieldColour = kind->shieldColour;
    if (!LoadModel(kind->model)) {
        Log(orders.type == 0 ? "ERROR: Failed To Load  %s\n" : "ERROR: Failed To Load %s\n",
            kind->model);
    }
}

void EnemyShip::SetManagers(WeaponManager* playerWeapons, WeaponManager* enemyWeapons,
                            ExplosionManager* explosions, PowerupManager* powerups) {
    EnemyShip::playerWeapons = playerWeapons;
    EnemyShip::enemyWeapons = enemyWeapons;
    explosionManager = explosions;
    powerupManager = powerups;
}

bool EnemyShip::Update() {
    float wantedHeading = heading;
    if (!finishedPath) {
        orders.path->Follow(position, speed, pathIndex, finishedPath, wantedHeading);
    }
    if (finishedPath) {
        if (diving) {
            DiveStep(wantedHeading);
        } else {
            wantedHeading = kFacingDown;
            HoldFormation();
        }
    }
    playerWeapons->CollideWith(*this);
    if (hitPoints <= 0) {
        Explode();
        return true;
    }
    FireAtRandom();
    TurnTowards(wantedHeading);
    return false;
}

void EnemyShip::HoldFormation() {
    MoveToFormation();
    if (orders.diveChance != 0 && platform::OneIn(orders.diveChance)) {
        diveIndex = 0;
        StartDive();
    }
}

void EnemyShip::FireAtRandom() {
    if (orders.fireChance > 0 && platform::OneIn(orders.fireChance)) {
        const bool nothingLeft = enemyWeapons->Fire(weapon, *this, {});
        if (!nothingLeft) {
            soundManager->PlayWeaponSound(weapon);
        }
    }
}

void EnemyShip::TurnTowards(float target) {
    const float current = heading;
    if (target < current) {
        target += 360.0F;
    }
    if (current + kTurnStep > target || current + 360.0F - kTurnStep < target) {
        heading = target;
    } else if (current + 180.0F > target) {
        heading = current + kTurnStep;
    } else {
        heading = current - kTurnStep;
    }
    if (heading < 0.0F) {
        heading += 360.0F;
    } else if (heading > 360.0F) {
        heading -= 360.0F;
    }
}

Vec3 EnemyShip::FormationSlot() const {
    const float middle = static_cast<float>(orders.rowLength) / 2.0F;
    const float across = (static_cast<float>(column) + 0.5F - middle) * kSlotSpacing +
                         static_cast<float>(formationSway) * kSwayStep;
    const float down = static_cast<float>(orders.row) * kSlotSpacing + kFirstRow;
    switch (glWindow->GetView()) {
        case 1:
            return {across, 0.0F, down - 24.0F};
        case 2:
        case 3:
            return {0.0F, across, down - 32.0F};
        case 4:
            return {across, 27.0F - (4.0F + down), -34.0F};
        default:
            return {};
    }
}

void EnemyShip::MoveToFormation() {
    const Vec3 slot = FormationSlot();
    const Vec3 offset = slot - position;
    const float distance = Length(offset);
    if (kFormationSpeed < distance) {
        position = position + offset * (kFormationSpeed / distance);
    } else {
        position = slot;
    }
}

void EnemyShip::UpdateFormationSway() {
    formationSway += swayDirection;
    if (formationSway <= -kSwayLimit) {
        swayDirection = 1;
    } else if (formationSway >= kSwayLimit) {
        swayDirection = -1;
    }
}

void EnemyShip::ResetFormationSway() {
    formationSway = 0;
    swayDirection = 1;
}

void EnemyShip::StartDive() {
    diving = true;
    const int32_t kind = orders.diveKinds[diveIndex];
    if (!IsDiveKind(kind)) {
        diveTolerance = 0.0F;
        return;
    }
    diveTolerance = kDiveTolerances[kind];
    diveTarget = DiveTarget(kind).value_or(diveTarget);
}

void EnemyShip::DiveStep(float& wantedHeading) {
    const Vec3 target =
        IsDiveKind(orders.diveKinds[diveIndex]) ? diveTarget : playerShip->GetPosition();
    const Vec3 offset = target - position;
    const float distance = Length(offset);
    if (diveTolerance + kDiveSpeed + kArrivalSlack < distance) {
        position = position + offset * (kDiveSpeed / distance);
        wantedHeading = Path::TravelHeading(offset.x, offset.z, wantedHeading);
        return;
    }
    ++diveIndex;
    if (diveIndex >= static_cast<int32_t>(orders.diveKinds.size())) {
        diving = false;
    } else {
        StartDive();
    }
}

void EnemyShip::Explode() {
    active = false;
    explosionManager->Spawn(position, scoreValue, true);
    if (orders.type >= kFirstBossType) {
        ExplodeBoss();
    }
    powerupManager->Drop(position);
    score += scoreValue;
}

// Six more explosions at the middles of the box's faces. Those within the plane in which the player
// flies in this view may leave powerups, where the player can reach them.
void EnemyShip::ExplodeBoss() {
    const Bounds reach = GetBounds();
    const int32_t view = glWindow->GetView();
    const auto burst = [this](Vec3 low, Vec3 high, bool drops) {
        explosionManager->Spawn(position + low, 0, true);
        explosionManager->Spawn(position + high, 0, true);
        if (drops) {
            powerupManager->Drop(position + low);
            powerupManager->Drop(position + high);
        }
    };
    burst({reach.minX, 0.0F, 0.0F}, {reach.maxX, 0.0F, 0.0F}, view == 1 || view == 4);
    burst({0.0F, reach.minY, 0.0F}, {0.0F, reach.maxY, 0.0F}, view != 1);
    burst({0.0F, 0.0F, reach.minZ}, {0.0F, 0.0F, reach.maxZ}, view != 4);
}

void EnemyShip::GetGunOffsets(int32_t gunWeapon, std::array<Vec3, kMaxGuns>& offsets) const {
    for (const GunPlace& place : kGunPlaces) {
        if (place.weapon == gunWeapon && place.type == orders.type) {
            std::copy_n(place.guns.begin(), place.count, offsets.begin());
            return;
        }
    }
    if (gunWeapon == 2 || gunWeapon == 4) {
        Log("ERROR: No gun X offset for specified enemy ship %d (weapon: %d)", orders.type,
            gunWeapon);
    } else {
        Log("ERROR: No gun X offset for specified enemy weapon: %d", gunWeapon);
    }
}
