#pragma once

// What the camera shows: the eye stands 50 units from the middle of the field and sees 60 degrees
// upwards.

#include <cmath>
#include <cstdint>

#include "core/Geometry.h"

constexpr float kEye = 50.0F;
constexpr float kHalfAngle = 0.57735F;  // tangent of 30 degrees
constexpr float kAspect = 4.0F / 3.0F;  // the narrowest window

// A place of the field in the picture of a view: to the right, up, and away from the eye.
struct PicturePlace {
    float right;
    float up;
    float depth;
};

inline PicturePlace See(int32_t view, Vec3 at) {
    switch (view) {
        case 1:
            return {at.x, -at.z, kEye - at.y};
        case 2:
            return {at.z, at.y, kEye + at.x};
        case 3:
            return {-at.z, at.y, kEye - at.x};
        default:
            return {at.x, at.y, kEye - at.z};
    }
}

inline bool IsInPicture(int32_t view, Vec3 at) {
    const PicturePlace seen = See(view, at);
    const float half = seen.depth * kHalfAngle;
    return seen.depth > 0.0F && std::abs(seen.up) < half && std::abs(seen.right) < half * kAspect;
}
