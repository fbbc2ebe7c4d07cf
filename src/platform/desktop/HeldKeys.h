#pragma once

// Which keys the game has been told are down, key by key of the keyboard: a key that changes its
// meaning while it is held (Num Lock, another layout) is released as what it was pressed as, and of
// two keys with one meaning (both Shift keys) the release counts when the last one is let go.

#include <array>
#include <cstdint>

namespace platform {

class HeldKeys {
public:
    static constexpr int kPlaces = 512;  // scan codes

    // The key at `scancode` goes down or repeats. Returns what it was pressed as; 0 for nothing.
    int Press(int scancode, int virtualKey);
    // It is let go. Returns the virtual key to report as released; 0 for none: it was never
    // reported as down, or has been taken as released before.
    int Release(int scancode);
    // Takes one of the keys that are down, whichever; 0 when there is none left.
    int TakeAny();

private:
    bool IsHeld(int virtualKey) const;

    std::array<uint8_t, kPlaces> held = {};  // virtual key by scan code; 0 when up
};

}  // namespace platform
