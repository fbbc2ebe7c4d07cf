#pragma once

#include "core/Geometry.h"

// The two hit tests of the whole game. Boxes are relative to the positions that they come with.
class Collision {
public:
    // Bounds inclusive: a point on a face is inside.
    static bool PointInBox(Vec3 boxPosition, Vec3 point, const Bounds& box);
    // Strict: boxes that only touch do not overlap, nor do two with exactly the same ends.
    static bool BoxesOverlap(Vec3 a, Vec3 b, const Bounds& boxA, const Bounds& boxB);
};
