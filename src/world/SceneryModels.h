#pragma once

// The scenery, a row for each kind, and the kinds that each layer draws from.

#include <array>
#include <cstdint>

struct SceneryModel {
    const char* model;
    int32_t hitPoints;  // -1 = indestructible, 0 = destroyed by the first touch
};

constexpr std::array<SceneryModel, 12> kSceneryModels = {{
    {"Objects\\Asteroid1.aob", 25},
    {"Objects\\Asteroid2.aob", 12},
    {"Objects\\Asteroid3.aob", 3},
    {"Objects\\Planet1.aob", 20},
    {"Objects\\SpaceStn1.aob", 15},
    {"Objects\\nebula1.aob", -1},
    {"Objects\\nebula2.aob", -1},
    {"Objects\\nebula3.aob", -1},
    {"Objects\\nebula4.aob", 12},
    {"Objects\\satellite.aob", 30},
    {"Objects\\FreighterDebris.aob", 0},
    {"Objects\\Planet2.aob", 0},
}};

enum class SceneryLayer : int32_t {
    Foreground = 0,
    Intermed = 1,
    Background = 2
};

constexpr std::array<std::array<int32_t, 4>, 3> kSceneryKinds = {{
    {10, 0, 1, 2},
    {11, 9, 3, 4},
    {5, 6, 7, 8},
}};
