#include "player/Collision.h"

namespace {

struct Interval {
    float low;
    float high;
};

bool IsWithin(float value, Interval interval) {
    return interval.low < value && value < interval.high;
}

// One of the four ends lies between the other interval's ends.
bool Overlap(Interval a, Interval b) {
    return IsWithin(a.high, b) || IsWithin(a.low, b) || IsWithin(b.high, a) || IsWithin(b.low, a);
}

}  // namespace

bool Collision::PointInBox(Vec3 boxPosition, Vec3 point, const Bounds& box) {
    return PlacedBox(boxPosition, box).Contains(point);
}

bool Collision::BoxesOverlap(Vec3 a, Vec3 b, const Bounds& boxA, const Bounds& boxB) {
    return Overlap({a.x + boxA.minX, a.x + boxA.maxX}, {b.x + boxB.minX, b.x + boxB.maxX}) &&
           Overlap({a.y + boxA.minY, a.y + boxA.maxY}, {b.y + boxB.minY, b.y + boxB.maxY}) &&
           Overlap({a.z + boxA.minZ, a.z + boxA.maxZ}, {b.z + boxB.minZ, b.z + boxB.maxZ});
}
