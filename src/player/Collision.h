#pragma once

#include "core/Geometry.h"

// A box at its place in the world: what a loop over many points computes once.
class PlacedBox {
public:
    PlacedBox(Vec3 position, const Bounds& box)
        : low{position.x + box.minX, position.y + box.minY, position.z + box.minZ},
          high{position.x + box.maxX, position.y + box.maxY, position.z + box.maxZ} {}

    // Z first: most shots are still far up or down the field.
    bool Contains(Vec3 point) const {
        return low.z <= point.z && point.z <= high.z && low.x <= point.x && point.x <= high.x &&
               low.y <= point.y && point.y <= high.y;
    }

private:
    Vec3 low;
    Vec3 high;
};

// The two hit tests of the whole game. Boxes are relative to the positions that they come with.
class Collision {
public:
    // Bounds inclusive: a point on a face is inside.
    static bool PointInBox(Vec3 boxPosition, Vec3 point, const Bounds& box);
    // Strict: boxes that only touch do not overlap, nor do two with exactly the same ends.
    static bool BoxesOverlap(Vec3 a, Vec3 b, const Bounds& boxA, const Bounds& boxB);
};
