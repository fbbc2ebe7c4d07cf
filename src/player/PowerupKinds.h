#pragma once

// The one table of powerups, in the order that the drop rule, the pickup sounds and the shop use.

#include <array>
#include <cstdint>

enum PowerupCode : int32_t {
    kSingleLaser = 101,
    kDoubleLaser = 102,
    kTripleLaser = 103,
    kQuadLaser = 104,
    kCannon = 105,
    kHomingMissile = 141,
    kDumbfireMissile = 142,
    kMissileSpeedup = 143,
    kExtraBullet = 151,
    kEngineUpgrade = 201,
    kShield = 251,
    kAutofire = 301,
    kExtraLife = 302,
    kInvulnerability = 303,
    kMissileCapacity = 341,
    kBulletCapacity = 342,
    kSucker1 = 351,
    kSucker2 = 352,
    kSucker3 = 353,
    kWeakMagnet = 370,
    kStrongMagnet = 371,
    kCoin1 = 401,
    kCoin2 = 402,
    kCoin3 = 403,
    kGem1 = 404,
    kGem2 = 405,
    kGem3 = 406,
};

struct PowerupKind {
    int32_t code;
    const char* model;
    int32_t value;     // score when collected and, for shop entries, the price; -1 = none
    const char* name;  // the shop's label; null for what is never sold
};

constexpr int kPowerupEntries = 27;
constexpr int kShopEntries = 18;  // entries 0 to 17 are sold
constexpr int kSuckerEntry = 18;  // first of three
constexpr int kCoinEntry = 21;    // first of three
constexpr int kGemEntry = 24;     // first of three

extern const std::array<PowerupKind, kPowerupEntries> kPowerups;

// Entry of a code; -1 when there is none.
int FindPowerupEntry(int32_t code);
