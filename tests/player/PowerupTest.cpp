// Drops, falling, magnets, collection and effects.

#include <cmath>
#include <map>

#include "platform/Random.h"
#include "player/PlayerFixture.h"

namespace {

class PowerupTest : public PlayerFixture {
protected:
    // Drops until one of that kind lies at `at`; what else drops is thrown away.
    static const Powerup& DropOne(int32_t code, Vec3 at) {
        for (;;) {
            Powerups().Clear();
            if (!Powerups().Drop(at) && Powerups().GetPowerup(0).GetKind() == code) {
                return Powerups().GetPowerup(0);
            }
        }
    }
    static void Collect(int32_t code) {
        DropOne(code, playerShip->GetPosition());
        Powerups().Collect(*playerShip);
        EXPECT_EQ(Powerups().LiveCount(), 0) << code;
    }
};

// 200 000 drops; each share must lie within five standard deviations.
TEST_F(PowerupTest, DropsComeWithTheirChances) {
    constexpr int kDrops = 200000;
    std::map<int32_t, int> counts;
    for (int i = 0; i < kDrops; ++i) {
        if (i % 1000 == 0) {
            platform::SeedRandom(i);
        }
        Powerups().Clear();
        counts[Powerups().Drop({}) ? 0 : Powerups().GetPowerup(0).GetKind()]++;
    }
    const auto expectShare = [&](const char* what, int count, double chance) {
        const double deviation = std::sqrt(kDrops * chance * (1.0 - chance));
        EXPECT_NEAR(count, kDrops * chance, 5.0 * deviation) << what;
    };
    const auto expectRange = [&](const char* what, int first, int entries, double chance) {
        for (int i = 0; i < entries; ++i, chance *= 0.8) {
            expectShare(what, counts[kPowerups[first + i].code], chance * 0.2);
        }
    };
    expectRange("upgrade", 0, kShopEntries, 0.1);
    expectRange("sucker", kSuckerEntry, 3, 0.1);
    expectRange("coin", kCoinEntry, 3, 0.3);
    expectRange("gem", kGemEntry, 3, 0.1);
    expectShare("nothing", counts[0], 0.4 + 0.5 * 0.512 + 0.1 * std::pow(0.8, 18));
}

TEST_F(PowerupTest, TwentyAreInPlayAtMost) {
    while (Powerups().LiveCount() < PowerupManager::kCapacity) {
        Powerups().Drop({});
    }
    for (int i = 0; i < 200; ++i) {
        ASSERT_TRUE(Powerups().Drop({})) << "a further drop must be lost";
    }
    Powerups().Clear();
    EXPECT_EQ(Powerups().LiveCount(), 0);
    EXPECT_FALSE(Logged("PowerUp lost"));
}

TEST_F(PowerupTest, DriftsDownAndExpiresAfterThreeHundredFrames) {
    const Powerup& powerup = DropOne(kCoin1, {20, 0, 0});
    for (int i = 0; i < 299; ++i) {
        Powerups().UpdateAll(i % 2 == 0 ? playerShip : nullptr);
    }
    ASSERT_EQ(Powerups().LiveCount(), 1);
    EXPECT_TRUE(Near(powerup.GetPosition(), {20, 0, 59.8F}));
    Powerups().UpdateAll(nullptr);
    EXPECT_EQ(Powerups().LiveCount(), 0);
}

TEST_F(PowerupTest, WeakMagnetPullsEverythingAndTheStrongOneWhatIsWanted) {
    Hold(Action::Fire2);
    playerShip->SetWeapon(kWeaponDouble);
    const auto isPulled = [&](int32_t code) {
        const Powerup& powerup = DropOne(code, {20, 0, 10});
        playerShip->Update();
        Powerups().UpdateAll(playerShip);
        return powerup.GetPosition().x < 20.0F;
    };
    EXPECT_FALSE(isPulled(kCoin1)) << "no magnet is fitted";
    playerShip->SetMagnet(false);
    EXPECT_TRUE(isPulled(kCoin1));
    EXPECT_TRUE(isPulled(kSucker1));
    EXPECT_TRUE(Near(Powerups().GetPowerup(0).GetPosition(), {19.5F, 0, 10.195F}))
        << "a fortieth of the way after the fall";
    playerShip->SetMagnet(true);
    EXPECT_TRUE(isPulled(kCoin1));
    EXPECT_TRUE(isPulled(kTripleLaser));
    EXPECT_TRUE(isPulled(kStrongMagnet));
    EXPECT_FALSE(isPulled(kDoubleLaser));
    EXPECT_FALSE(isPulled(kSingleLaser));
    EXPECT_FALSE(isPulled(kSucker2));
    EXPECT_FALSE(isPulled(kWeakMagnet));
    Release(Action::Fire2);
    EXPECT_FALSE(isPulled(kCoin1)) << "only while Fire2 is held";
}

TEST_F(PowerupTest, CollectingAwardsTheValueAndAppliesTheEffect) {
    DropOne(kGem3, playerShip->GetPosition() + Vec3{0, 0, 3.5F});
    Powerups().Collect(*playerShip);
    EXPECT_EQ(Powerups().LiveCount(), 1) << "beside the hull";
    playerShip->AddShield();
    Powerups().Collect(*playerShip);
    EXPECT_EQ(Powerups().LiveCount(), 0) << "within the shield";
    EXPECT_EQ(score, 30000);
    Collect(kGem1);
    EXPECT_EQ(score, 32000);
    Collect(kCoin3);
    Collect(kCoin2);
    EXPECT_EQ(money, 150);
    EXPECT_EQ(score, 32000) << "coins score nothing";

    Collect(kTripleLaser);
    EXPECT_EQ(playerShip->GetWeapon(), kWeaponTriple);
    EXPECT_EQ(playerShip->GetBullets(), 6) << "raised to two volleys";
    Collect(kSingleLaser);
    EXPECT_EQ(playerShip->GetWeapon(), kWeaponSingle) << "a worse gun replaces the better one too";
    score = 0;
    while (playerShip->GetBulletCapacity() < PlayerShip::kMaxBulletCapacity) {
        playerShip->AddBulletCapacity();
    }
    Collect(kBulletCapacity);
    EXPECT_EQ(score, 800) << "a useless one scores all the same";
    Collect(kSucker1);
    EXPECT_EQ(score, 25800);
}

TEST_F(PowerupTest, IsValidWhileItWouldChangeSomething) {
    // How to make the player's ship one that the kind is useless for.
    struct Case {
        int32_t code;
        int timesUseful;  // from a new game's ship on
    };
    const Case cases[] = {{kDoubleLaser, 1},     {kHomingMissile, 2},   {kDumbfireMissile, 2},
                          {kMissileSpeedup, 10}, {kExtraBullet, 9},     {kEngineUpgrade, 4},
                          {kShield, 5},          {kAutofire, 1},        {kExtraLife, 3},
                          {kInvulnerability, 1}, {kMissileCapacity, 8}, {kBulletCapacity, 28},
                          {kWeakMagnet, 1},      {kStrongMagnet, 1},    {kSingleLaser, 0}};
    for (const Case& each : cases) {
        playerShip->ResetPlayer();
        int useful = 0;
        while (useful < 100 && PowerupManager::IsValid(*playerShip, each.code)) {
            PowerupManager::Apply(*playerShip, each.code, false);
            ++useful;
        }
        EXPECT_EQ(useful, each.timesUseful) << each.code;
    }
    EXPECT_EQ(score, 0) << "bought ones score nothing";
    EXPECT_TRUE(log.empty()) << log;
    EXPECT_TRUE(PowerupManager::IsValid(*playerShip, 999));
    PowerupManager::Apply(*playerShip, 998, true);
    EXPECT_EQ(log,
              "ERROR: Oh Dear, lost a power up when deciding if valid! - 999\n"
              "ERROR: Oh Dear, lost a power up! - 998\n");
}

}  // namespace
