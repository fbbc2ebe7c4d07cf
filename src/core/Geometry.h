#pragma once

// World coordinates. The play field is the X-Z plane: X runs to the right, Z down the screen
// towards the player, Y out of the field towards the camera of the top-down view. Lengths are
// world units, angles degrees, speeds units per frame; everything is single precision.

struct Vec3 {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;

    friend constexpr Vec3 operator+(Vec3 a, Vec3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend constexpr Vec3 operator-(Vec3 a, Vec3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend constexpr Vec3 operator*(Vec3 a, float f) { return {a.x * f, a.y * f, a.z * f}; }
    friend constexpr bool operator==(Vec3 a, Vec3 b) = default;
};

// An axis-aligned box relative to the position of what it belongs to.
struct Bounds {
    float minX = 0.0F;
    float maxX = 0.0F;
    float minY = 0.0F;
    float maxY = 0.0F;
    float minZ = 0.0F;
    float maxZ = 0.0F;
};

// Red, green, blue from 0 to 1.
struct Colour {
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;
};

// Euclidean length; the sum of squares is rounded to single precision before the root.
float Length(Vec3 v);

// Heading in degrees about Y of a ship that travels by (dx, dz) in the play field: 0 up the
// screen, 90 right, 180 down, 225 down and left, -45 up and left. With both 0 there is no
// direction and `current` comes back.
float HeadingTowards(float dx, float dz, float current);
