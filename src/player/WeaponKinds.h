#pragma once

// The weapons and missiles, a row each: what a designer reads and changes.

#include <array>
#include <cstdint>

#include "core/Geometry.h"

constexpr int kWeaponKinds = 5;   // kinds 1 to 5
constexpr int kMissileKinds = 2;  // 0 homing, 1 dumbfire

struct WeaponKind {
    int32_t shotsPerVolley;
    float speed;     // units per frame along Z, away from the firing side
    int32_t damage;  // of one shot
    int32_t life;    // frames
    Colour light;    // that a shot casts
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

struct MissileKind {
    float speed;  // units per frame at speed level 0
    int32_t damage;
    int32_t life;  // frames
    Colour light;
};

constexpr std::array<MissileKind, kMissileKinds> kMissiles = {{
    {0.25F, 3, 300, {1.0F, 0.4F, 1.0F}},  // homing
    {0.3F, 5, 200, {1.0F, 0.4F, 1.0F}},   // dumbfire
}};

// Shots of one volley; 0 for a kind that does not exist.
constexpr int32_t ShotsPerVolley(int32_t kind) {
    return kind >= 1 && kind <= kWeaponKinds ? kWeapons[kind].shotsPerVolley : 0;
}
