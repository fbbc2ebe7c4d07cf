#include "world/EnemyShip.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLWindow.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"
#include "player/WeaponManager.h"
#include "support/GameFixture.h"
#include "world/ExplosionManager.h"

namespace {

class Enemies : public GameFixture {
protected:
    // A ship of two columns' place 0 whose path ends at once, at `at`.
    EnemyShip Arrived(Vec3 at, int32_t type = 0) {
        path = Path({at, at});
        orders.type = type;
        return EnemyShip(orders, 0);
    }

    // Frames until the ship comes within `distance` of `place`; `limit` when it never does.
    static int FramesTo(EnemyShip& ship, Vec3 place, float distance, int limit) {
        int frames = 0;
        while (frames < limit && Length(ship.GetPosition() - place) > distance) {
            ship.Update();
            ++frames;
        }
        return frames;
    }

    Path path;
    EnemyOrders orders = {.path = &path, .row = 1, .rowLength = 5, .diveKinds = {0}};
};

constexpr Vec3 kDivePoints[4][4] = {
    // Kinds 1 to 4 in views 1, 2, 3 and 4.
    {{-35, 0, 26}, {35, 0, 26}, {-35, 0, 0}, {35, 0, 0}},
    {{0, 27, 26}, {0, -27, 26}, {0, 27, 0}, {0, -27, 0}},
    {{0, -27, 26}, {0, 27, 26}, {0, -27, 0}, {0, 27, 0}},
    {{-35, 0, 26}, {35, 0, 26}, {-35, 0, 0}, {35, 0, 0}},
};

}  // namespace

TEST_F(Enemies, HoldTheirSlotOfEachViewAndSwayTogether) {
    constexpr Vec3 kSlots[] = {{-10, 0, -9}, {0, -10, -17}, {0, -10, -17}, {-10, 8, -34}};
    for (int32_t view = 1; view <= 4; ++view) {
        glWindow->SetView(view);
        EnemyShip ship = Arrived({});
        ship.Update();
        const float step = Length(ship.GetPosition());
        EXPECT_NEAR(step, EnemyShip::kFormationSpeed, 1e-5F);
        for (int i = 0; i < 200; ++i) {
            ship.Update();
        }
        EXPECT_EQ(ship.GetPosition(), kSlots[view - 1]) << "view " << view;
        EXPECT_EQ(ship.GetRotationY(), 180.0F);
    }
    int turnsAt[2] = {};
    for (int frame = 1; frame <= 225; ++frame) {
        EnemyShip::UpdateFormationSway();
        turnsAt[0] = EnemyShip::GetFormationSway() == 75 ? frame : turnsAt[0];
        turnsAt[1] = EnemyShip::GetFormationSway() == -75 ? frame : turnsAt[1];
    }
    EXPECT_THAT(turnsAt, testing::ElementsAre(75, 225)) << "150 frames from side to side";
    glWindow->SetView(1);
    EnemyShip ship = Arrived({-10, 0, -9});
    for (int i = 0; i < 30; ++i) {
        ship.Update();
    }
    EXPECT_NEAR(ship.GetPosition().x, -17.5F, 1e-4F) << "7.5 units to the side";
    EnemyShip::ResetFormationSway();
}

TEST_F(Enemies, TurnByNineDegreesAFrameTheShorterWay) {
    glWindow->SetView(2);
    EnemyShip halfTurn = Arrived({});
    for (const float heading : {351.0F, 342.0F, 333.0F}) {
        halfTurn.Update();
        EXPECT_EQ(halfTurn.GetRotationY(), heading) << "an exact half turn goes to the left";
    }
    glWindow->SetView(1);
    // Ten degrees to the left, then five to the right.
    path = Path({{0, 0, 0}, {-0.17632698F * 30.0F, 0, -30}, {0.08748866F * 9000.0F, 0, -9000}});
    orders.type = 0;
    EnemyShip ship(orders, 0);
    ship.Update();
    EXPECT_EQ(ship.GetRotationY(), 351.0F);
    ship.Update();
    EXPECT_NEAR(ship.GetRotationY(), 350.0F, 0.01F);
    float previous = 350.0F;
    while (std::abs(ship.GetRotationY() - previous) < 1.0F && ship.GetPosition().z > -40.0F) {
        previous = ship.GetRotationY();
        ship.Update();
    }
    EXPECT_NEAR(ship.GetRotationY(), 359.0F, 0.01F) << "first a step";
    ship.Update();
    EXPECT_NEAR(ship.GetRotationY(), 5.0F, 0.1F) << "then the rest of the way, past 360";
}

TEST_F(Enemies, DiveFromPointToPointInEveryView) {
    orders.diveChance = 1;
    for (int32_t view = 1; view <= 4; ++view) {
        glWindow->SetView(view);
        const auto& points = kDivePoints[view - 1];
        orders.diveKinds = {1, 2, 3, 4};
        EnemyShip ship = Arrived({});
        ship.Update();
        ASSERT_TRUE(ship.IsDiving()) << "one in one, from the frame that ends the path";
        const Vec3 before = ship.GetPosition();
        ship.Update();
        EXPECT_NEAR(Length(ship.GetPosition() - before), 0.5F, 1e-4F);
        for (const Vec3& point : points) {
            EXPECT_LT(FramesTo(ship, point, 0.71F, 300), 300)
                << "view " << view << " never reaches " << point.x << ", " << point.y;
        }
        ship.Update();
        EXPECT_FALSE(ship.IsDiving()) << "back to the formation";
    }
    orders.diveChance = 0;
    EnemyShip calm = Arrived({});
    for (int i = 0; i < 500; ++i) {
        calm.Update();
        ASSERT_FALSE(calm.IsDiving());
    }
}

TEST_F(Enemies, DiveAtWhereThePlayerWasOrChaseIt) {
    glWindow->SetView(1);
    playerShip->ResetPlayer();
    const Vec3 old = playerShip->GetPosition();
    const auto diveAtOldPlace = [&](int32_t kind) {
        playerShip->ResetPosition();
        orders.diveChance = 1;
        orders.diveKinds = {kind};
        EnemyShip ship = Arrived({0, 0, -20});
        ship.Update();  // sets out
        keyDown[static_cast<int>('J')] = 1;
        for (int i = 0; i < 200; ++i) {
            playerShip->Update();
        }
        keyDown[static_cast<int>('J')] = 0;
        while (ship.IsDiving()) {
            ship.Update();
        }
        return ship.GetPosition();
    };
    for (const int32_t kind : {0, 5}) {
        EXPECT_NEAR(Length(diveAtOldPlace(kind) - old), 3.5F, 0.3F)
            << "turns away three units before the place";
    }
    const Vec3 end = diveAtOldPlace(9);
    EXPECT_LT(playerShip->GetPosition().x, -20.0F) << "the player has moved away";
    EXPECT_LT(Length(end - playerShip->GetPosition()), 0.71F) << "a chase ends at the player";
}

TEST_F(Enemies, FireWithTheGunsOfTheirKind) {
    WeaponManager& shots = levelManager->GetEnemyWeapons();
    const auto shotsAfterOneFrame = [&](int32_t type, int32_t chance) {
        shots.Clear();
        orders.fireChance = chance;
        EnemyShip ship = Arrived({0, 0, -30}, type);
        ship.Update();
        return shots.LiveCount();
    };
    EXPECT_EQ(shotsAfterOneFrame(0, 0), 0) << "chance 0 never fires";
    EXPECT_EQ(shotsAfterOneFrame(0, 1), 1);
    EXPECT_EQ(shotsAfterOneFrame(501, 1), 1);
    EXPECT_EQ(shotsAfterOneFrame(500, 1), 2);
    EXPECT_NEAR(std::abs(shots.GetShot(0).GetPosition().x - shots.GetShot(1).GetPosition().x),
                13.0F, 1e-4F);
    EXPECT_EQ(shotsAfterOneFrame(5, 1), 4);
    std::array<Vec3, EnemyShip::kMaxGuns> guns = {Vec3{1, 2, 3}};
    EnemyShip fryjahn = Arrived({}, 5);
    fryjahn.GetGunOffsets(2, guns);
    fryjahn.GetGunOffsets(3, guns);
    EXPECT_TRUE(
        Logged("ERROR: No gun X offset for specified enemy ship 5 (weapon: 2)"
               "ERROR: No gun X offset for specified enemy weapon: 3"));
    EXPECT_EQ(guns[0], (Vec3{1, 2, 3})) << "left alone";
}

TEST_F(Enemies, LoseTheirShieldsFirstAndThenScore) {
    EnemyShip ship = Arrived({}, 1);
    EXPECT_NEAR(ship.GetBounds().minX, -3.0F, 1e-5F) << "the shield: a cube of the radius";
    ship.TakeDamage(1);
    EXPECT_FALSE(ship.Update());
    EXPECT_EQ(ship.GetBounds().minX, -2.0F) << "the model's own box";
    EXPECT_EQ(ship.GetBounds().maxY, 1.0F);
    ship.TakeDamage(1);
    EXPECT_TRUE(ship.Update());
    EXPECT_FALSE(ship.active);
    EXPECT_EQ(score, 150);
    EXPECT_EQ(levelManager->GetExplosions().ActiveCount(), 1);

    EnemyShip strong = Arrived({}, 4);
    strong.TakeDamage(3);
    EXPECT_EQ(strong.GetShields(), 0);
    EXPECT_EQ(strong.GetHitPoints(), 1);
}

TEST_F(Enemies, BossesBurstAllOverAndDropWhereThePlayerCanFly) {
    // Faces of the model's box, and the views in which something may drop at them.
    struct Face {
        Vec3 at;
        std::vector<int32_t> views;
    };
    const Face faces[] = {{{-2, 0, 0}, {1, 4}},   {{2, 0, 0}, {1, 4}},     {{0, -1, 0}, {2, 3, 4}},
                          {{0, 1, 0}, {2, 3, 4}}, {{0, 0, -2}, {1, 2, 3}}, {{0, 0, 2}, {1, 2, 3}}};
    for (int32_t view = 1; view <= 4; ++view) {
        glWindow->SetView(view);
        std::vector<Vec3> drops;
        for (int round = 0; round < 60; ++round) {
            levelManager->GetExplosions().Reset();
            levelManager->GetPowerups().Clear();
            EnemyShip boss = Arrived({}, 500);
            boss.TakeDamage(40);
            score = 0;
            ASSERT_TRUE(boss.Update());
            ASSERT_EQ(score, 100000);
            ASSERT_EQ(levelManager->GetExplosions().ActiveCount(), 7);
            for (int i = 0; i < levelManager->GetPowerups().LiveCount(); ++i) {
                // Relative to the boss, which had moved towards its slot.
                drops.push_back(levelManager->GetPowerups().GetPowerup(i).GetPosition() -
                                boss.GetPosition());
            }
        }
        for (const Face& face : faces) {
            const bool mayDrop =
                std::find(face.views.begin(), face.views.end(), view) != face.views.end();
            const bool dropped = std::any_of(drops.begin(), drops.end(), [&](Vec3 drop) {
                return Length(drop - face.at) < 0.01F;
            });
            EXPECT_EQ(dropped, mayDrop) << "view " << view << ", face " << face.at.x << ", "
                                        << face.at.y << ", " << face.at.z;
        }
    }
}
