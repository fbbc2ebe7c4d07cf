#pragma once

// A player in the shop: turns the ring to what it wants, buys while it can, and leaves.

#include <cstdint>

class Shopper {
public:
    // With a plan it buys what it needs most, without one the dearest thing that it can.
    explicit Shopper(bool hasPlan) : hasPlan(hasPlan) {}

    // Sets the keys for the coming frame in the shop.
    void PressKeys();

private:
    int32_t WantedPosition() const;
    bool hasPlan;
    bool pressed = false;  // the last frame pressed a key: let it go first
};
