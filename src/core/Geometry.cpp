#include "core/Geometry.h"

#include <cmath>

namespace {

constexpr float kPi = 3.1415927F;

}  // namespace

float Length(Vec3 v) {
    const float squares = v.x * v.x + v.y * v.y + v.z * v.z;
    return std::sqrt(squares);
}

float HeadingTowards(float dx, float dz, float current) {
    if (dx == 0.0F && dz == 0.0F) {
        return current;
    }
    // With dz = 0 the quotient must be infinite with the sign that dividing by minus zero gives:
    // a ship flying straight to the right then turns to 90 and one to the left to 270.
    float heading = std::atan(dx / -dz) * 180.0F / kPi;
    if (dz >= 0.0F) {
        heading += 180.0F;
    }
    return heading;
}
