#pragma once

// The weapons and missiles, a row each: what a designer reads and changes.

#include <array>
#include <cstdint>

#include "core/Geometry.h"

constexpr int kWeaponKinds = 5;   // kinds 1 to 5
constexpr int kMissileKinds = 2;  // 0 homing, 1 dumbfire
constexpr int kMaxVolley = 4;     // shots of the largest volley

enum WeaponId : int32_t {
    kWeaponSingle = 1,
    kWeaponDouble = 2,
    kWeaponTriple = 3,
    kWeaponQuad = 4,
    kWeaponCannon = 5,
};

enum MissileId : int32_t {
    kMissileHoming = 0,
    kMissileDumbfire = 1,
};

struct WeaponKind {
    int32_t shotsPerVolley = 0;
    float speed = 0.0F;  // units per frame along Z, away from the firing side
    int32_t damage = 0;  // of one shot
    int32_t life = 0;    // frames
    Colour light;        // that a shot casts
};

// Row 0 is no weapon.
constexpr std::array<WeaponKind, kWeaponKinds + 1> kWeapons = {{
    {0, 0.0F, 0, 0, {}},
    {1, 0.5F, 1, 100, {1.0F, 0.4F, 0.2F}},  // single laser
    {2, 0.6F, 1, 80, {0.0F, 1.0F, 0.4F}},   // double laser
    {3, 0.5F, 1, 90, {0.0F, 0.2F, 1.0F}},   // triple laser
    {4, 0.5F, 2, 80, {1.0F, 0.4F, 1.0F}},   // quad laser
    {1, 2.0F, 1, 30, {0.0F, 0.0F, 0.0F}},   // cannon: its shells give no light
}};

// The player's barrels. Seen from above or from behind they lie side by side along X; in the two
// side views, where the player steers up and down, the same guns point along Y. Enemies bring
// their own gun positions.
constexpr Vec3 kDoubleBarrel = {2.75F, 0.0F, 0.0F};  // to both sides
constexpr Vec3 kDoubleBarrelSide = {0.0F, 0.6F, 0.0F};
constexpr std::array<Vec3, kMaxVolley> kQuadBarrels = {{
    {-2.7F, 0.0F, -2.0F},
    {-1.0F, 0.0F, -3.2F},
    {1.0F, 0.0F, -3.2F},
    {2.7F, 0.0F, -2.0F},
}};
constexpr std::array<Vec3, kMaxVolley> kQuadBarrelsSide = {{
    {0.0F, 0.3F, 0.0F},
    {0.0F, 0.3F, 0.0F},
    {0.0F, -0.3F, 0.0F},
    {0.0F, -0.3F, 0.0F},
}};
constexpr float kOuterSpeed = 0.41666666F;  // along Z, of shots that spread to the sides
constexpr float kTripleSpread = 0.2F;       // sideways, of the triple laser's outer shots
constexpr float kQuadSpread = 0.1F;  // along Y, of the quad laser's outer shots in side views

struct MissileKind {
    float speed = 0.0F;  // units per frame at speed level 0
    int32_t damage = 0;
    int32_t life = 0;  // frames
    Colour light;
};

constexpr std::array<MissileKind, kMissileKinds> kMissiles = {{
    {0.25F, 3, 300, {1.0F, 0.4F, 1.0F}},  // homing
    {0.3F, 5, 200, {1.0F, 0.4F, 1.0F}},   // dumbfire
}};
constexpr float kMissileSpeedStep = 0.2F;  // a speed level's share of the speed

// Shots of one volley; 0 for a kind that does not exist.
constexpr int32_t ShotsPerVolley(int32_t kind) {
    return kind >= 1 && kind <= kWeaponKinds ? kWeapons[kind].shotsPerVolley : 0;
}
