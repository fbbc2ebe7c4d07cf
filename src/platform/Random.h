#pragma once

// The game's one source of chance. A generator of 15 bits, since the game's fractions divide by
// 32767. A test or the autopilot seeds it and gets the same game again.

#include <cstdint>

namespace platform {

constexpr int kRandomMax = 32767;

void SeedRandom(uint32_t seed);
// 0 to kRandomMax.
int Random();
// Random() / 32767: a fraction from 0 to 1, both included.
float RandomFraction();
// True once in n on average; n above 0.
inline bool OneIn(int n) {
    return Random() % n == 0;
}

}  // namespace platform
