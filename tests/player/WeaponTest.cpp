// Volleys, allowances, pools, shots and missiles.

#include <GL/gl.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/null/NullGl.h"
#include "player/Collision.h"
#include "player/PlayerFixture.h"

namespace {

constexpr Vec3 kShooterStart = {0.0F, 0.0F, 10.0F};

struct ExpectedShot {
    Vec3 offset;  // from the ship
    Vec3 velocity;
};

class WeaponTest : public PlayerFixture {
protected:
    static void ExpectShots(const WeaponManager& weapons, Vec3 from,
                            const std::vector<ExpectedShot>& expected) {
        ASSERT_EQ(weapons.LiveCount(), static_cast<int>(expected.size()));
        for (int i = 0; i < weapons.LiveCount(); ++i) {
            const Shot& shot = weapons.GetShot(i);
            EXPECT_TRUE(Near(shot.position, from + expected[i].offset)) << "place " << i;
            EXPECT_TRUE(Near(shot.velocity, expected[i].velocity)) << "velocity " << i;
        }
    }
    // Volleys until so many bullets of the single laser fly.
    static void FillWithBullets(WeaponManager& weapons, int count) {
        for (int i = 0; i < count; ++i) {
            ASSERT_FALSE(weapons.Fire(kWeaponSingle, *playerShip, {.bullets = 200}));
        }
    }
};

TEST_F(WeaponTest, PlayersVolleysLeaveFromTheBarrelsOfTheView) {
    constexpr Vec3 k50 = {0, 0, -0.5F};  // straight on at 0.5 units a frame
    constexpr Vec3 k60 = {0, 0, -0.6F};
    constexpr float kOuter = -0.416667F;
    using Shots = std::vector<ExpectedShot>;
    const Shots single = {{{}, k50}};
    const Shots flatDouble = {{{-2.75F, 0, 0}, k60}, {{2.75F, 0, 0}, k60}};
    const Shots sideDouble = {{{0, -0.6F, 0}, k60}, {{0, 0.6F, 0}, k60}};
    const Shots flatTriple = {{{}, k50}, {{}, {0.2F, 0, kOuter}}, {{}, {-0.2F, 0, kOuter}}};
    const Shots sideTriple = {{{}, k50}, {{}, {0, 0.2F, kOuter}}, {{}, {0, -0.2F, kOuter}}};
    const Vec3 left = {-2.7F, 0, -2};
    const Vec3 right = {2.7F, 0, -2};
    const Shots flatQuad = {{left, k50}, {{-1, 0, -3.2F}, k50}, {{1, 0, -3.2F}, k50}, {right, k50}};
    const Vec3 high = {0, 0.3F, 0};
    const Vec3 low = {0, -0.3F, 0};
    const Shots sideQuad = {
        {high, {0, -0.1F, kOuter}}, {high, k50}, {low, k50}, {low, {0, 0.1F, kOuter}}};
    const Shots cannon = {{{}, {0, 0, -2}}};
    const Shots* const expected[][2] = {{&single, &single},
                                        {&flatDouble, &sideDouble},
                                        {&flatTriple, &sideTriple},
                                        {&flatQuad, &sideQuad},
                                        {&cannon, &cannon}};
    for (int32_t kind = 1; kind <= kWeaponKinds; ++kind) {
        for (int32_t view = 1; view <= 4; ++view) {
            SCOPED_TRACE("weapon " + std::to_string(kind) + " in view " + std::to_string(view));
            glWindow->SetView(view);
            WeaponManager weapons(true);
            EXPECT_FALSE(weapons.Fire(kind, *playerShip, {.bullets = 40}));
            EXPECT_EQ(weapons.ShotsFired(), ShotsPerVolley(kind));
            const int side = view == 2 || view == 3 ? 1 : 0;
            ExpectShots(weapons, kShooterStart, *expected[kind - 1][side]);
        }
    }
}

TEST_F(WeaponTest, EnemyVolleysLeaveFromTheShipsOwnGunsDownTheScreen) {
    const Path path({{5, 0, -20}, {5, 0, 0}});
    const auto fire = [&](int32_t type, const std::vector<ExpectedShot>& expected) {
        SCOPED_TRACE("enemy " + std::to_string(type));
        EnemyOrders orders;
        orders.type = type;
        orders.path = &path;
        const EnemyShip enemy(orders, 0);
        WeaponManager weapons(false);
        EXPECT_FALSE(weapons.Fire(enemy.GetWeapon(), enemy, {}));
        ExpectShots(weapons, {5, 0, -20}, expected);
    };
    constexpr Vec3 k50 = {0, 0, 0.5F};
    constexpr Vec3 k60 = {0, 0, 0.6F};
    glWindow->SetView(2);  // must make no difference to their guns
    fire(0, {{{}, k50}});
    fire(2, {{{-0.5F, 0, 0}, k60}, {{0.5F, 0, 0}, k60}});
    fire(5,
         {{{-1, -1, 0.8F}, k50}, {{-1, 1, 0.8F}, k50}, {{1, 1, 0.8F}, k50}, {{1, -1, 0.8F}, k50}});
    fire(501, {{{}, {0, 0, 2}}});
}

TEST_F(WeaponTest, AllowanceLimitsBulletsInFlightButNotMissiles) {
    WeaponManager weapons(true);
    FillWithBullets(weapons, 3);
    EXPECT_TRUE(weapons.Fire(kWeaponSingle, *playerShip, {.bullets = 3}))
        << "the fourth bullet must not leave";
    EXPECT_FALSE(weapons.Fire(kWeaponSingle, *playerShip, {.bullets = 3, .dumbfire = 1}));
    EXPECT_EQ(weapons.LiveCount(), 4) << "only the missile leaves";
    EXPECT_TRUE(weapons.Fire(kWeaponSingle, *playerShip, {.bullets = 3, .dumbfire = 1}))
        << "one dumbfire missile is allowed, and it flies";
    EXPECT_TRUE(weapons.Fire(kWeaponQuad, *playerShip, {.bullets = 6}))
        << "three bullets left are no quad volley";
    EXPECT_FALSE(weapons.Fire(kWeaponTriple, *playerShip, {.bullets = 6}))
        << "but a triple one; the missile does not count";
    EXPECT_EQ(weapons.ShotsFired(), 7);
}

TEST_F(WeaponTest, VolleyThatDoesNotFitIntoThePoolIsLostAndAMissileTakesTheLastShot) {
    WeaponManager weapons(true);
    FillWithBullets(weapons, WeaponManager::kPlayerShots - 1);
    EXPECT_TRUE(weapons.Fire(kWeaponDouble, *playerShip, {.bullets = 200}));
    EXPECT_FALSE(weapons.Fire(kWeaponDouble, *playerShip, {.bullets = 200, .dumbfire = 2}));
    EXPECT_EQ(weapons.FreeCount(), 0);
    EXPECT_TRUE(weapons.GetShot(WeaponManager::kPlayerShots - 1).isMissile);
    EXPECT_TRUE(weapons.Fire(kWeaponSingle, *playerShip, {.bullets = 200, .dumbfire = 2}));

    EXPECT_FALSE(weapons.Clear());
    EXPECT_EQ(weapons.FreeCount(), WeaponManager::kPlayerShots);
    EXPECT_EQ(weapons.ShotsFired(), 0);
    EXPECT_FALSE(weapons.Fire(kWeaponSingle, *playerShip, {.bullets = 1, .dumbfire = 1}))
        << "after a new game the missile counts must be zero again";
    EXPECT_EQ(weapons.LiveCount(), 2);
}

TEST_F(WeaponTest, UnknownWeaponFiresNothingAtAll) {
    EXPECT_TRUE(Weapons().Fire(6, *playerShip, {.bullets = 9, .dumbfire = 1}));
    EXPECT_EQ(Weapons().LiveCount(), 0);
    EXPECT_TRUE(Logged("ERROR: Weapon: Bad weapon type\n"));
}

TEST_F(WeaponTest, LaserEndsSilentlyWhenItsLifeIsOver) {
    FillWithBullets(Weapons(), 1);
    for (int i = 0; i < 99; ++i) {
        Weapons().UpdateAll();
    }
    ASSERT_EQ(Weapons().LiveCount(), 1);
    EXPECT_TRUE(Near(Weapons().GetShot(0).position, kShooterStart - Vec3{0, 0, 49.5F}));
    Weapons().UpdateAll();
    EXPECT_EQ(Weapons().LiveCount(), 0);
    EXPECT_EQ(levelManager->GetExplosions().ActiveCount(), 0);
}

TEST_F(WeaponTest, DumbfireMissileFliesFasterWithItsLevelAndBurstsInTheEnd) {
    Weapons().Fire(kWeaponSingle, *playerShip, {.dumbfire = 1, .missileSpeed = 5});
    ASSERT_EQ(Weapons().LiveCount(), 1);
    EXPECT_EQ(Weapons().GetShot(0).GetDamage(), 5);
    for (int i = 0; i < 199; ++i) {
        Weapons().UpdateAll();
    }
    EXPECT_TRUE(Near(Weapons().GetShot(0).position, kShooterStart - Vec3{0, 0, 199 * 0.6F}));
    EXPECT_EQ(levelManager->GetExplosions().ActiveCount(), 0);
    Weapons().UpdateAll();
    EXPECT_EQ(Weapons().LiveCount(), 0);
    EXPECT_EQ(levelManager->GetExplosions().ActiveCount(), 1);
}

TEST_F(WeaponTest, HomingMissileNeedsATargetToLeave) {
    const FireAllowance allowance = {.homing = 1, .dumbfire = 1};
    Weapons().Fire(kWeaponSingle, *playerShip, allowance);
    ASSERT_EQ(Weapons().LiveCount(), 1) << "without enemies only the dumbfire missile leaves";
    EXPECT_EQ(Weapons().GetShot(0).missileKind, kMissileDumbfire);
    PlayAgainst(0, 1);
    Weapons().Fire(kWeaponSingle, *playerShip, allowance);
    ASSERT_EQ(Weapons().LiveCount(), 2);
    EXPECT_EQ(Weapons().GetShot(0).target, &Enemy(0));
}

TEST_F(WeaponTest, HomingMissileFliesAtItsTargetAndLandsExactlyOnIt) {
    PlayAgainst(0, 1);
    const Vec3 target = Enemy(0).GetPosition();
    Weapons().Fire(kWeaponSingle, *playerShip, {.homing = 1, .missileSpeed = 10});
    const float distance = Length(target - kShooterStart);
    Weapons().UpdateAll();
    EXPECT_NEAR(Length(target - Weapons().GetShot(0).position), distance - 0.75F, 1e-4);
    for (float flown = 0.75F; flown < distance; flown += 0.75F) {
        Weapons().UpdateAll();
    }
    EXPECT_EQ(Weapons().GetShot(0).position, target);
    EXPECT_TRUE(Weapons().CollideWith(Enemy(0)));
    EXPECT_EQ(Enemy(0).GetHitPoints(), -2) << "a homing missile does 3 damage";
    EXPECT_EQ(Weapons().LiveCount(), 0);
}

TEST_F(WeaponTest, HomingMissileLooksForAnotherTargetAndBurstsWithoutOne) {
    PlayAgainst(0, 2);
    Weapons().Fire(kWeaponSingle, *playerShip, {.homing = 1});
    auto* const first = Weapons().GetShot(0).target;
    first->active = false;
    Weapons().UpdateAll();
    ASSERT_EQ(Weapons().LiveCount(), 1);
    auto* const second = Weapons().GetShot(0).target;
    EXPECT_NE(second, first);
    EXPECT_EQ(levelManager->GetExplosions().ActiveCount(), 0);
    second->active = false;
    Weapons().UpdateAll();
    EXPECT_EQ(Weapons().LiveCount(), 0) << "no enemy is left to chase";
    EXPECT_EQ(levelManager->GetExplosions().ActiveCount(), 1);
}

TEST_F(WeaponTest, MissilesForgetTheEnemiesOfALevelThatIsFreed) {
    PlayAgainst(0, 1);
    Weapons().Fire(kWeaponSingle, *playerShip, {.homing = 2});
    levelManager->FreeLevel();
    Weapons().DrawAll();  // must not look at the enemy that is gone
    EXPECT_EQ(Weapons().GetShot(0).target, nullptr);
    PlayAgainst(0, 1);
    EXPECT_EQ(Weapons().LiveCount(), 0) << "a new game takes all shots back";

    Weapons().Fire(kWeaponSingle, *playerShip, {.homing = 1});
    Weapons().ForgetTargets();
    Weapons().UpdateAll();
    ASSERT_EQ(Weapons().LiveCount(), 1);
    EXPECT_EQ(Weapons().GetShot(0).target, &Enemy(0)) << "it chases an enemy of the new level";
}

TEST_F(WeaponTest, EveryShotInTheBoxHitsAndIsTakenBack) {
    FillWithBullets(Weapons(), 2);
    Weapons().Fire(kWeaponQuad, *playerShip, {.bullets = 10});
    Block block(kShooterStart, {-0.5F, 0.5F, -1, 1, 0, 1});  // the two bullets stand on its face
    EXPECT_TRUE(Weapons().CollideWith(block));
    EXPECT_EQ(block.damage, 2);
    EXPECT_EQ(Weapons().ShotsHit(), 2);
    EXPECT_EQ(Weapons().LiveCount(), 4) << "the quad volley passes on both sides";
    ExpectPlays("HIT", 2);
    EXPECT_FALSE(Weapons().CollideWith(block));
}

// The first hit takes the last shield, and the smaller hull behind it is missed by the second.
TEST_F(WeaponTest, ShotsAfterTheOneThatBreaksTheShieldMeetTheHull) {
    FillWithBullets(Weapons(), 2);
    Block block(kShooterStart + Vec3{0, 0, 3}, {-4, 4, -4, 4, -4, 4});
    block.boundsAfterHit = Bounds{-1, 1, -1, 1, -1, 1};
    EXPECT_TRUE(Weapons().CollideWith(block));
    EXPECT_EQ(block.damage, 1);
    EXPECT_EQ(Weapons().LiveCount(), 1);
}

// Lights that are on, and those of them that shine.
std::pair<int, int> LightsOn() {
    namespace null = platform::null;
    std::map<double, bool> shines;
    for (size_t i = 0; i < null::RecordedGlCalls(); ++i) {
        const null::GlCall& call = null::RecordedGlCall(i);
        if (std::string(call.name) == "glLightfv" && call.arguments[1] == GL_DIFFUSE) {
            shines[call.arguments[0]] =
                call.arguments[2] + call.arguments[3] + call.arguments[4] > 0;
        }
    }
    std::pair<int, int> lights;
    for (uint32_t light = GL_LIGHT1; null::IsEnabled(light); ++light) {
        ++lights.first;
        lights.second += shines[light] ? 1 : 0;
    }
    return lights;
}

TEST_F(WeaponTest, ShotsDrawnFirstTakeTheLightsAndCannonShellsStayDark) {
    const auto draw = [](int before, int shells, int after) {
        Weapons().Clear();
        FillWithBullets(Weapons(), before);
        if (shells > 0) {
            Weapons().Fire(kWeaponCannon, *playerShip, {.bullets = 20});
        }
        FillWithBullets(Weapons(), after);
        WeaponManager::ResetLights();
        platform::null::ClearGlRecord();
        Weapons().DrawAll();
        return LightsOn();
    };
    // Of seven that shots may take, a shell's stays off; lights are on by twos or all.
    EXPECT_EQ(draw(2, 1, 9), std::pair(7, 6));
    EXPECT_EQ(draw(3, 0, 0), std::pair(7, 3));
    EXPECT_EQ(draw(12, 0, 0), std::pair(7, 7));
    EXPECT_EQ(draw(1, 1, 0), std::pair(2, 1)) << "the lights of the last frame go out";
    EXPECT_EQ(draw(0, 1, 0), std::pair(0, 0));
}

TEST_F(WeaponTest, HomingMissileTurnsItsNoseToItsTarget) {
    PlayAgainst(0, 1);
    for (const auto& [view, key] : {std::pair(1, Action::Right), std::pair(2, Action::Up)}) {
        glWindow->SetView(view);
        playerShip->ResetPosition();
        Hold(key);
        UpdatePlayer(80);
        Release(key);
        Weapons().Clear();
        Weapons().Fire(kWeaponSingle, *playerShip, {.homing = 1});
        platform::null::ClearGlRecord();
        Weapons().DrawAll();
        ASSERT_EQ(platform::null::DrawnLists(), 1U);
        const float* matrix = platform::null::DrawnListAt(0).modelView;
        const Vec3 nose = {-matrix[8], -matrix[9], -matrix[10]};
        const Vec3 way = Enemy(0).GetPosition() - playerShip->GetPosition();
        EXPECT_TRUE(Near(nose, way * (1.0F / Length(way)))) << "view " << view;
    }
}

TEST(CollisionTest, PointsOnAFaceAreInsideAndBoxesThatTouchDoNotOverlap) {
    const Bounds box = {-1, 2, -1, 1, -1, 1};
    EXPECT_TRUE(Collision::PointInBox({10, 0, 0}, {12, 1, -1}, box));
    EXPECT_FALSE(Collision::PointInBox({10, 0, 0}, {12.01F, 0, 0}, box));
    EXPECT_FALSE(Collision::PointInBox({10, 0, 0}, {10, 1.01F, 0}, box));
    EXPECT_FALSE(Collision::PointInBox({10, 0, 0}, {10, 0, -1.01F}, box));

    const Bounds small = {-0.5F, 0.5F, -0.5F, 0.5F, -0.5F, 0.5F};
    EXPECT_TRUE(Collision::BoxesOverlap({}, {0.5F, 0, 0}, box, small)) << "one within the other";
    EXPECT_TRUE(Collision::BoxesOverlap({0.5F, 0, 0}, {}, small, box));
    EXPECT_TRUE(Collision::BoxesOverlap({}, {2.4F, 1.4F, -1.4F}, box, small));
    EXPECT_FALSE(Collision::BoxesOverlap({}, {2.5F, 0, 0}, box, small)) << "a shared face";
    EXPECT_FALSE(Collision::BoxesOverlap({}, {0, 0, 1.5F}, box, small));
    EXPECT_FALSE(Collision::BoxesOverlap({}, {}, box, box)) << "the very same box";
}

}  // namespace
