// Steering, firing, lives, upgrades and suckers.

#include "core/Joystick.h"
#include "platform/null/NullMedia.h"
#include "player/PlayerFixture.h"

namespace {

constexpr Vec3 kStart = {0.0F, 0.0F, 10.0F};

class PlayerShipTest : public PlayerFixture {};

TEST_F(PlayerShipTest, SteersInThePlaneOfTheViewWithinItsLimits) {
    struct Case {
        int32_t view = 0;
        Vec3 right;  // direction of steering right
        Vec3 up;
        float roll = 0.0F;   // steering right
        float pitch = 0.0F;  // steering up
        Vec3 farRightUp;
        Vec3 farLeftDown;
    };
    const Case cases[] = {
        {1, {1, 0, 0}, {0, 0, -1}, 7.5F, 7.5F, {35, 0, -26}, {-35, 0, 26}},
        {2, {0, 0, 1}, {0, 1, 0}, 0, -7.5F, {0, 27, 34}, {0, -27, -34}},
        {3, {0, 0, -1}, {0, 1, 0}, 0, -7.5F, {0, 27, -34}, {0, -27, 34}},
        {4, {1, 0, 0}, {0, 1, 0}, 7.5F, -7.5F, {35, 27, 10}, {-35, -27, 10}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE("view " + std::to_string(each.view));
        glWindow->SetView(each.view);
        playerShip->ResetPosition();
        Hold(Action::Right);
        Hold(Action::Up);
        playerShip->Update();
        EXPECT_TRUE(Near(playerShip->GetPosition(), kStart + (each.right + each.up) * 0.15F));
        EXPECT_NEAR(playerShip->GetRotationZ(), each.roll, 1e-4);
        EXPECT_NEAR(playerShip->GetRotationX(), each.pitch, 1e-4);
        UpdatePlayer(400);
        EXPECT_TRUE(Near(playerShip->GetPosition(), each.farRightUp));
        Release(Action::Right);
        Release(Action::Up);
        Hold(Action::Left);
        Hold(Action::Down);
        UpdatePlayer(800);
        EXPECT_TRUE(Near(playerShip->GetPosition(), each.farLeftDown));
        Release(Action::Left);
        Release(Action::Down);
    }
}

TEST_F(PlayerShipTest, OfOppositeKeysDownAndRightWinAndTheEngineGivesTheSpeed) {
    for (int i = 0; i < 6; ++i) {
        playerShip->UpgradeEngine();
    }
    EXPECT_EQ(playerShip->GetEngineLevel(), 4);
    for (const Action action : {Action::Up, Action::Down, Action::Left, Action::Right}) {
        Hold(action);
    }
    playerShip->Update();
    EXPECT_TRUE(Near(playerShip->GetPosition(), kStart + Vec3{0.44F, 0, 0.44F}));
}

TEST_F(PlayerShipTest, ControllerSteersFiresAndPullsAndKeysOverrideIt) {
    platform::null::NullMedia& media = platform::null::Media();
    media.controllerAttached = true;
    Joystick stick;
    bool found = false;
    ASSERT_EQ(stick.Init(found), 0);
    joystick = &stick;
    media.controller.lX = 1000;
    media.controller.lY = -500;  // half up
    media.controller.buttons[0] = true;
    media.controller.buttons[1] = true;
    playerShip->SetMagnet(true);
    playerShip->Update();
    EXPECT_TRUE(Near(playerShip->GetPosition(), kStart + Vec3{0.15F, 0, -0.075F}));
    EXPECT_EQ(Weapons().LiveCount(), 1);
    bool strong = false;
    EXPECT_TRUE(playerShip->IsMagnetActive(strong));
    EXPECT_TRUE(strong);

    Hold(Action::Left);
    playerShip->Update();
    EXPECT_TRUE(Near(playerShip->GetPosition(), kStart + Vec3{0, 0, -0.15F}));
    Release(Action::Left);
    media.controllerAttached = false;  // pulled out
    playerShip->Update();
    EXPECT_TRUE(Near(playerShip->GetPosition(), kStart + Vec3{0, 0, -0.15F}));
    EXPECT_FALSE(playerShip->IsMagnetActive(strong));
    joystick = nullptr;
}

TEST_F(PlayerShipTest, FiresOneVolleyForEachPressUnlessItHasAutofire) {
    for (int i = 0; i < 10; ++i) {
        playerShip->AddBullet();
    }
    Hold(Action::Fire1);
    UpdatePlayer(20);
    EXPECT_EQ(Weapons().ShotsFired(), 1) << "a held key fires once";
    Release(Action::Fire1);
    playerShip->Update();
    Hold(Action::Fire1);
    playerShip->Update();
    EXPECT_EQ(Weapons().ShotsFired(), 2);
    Release(Action::Fire1);
    playerShip->Update();
    Hold(Action::Fire1);
    UpdatePlayer(20);
    EXPECT_EQ(Weapons().ShotsFired(), 2) << "a press during the cooldown is used up";

    playerShip->SetAutofire(true);
    UpdatePlayer(1 + 3 * 7);
    EXPECT_EQ(Weapons().ShotsFired(), 6) << "with autofire a volley leaves every 7 frames";
    UpdatePlayer(90);
    EXPECT_EQ(Weapons().ShotsFired(), 12) << "twelve bullets are allowed in flight";
    Weapons().Clear();
    playerShip->Update();
    EXPECT_EQ(Weapons().ShotsFired(), 1) << "a volley that was refused starts no cooldown";
}

TEST_F(PlayerShipTest, HitBeyondTheShieldsCostsOneLifeAndTheShipComesBack) {
    for (int i = 0; i < 3; ++i) {
        playerShip->AddShield();
    }
    playerShip->TakeDamage(2);
    playerShip->Update();
    EXPECT_EQ(playerShip->GetShields(), 1);
    EXPECT_EQ(playerShip->GetHitPoints(), 2);

    Hold(Action::Right);
    UpdatePlayer(10);
    playerShip->TakeDamage(5);
    EXPECT_EQ(playerShip->GetHitPoints(), 2) << "the life goes in the next frame";
    EXPECT_FALSE(playerShip->Update());
    EXPECT_EQ(playerShip->GetHitPoints(), 1);
    EXPECT_EQ(playerShip->GetShields(), 0);
    EXPECT_EQ(levelManager->GetExplosions().ActiveCount(), 1);
    ExpectPlays("EXPLOSION3", 1);
    UpdatePlayer(124);
    EXPECT_TRUE(playerShip->IsRespawning());
    EXPECT_EQ(playerShip->GetPosition(), kStart) << "it cannot be steered meanwhile";
    playerShip->Update();
    EXPECT_FALSE(playerShip->IsRespawning());
    EXPECT_EQ(playerShip->GetInvulnerableTime(), 350);
    UpdatePlayer(349);
    EXPECT_TRUE(playerShip->IsProtected());
    playerShip->Update();
    EXPECT_FALSE(playerShip->IsProtected());

    playerShip->SetWeapon(kWeaponQuad);
    playerShip->TakeDamage(1);
    EXPECT_TRUE(playerShip->Update()) << "that was the last life";
    EXPECT_EQ(playerShip->GetHitPoints(), 0);
    EXPECT_EQ(playerShip->GetWeapon(), kWeaponQuad);
}

TEST_F(PlayerShipTest, RamDamagesBothUnlessTheShipIsProtected) {
    Block rock(kStart + Vec3{4.1F, 0.5F, 0}, {-1, 1, -1, 1, -1, 1});
    playerShip->AddShield();
    EXPECT_FALSE(playerShip->CollideWithShip(rock)) << "within the shield, but beside the hull";
    rock.position.x = 3.5F;
    EXPECT_TRUE(playerShip->CollideWithShip(rock));
    EXPECT_EQ(rock.damage, 1);
    EXPECT_EQ(playerShip->GetShields(), 0);
    playerShip->SetInvulnerable(1);
    EXPECT_FALSE(playerShip->CollideWithShip(rock));
    EXPECT_EQ(rock.damage, 1);
    playerShip->SetInvulnerable(0);
    rock.position.x = 4.0F + kStart.x;
    EXPECT_FALSE(playerShip->CollideWithShip(rock)) << "they only touch";
}

TEST_F(PlayerShipTest, UpgradesStopAtTheirLimits) {
    for (int i = 0; i < 100; ++i) {
        for (int entry = 0; entry < kShopEntries; ++entry) {
            PowerupManager::Apply(*playerShip, kPowerups[entry].code, false);
        }
    }
    EXPECT_EQ(playerShip->GetMissileCapacity(), 10);
    EXPECT_EQ(playerShip->GetHomingMissiles(), 10);
    EXPECT_EQ(playerShip->GetDumbfireMissiles(), 10);
    EXPECT_EQ(playerShip->GetMissileSpeed(), 10);
    EXPECT_EQ(playerShip->GetBulletCapacity(), 40);
    EXPECT_EQ(playerShip->GetBullets(), 40);
    EXPECT_EQ(playerShip->GetEngineLevel(), 4);
    EXPECT_EQ(playerShip->GetShields(), 5);
    EXPECT_EQ(playerShip->GetHitPoints(), 5);
}

TEST_F(PlayerShipTest, LosesOneStepOfEveryUpgradeButNeverBelowTheStart) {
    playerShip->SetWeapon(kWeaponQuad);
    playerShip->AddBullet();
    ASSERT_EQ(playerShip->GetBullets(), 8) << "two quad volleys";
    playerShip->AddHomingMissile();
    playerShip->UpgradeEngine();
    playerShip->SetAutofire(true);
    playerShip->SetMagnet(true);
    playerShip->AddMissileSpeed();
    playerShip->LoseUpgrades(false, 0);
    bool strong = true;
    EXPECT_EQ(playerShip->GetWeapon(), kWeaponTriple);
    EXPECT_EQ(playerShip->GetBullets(), 7);
    EXPECT_EQ(playerShip->GetHomingMissiles(), 0);
    EXPECT_EQ(playerShip->GetEngineLevel(), 0);
    EXPECT_FALSE(playerShip->GetAutofire());
    EXPECT_FALSE(playerShip->GetMagnet(strong));
    EXPECT_FALSE(strong);
    EXPECT_EQ(playerShip->GetMissileSpeed(), 1) << "missile speed stays";
    for (int i = 0; i < 9; ++i) {
        playerShip->LoseUpgrades(false, 0);
    }
    EXPECT_EQ(playerShip->GetWeapon(), kWeaponSingle);
    EXPECT_EQ(playerShip->GetBullets(), 3);
    playerShip->SetWeapon(kWeaponCannon);
    playerShip->LoseUpgrades(false, 0);
    EXPECT_EQ(playerShip->GetBullets(), 8) << "raised to two volleys of the quad that is left";
}

TEST_F(PlayerShipTest, ThreeDifferentSuckersBringTheFullPowerBonus) {
    for (const int32_t sucker : {kSucker3, kSucker1, kSucker3, kSucker1}) {
        PowerupManager::Apply(*playerShip, sucker, true);
    }
    UpdatePlayer(100);
    ASSERT_EQ(playerShip->GetWeapon(), kWeaponSingle) << "the second one is still missing";
    PowerupManager::Apply(*playerShip, kSucker2, false);
    UpdatePlayer(100);
    ASSERT_EQ(playerShip->GetWeapon(), kWeaponSingle) << "one that was not collected in play";
    PowerupManager::Apply(*playerShip, kSucker2, true);
    UpdatePlayer(74);
    ASSERT_EQ(playerShip->GetWeapon(), kWeaponSingle);
    playerShip->Update();
    EXPECT_EQ(playerShip->GetWeapon(), kWeaponQuad);
    EXPECT_EQ(playerShip->GetBullets(), 20);
    EXPECT_EQ(playerShip->GetBulletCapacity(), 20);
    EXPECT_EQ(playerShip->GetHomingMissiles(), 2);
    EXPECT_EQ(playerShip->GetDumbfireMissiles(), 2);
    EXPECT_EQ(playerShip->GetEngineLevel(), 3);
    EXPECT_EQ(playerShip->GetInvulnerableTime(), 750);
    EXPECT_TRUE(playerShip->GetAutofire());
    playerShip->SetWeapon(kWeaponSingle);
    PowerupManager::Apply(*playerShip, kSucker2, true);
    UpdatePlayer(100);
    EXPECT_EQ(playerShip->GetWeapon(), kWeaponSingle) << "a new collection has begun";
}

TEST_F(PlayerShipTest, GlidesHomeInAStraightLineWhileTheCameraTurns) {
    Hold(Action::Right);
    Hold(Action::Up);
    UpdatePlayer(60);
    const Vec3 from = playerShip->GetPosition();
    Hold(Action::Fire1);
    playerShip->StartRecentre();
    UpdatePlayer(75);
    EXPECT_LT(Length(playerShip->GetPosition() - (from + kStart) * 0.5F), 0.1F);
    EXPECT_EQ(playerShip->GetRotationZ(), 0.0F);
    UpdatePlayer(75);
    EXPECT_EQ(playerShip->GetPosition(), kStart);
    EXPECT_EQ(Weapons().ShotsFired(), 0) << "no input is read meanwhile";
    playerShip->Update();
    EXPECT_EQ(Weapons().ShotsFired(), 1);
    EXPECT_NE(playerShip->GetPosition(), kStart);
}

TEST_F(PlayerShipTest, OnlyANewGameZeroesScoreAndMoney) {
    score = 700;
    money = 80;
    const PlayerShip another;
    EXPECT_EQ(score, 700);
    EXPECT_EQ(money, 80);
    playerShip->SetWeapon(kWeaponCannon);
    playerShip->ResetPlayer();
    EXPECT_EQ(score, 0);
    EXPECT_EQ(money, 0);
    EXPECT_EQ(playerShip->GetWeapon(), kWeaponSingle);
    EXPECT_EQ(playerShip->GetHitPoints(), 2);
}

}  // namespace
