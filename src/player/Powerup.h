#pragma once

// A spinning item that drifts down the field, or stands in the shop.

#include <cstdint>

#include "core/Geometry.h"

class PlayerShip;
class Ship;

// What pulls a powerup in this frame.
struct MagnetPull {
    bool on = false;
    bool selective = false;  // the strong magnet: pulls only what is wanted
    Vec3 towards;
};

class Powerup {
public:
    static constexpr float kLife = 300.0F;  // frames in play

    explicit Powerup(bool stationary) : stationary(stationary) {}

    void Place(Vec3 at, uint32_t displayList, int32_t code);
    // One frame. True when its time is over. `player` is asked what is wanted; may be null without
    // a pull.
    bool Update(const MagnetPull& pull, const PlayerShip* player);
    void Draw() const;
    bool HitTest(const Ship& ship) const;

    int32_t GetKind() const { return kind; }
    Vec3 GetPosition() const { return position; }

    // The camera view decides the axis of the spin.
    static void SetView(int32_t newView);

private:
    bool stationary;  // neither falls nor expires
    Vec3 position;
    float spin = 0.0F;   // degrees
    float life = 0.0F;   // frames left
    uint32_t model = 0;  // display list
    int32_t kind = 0;    // its code
};
