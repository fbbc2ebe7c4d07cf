#pragma once

// An enemy: flies in along its group's path, takes up its slot in the formation, now and then dives
// at the player or at fixed points and comes back, fires at random, and explodes into points and
// perhaps a powerup.

#include <array>
#include <vector>

#include "world/Path.h"
#include "world/Ship.h"

class ExplosionManager;
class PowerupManager;
class WeaponManager;

// What a group hands to each of its ships.
struct EnemyOrders {
    int32_t type = 0;
    const Path* path = nullptr;  // of the level; outlives the ship
    int32_t row = 0;             // formation row: index of the group in its wave
    int32_t rowLength = 1;       // ships in the row
    int32_t fireChance = 0;      // fires in a frame with a chance of one in so many; 0 = never
    int32_t diveChance = 0;      // dives out of the formation likewise
    // Waypoints of a dive, in order; at least one. 0 and 5: where the player was when the ship set
    // out for it; 1 to 4: fixed points at either side; any other: the player, wherever it flies.
    std::vector<int32_t> diveKinds;
};

class EnemyShip : public Ship {
public:
    static constexpr int kMaxGuns = 4;
    static constexpr float kFormationSpeed = 0.45F;  // units per frame towards the slot
    static constexpr float kDiveSpeed = 0.5F;
    static constexpr float kTurnStep = 9.0F;  // degrees per frame
    static constexpr int kSwayLimit = 75;     // sway steps from the middle to either side

    // `orders` belongs to the group and outlives the ship.
    EnemyShip(const EnemyOrders& orders, int32_t column);

    bool Update() override;
    float GetRotationZ() const override { return 0.0F; }
    float GetRotationX() const override { return 0.0F; }
    float GetRotationY() const override { return heading; }

    bool HasFinishedPath() const { return finishedPath; }
    bool IsDiving() const { return diving; }
    int32_t GetType() const { return orders.type; }
    // Gun positions relative to the ship for weapon kinds 2 (one offset, used to both sides) and 4
    // (four). A ship without such guns logs an error and leaves `offsets` alone.
    void GetGunOffsets(int32_t weapon, std::array<Vec3, kMaxGuns>& offsets) const;

    static void SetManagers(WeaponManager* playerWeapons, WeaponManager* enemyWeapons,
                            ExplosionManager* explosions, PowerupManager* powerups);
    // The whole formation drifts from side to side, one step a frame.
    static void UpdateFormationSway();
    static int32_t GetFormationSway() { return formationSway; }
    // The game never does this; tools and tests that want the same flight again do.
    static void ResetFormationSway();

private:
    void HoldFormation();
    void TurnTowards(float target);
    Vec3 FormationSlot() const;
    void MoveToFormation();
    void StartDive();
    void DiveStep(float& wantedHeading);
    void FireAtRandom();
    void Explode();
    void ExplodeBoss();

    const EnemyOrders& orders;
    int32_t column;  // place in the row, from 0
    int32_t scoreValue = 0;
    float speed = 0.0F;    // units per frame along the path
    float heading = 0.0F;  // degrees about Y
    int pathIndex = 1;     // path point that it flies towards
    bool finishedPath = false;
    int32_t diveIndex = 0;  // entry of the dive kinds being flown
    bool diving = false;
    float diveTolerance = 0.0F;  // extra arrival distance of the current dive kind
    Vec3 diveTarget;

    // Shared by all enemies and never reset, so the sway carries on from wave to wave.
    static int32_t formationSway;
    static int32_t swayDirection;
    static WeaponManager* playerWeapons;
    static WeaponManager* enemyWeapons;
    static ExplosionManager* explosionManager;
    static PowerupManager* powerupManager;
};
