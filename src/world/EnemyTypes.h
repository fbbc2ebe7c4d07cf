#pragma once

// The enemies, a row each: what a designer reads and changes.

#include <array>
#include <cstdint>

struct EnemyType {
    int32_t type;  // as level files name it
    const char* model;
    int32_t scoreValue;
    int32_t hitPoints;
    int32_t shields;
    float speed;     // units per frame along the flight path
    int32_t weapon;  // weapon kind
    std::array<float, 4> shieldColour;
};

constexpr int32_t kFirstBossType = 500;  // types from here on are bosses

// Null for an unknown type.
const EnemyType* FindEnemyType(int32_t type);
