#pragma once

// Which models the game draws, and how large each has to be for the numbers of the game: gun
// places, the distance of formation slots, the height of what the camera sees.

#include <string>
#include <vector>

#include "core/Geometry.h"

struct SizeClass {
    const char* name = "";
    float least = 0.0F;    // the longest of the three extents is at least this; world units
    Vec3 most = {};        // extents along X, Y and Z
    float maxEdge = 0.0F;  // of a quad: larger ones take light and fog from too few corners
};

struct ExpectedModel {
    std::string path;  // as the game asks for it
    const SizeClass* size;
};

// In the order in which the game loads them.
std::vector<ExpectedModel> ExpectedModels();
