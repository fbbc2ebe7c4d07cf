#include "player/PowerupKinds.h"

#include <algorithm>

// The drop rule makes the first entry of a range the likeliest, so the order is part of the game's
// balance.
const std::array<PowerupKind, kPowerupEntries> kPowerups = {{
    {kSingleLaser, "Objects\\PupSingleLaser.aob", 25, "Single Laser"},
    {kEngineUpgrade, "Objects\\PupEngineUpgrade.aob", 100, "Engine Upgrade"},
    {kExtraBullet, "Objects\\PupIncBullets.aob", 25, "Extra Bullet"},
    {kDoubleLaser, "Objects\\PupDoubleLaser.aob", 50, "Double Laser"},
    {kDumbfireMissile, "Objects\\pupDumbfireMissile.aob", 175, "Dumbfire Missile"},
    {kMissileSpeedup, "Objects\\pupMissileSpeedUp.aob", 190, "Missile Speedup"},
    {kTripleLaser, "Objects\\PupTripleLaser.aob", 100, "Triple Laser"},
    {kHomingMissile, "Objects\\PupHomingMissile.aob", 250, "Standard Missile"},
    {kWeakMagnet, "Objects\\pupMagnetWeak.aob", 1200, "Magnet"},
    {kQuadLaser, "Objects\\PupQuadLaser.aob", 200, "Quad Laser"},
    {kAutofire, "Objects\\PupAutofire.aob", 300, "Autofire"},
    {kShield, "Objects\\PupIncShields.aob", 500, "Shield Powerup"},
    {kCannon, "Objects\\PupCannon.aob", 250, "Cannon"},
    {kStrongMagnet, "Objects\\pupMagnetStrong.aob", 3200, "Magnet"},
    {kExtraLife, "Objects\\Pup1Up.aob", 1000, "Extra Life"},
    {kBulletCapacity, "Objects\\pupIncBulletCapacity.aob", 800, "Bullet Capacity Increase"},
    {kMissileCapacity, "Objects\\pupIncMissileCapacity.aob", 1000, "Missile Capacity Increase"},
    {kInvulnerability, "Objects\\PupInvulnerability.aob", 2000, "Invulnerability"},
    {kSucker1, "Objects\\PupSucker1.aob", 25000, nullptr},
    {kSucker2, "Objects\\PupSucker2.aob", 25000, nullptr},
    {kSucker3, "Objects\\PupSucker3.aob", 25000, nullptr},
    {kCoin1, "Objects\\MoneyCoin1.aob", -1, nullptr},
    {kCoin2, "Objects\\MoneyCoin2.aob", -1, nullptr},
    {kCoin3, "Objects\\MoneyCoin3.aob", -1, nullptr},
    {kGem1, "Objects\\GemPoints1.aob", 1000, nullptr},
    {kGem2, "Objects\\GemPoints2.aob", 5000, nullptr},
    {kGem3, "Objects\\GemPoints3.aob", 5000, nullptr},
}};

int FindPowerupEntry(int32_t code) {
    const auto* const found =
        std::find_if(kPowerups.begin(), kPowerups.end(),
                     [code](const PowerupKind& kind) { return kind.code == code; });
    return found == kPowerups.end() ? -1 : static_cast<int>(found - kPowerups.begin());
}
