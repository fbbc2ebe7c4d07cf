#include "platform/Random.h"

namespace platform {

namespace {

// A permuted congruential generator: 64 bits of state, of which the upper bits, shuffled by the
// uppermost, come out. Its low bits are as good as its high ones, which Random() % n relies on.
constexpr uint64_t kMultiplier = 6364136223846793005ULL;
constexpr uint64_t kIncrement = 1442695040888963407ULL;

uint64_t state = kIncrement;

uint32_t Next() {
    const uint64_t old = state;
    state = old * kMultiplier + kIncrement;
    const auto mixed = static_cast<uint32_t>(((old >> 18U) ^ old) >> 27U);
    const auto turn = static_cast<uint32_t>(old >> 59U);
    return (mixed >> turn) | (mixed << ((32U - turn) & 31U));
}

}  // namespace

void SeedRandom(uint32_t seed) {
    state = 0;
    Next();
    state += seed;
    Next();
}

int Random() {
    return static_cast<int>(Next() >> 17U);
}

float RandomFraction() {
    return static_cast<float>(Random() / static_cast<double>(kRandomMax));
}

}  // namespace platform
