#pragma once

// All shots of one side: launches volleys, moves and draws the shots, tests them against ships and
// takes them back.

#include <array>
#include <cstdint>

#include "core/Pool.h"
#include "player/Shot.h"
#include "player/WeaponKinds.h"

class Ship;

// How much the firing ship of the player's side may have in flight.
struct FireAllowance {
    int32_t bullets = 0;  // shots other than missiles
    int32_t homing = 0;
    int32_t dumbfire = 0;
    int32_t missileSpeed = 0;  // speed level, 0 to 10
};

class WeaponManager {
public:
    static constexpr int kPlayerShots = 100;
    static constexpr int kEnemyShots = 1000;

    explicit WeaponManager(bool playerSide);
    bool Init();  // true = failure: never

    // Loads the shot and missile models (GL context needed). True = failure: logged.
    static bool LoadModels();
    // Who finds the missiles' targets, and who shows them bursting; the shots get both as well.
    static void SetLinks(LevelManager* levelManager, ExplosionManager* explosions);
    static uint32_t MissileModel(int32_t missileKind);

    // Launches one volley of weapon `kind` and, on the player's side, missiles. Returns true when
    // NOTHING left the ship. The allowance matters only on the player's side.
    bool Fire(int32_t kind, const Ship& ship, const FireAllowance& allowance);
    void UpdateAll();
    void DrawAll();
    static void ResetLights() { Shot::ResetLights(); }
    // Every shot in flight against the target: hits damage it and are taken back. True when at
    // least one hit.
    bool CollideWith(GameObject& target);
    // Takes every shot back for a new game and zeroes the statistics. True = failure: one has got
    // lost.
    bool Clear();
    // The enemies of the level are about to be freed: no missile may keep one as its target.
    void ForgetTargets();

    int32_t ShotsHit() const { return shotsHit; }
    int32_t ShotsFired() const { return shotsFired; }
    int LiveCount() const { return shots.LiveCount(); }
    int FreeCount() const { return shots.FreeCount(); }
    const Shot& GetShot(int index) const { return shots.Live(index); }

private:
    using Volley = std::array<Shot*, kMaxVolley>;

    Shot& TakeShot();
    void FireVolley(int32_t kind, const Ship& ship);
    void PlaceDouble(const Volley& volley, const Ship& ship) const;
    void SpreadTriple(const Volley& volley) const;
    void PlaceQuad(const Volley& volley, const Ship& ship) const;
    bool FireMissile(int32_t missileKind, const Ship& ship, const FireAllowance& allowance);
    int BulletsInFlight() const { return LiveCount() - (liveHoming + liveDumbfire); }
    void NoteRemoval(const Shot& shot);
    void Remove(int index);

    bool playerSide;
    Pool<Shot> shots;
    int32_t liveHoming = 0;  // missiles in flight
    int32_t liveDumbfire = 0;
    int32_t shotsHit = 0;  // since the last Clear
    int32_t shotsFired = 0;
};
