#pragma once

#include <array>
#include <cstdint>

#include "core/Geometry.h"

// A hundred coloured points that fall through the picture at different speeds.
class StarField {
public:
    static constexpr int kStars = 100;

    void ResetAll();  // all start from one line and spread out by their speeds
    void Update();
    void Draw() const;

private:
    struct Star {
        Vec3 position;
        Colour colour;
        float speed = 0.0F;  // units per frame along Z
    };
    static void Respawn(Star& star);

    std::array<Star, kStars> stars;
};
