#include <GL/gl.h>

#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/ObjectManager.h"
#include "platform/null/NullGl.h"
#include "player/PlayerShip.h"
#include "player/WeaponManager.h"
#include "scores/UserPrefs.h"
#include "support/GameFixture.h"
#include "world/ExplosionManager.h"
#include "world/SceneryManager.h"

namespace {

namespace gl = platform::null;

class Space : public GameFixture {
protected:
    void SetUp() override {
        GameFixture::SetUp();
        playerShip->ResetPlayer();
        scenery.SetViewMode(1);
    }

    // Gives the player a ship that nothing can miss.
    static void FillTheFieldWithThePlayer() {
        WriteModel("Objects\\Huge.aob", {-200, 200, -200, 200, -200, 200});
        ASSERT_TRUE(playerShip->LoadModel("Objects\\Huge.aob"));
    }

    SceneryManager scenery;
};

Scenery Placed(int32_t kind, SceneryLayer layer, int32_t view = 1) {
    static const Bounds box = {-1, 1, -1, 1, -1, 1};
    Scenery object;
    object.Place(kind, layer, 1, box, view);
    return object;
}

}  // namespace

TEST_F(Space, EachKindStandsItsDamage) {
    Scenery rock = Placed(2, SceneryLayer::Foreground);
    rock.TakeDamage(1);
    rock.TakeDamage(1);
    EXPECT_EQ(rock.GetHitPoints(), 1);
    rock.TakeDamage(5);
    EXPECT_EQ(rock.GetHitPoints(), 0) << "never below";
    Scenery nebula = Placed(5, SceneryLayer::Background);
    nebula.TakeDamage(100);
    EXPECT_EQ(nebula.GetHitPoints(), -1) << "indestructible";
    Placed(0, static_cast<SceneryLayer>(7));
    EXPECT_TRUE(Logged("ERROR: Bad scenery type (foreground, intermed, background): 7\n"));
}

TEST_F(Space, ObjectsStartAtTheTopOfTheirLayerAndLeaveAtTheBottom) {
    Scenery rock = Placed(0, SceneryLayer::Foreground);
    const Vec3 start = rock.GetPosition();
    EXPECT_EQ(start.z, -157.5F);
    rock.Update();
    EXPECT_GT(rock.GetPosition().x, start.x) << "the foreground drifts to the side";
    Scenery planet = Placed(3, SceneryLayer::Intermed);
    EXPECT_EQ(planet.GetPosition().y, -10.0F);
    EXPECT_EQ(planet.GetPosition().z, -126.0F);
    const float x = planet.GetPosition().x;
    int frames = 0;
    while (!planet.Update() && frames < 5000) {
        ++frames;
    }
    EXPECT_GT(planet.GetPosition().z, 105.0F);
    EXPECT_EQ(planet.GetPosition().x, x) << "far objects do not drift";
    EXPECT_FALSE(planet.IsInUse());
    EXPECT_FALSE(planet.Update()) << "it leaves only once";
}

TEST_F(Space, TheFarLayersStayEmptySeenFromBehind) {
    scenery.Populate(true, true, true);
    EXPECT_TRUE(scenery.GetIntermediate().IsInUse());
    EXPECT_TRUE(scenery.GetBackground().IsInUse());
    gl::ClearGlRecord();
    scenery.Draw();
    EXPECT_EQ(gl::DrawnLists(), 7U);
    scenery.SetViewMode(4);
    EXPECT_FALSE(scenery.GetIntermediate().IsInUse());
    EXPECT_FALSE(scenery.GetBackground().IsInUse());
    gl::ClearGlRecord();
    scenery.Draw();
    EXPECT_EQ(gl::DrawnLists(), 5U) << "only the foreground";
    scenery.SetViewMode(1);
    EXPECT_FALSE(scenery.GetIntermediate().IsInUse()) << "not before the next game";
    scenery.Populate(false, true, false);
    EXPECT_TRUE(scenery.GetIntermediate().IsInUse());
}

TEST_F(Space, RammedObjectsExplodeAndComeBackAtTheTop) {
    FillTheFieldWithThePlayer();
    scenery.Populate(true, true, true);
    scenery.Update(false);
    EXPECT_EQ(levelManager->GetExplosions().ActiveCount(), 0) << "nothing touches anything";
    ASSERT_LT(scenery.GetForeground(0).GetPosition().z, -157.0F);
    int destroyed = 0;
    bool sawTheLastPoint = false;
    for (int frame = 0; frame < 200; ++frame) {
        levelManager->GetExplosions().Reset();
        scenery.Update(true);
        destroyed += levelManager->GetExplosions().ActiveCount();
        for (int i = 0; i < SceneryManager::kForegroundObjects; ++i) {
            const Scenery& object = scenery.GetForeground(i);
            sawTheLastPoint = sawTheLastPoint || object.GetHitPoints() == 1;
            // Debris of 0 hit points is destroyed by the touch that it gets next frame.
            ASSERT_TRUE(object.GetHitPoints() > 0 || object.GetPosition().z == -157.5F);
        }
    }
    EXPECT_TRUE(sawTheLastPoint) << "one point left is not destroyed";
    EXPECT_GT(destroyed, 5 * 200 / 26) << "even the largest rock stands only 25 rams";
    EXPECT_EQ(score, 0) << "scenery is worth nothing";
}

TEST_F(Space, ShotsHitTheForegroundToo) {
    for (const SceneryModel& kind : kSceneryModels) {
        WriteModel(kind.model, {-200, 200, -200, 200, -200, 200});
    }
    ObjectManager::Destroy();  // read them anew
    ASSERT_FALSE(SceneryManager::LoadModels());
    playerShip->SetInvulnerable(350);  // nothing rams it
    scenery.Populate(true, false, false);
    WeaponManager& shots = levelManager->GetPlayerWeapons();
    ASSERT_FALSE(shots.Fire(1, *playerShip, {.bullets = 40}));
    scenery.Update(false);
    EXPECT_EQ(shots.LiveCount(), 1);
    const int32_t before = scenery.GetForeground(0).GetHitPoints();
    scenery.Update(true);
    EXPECT_EQ(shots.LiveCount(), 0) << "the first object in its way stops it";
    EXPECT_TRUE(scenery.GetForeground(0).GetHitPoints() == before - 1 ||
                levelManager->GetExplosions().ActiveCount() == 1);
}

TEST_F(Space, StarsAreDrawnUnlitInOneBatchAndFogReturns) {
    scenery.Populate(true, true, true);
    glEnable(GL_FOG);
    gl::ClearGlRecord();
    scenery.Draw();
    EXPECT_EQ(gl::GlCallCount("glVertex3f"), StarField::kStars);
    EXPECT_TRUE(gl::IsEnabled(GL_LIGHTING));
    EXPECT_TRUE(gl::IsEnabled(GL_FOG)) << "the preference is on";
    EXPECT_EQ(gl::ModelViewDepth(), 0);
    userPrefs->ToggleFog();
    scenery.Draw();
    EXPECT_FALSE(gl::IsEnabled(GL_FOG)) << "and now off";
}

TEST_F(Space, ShieldsAreNetsAsFineAsTheyAreStrong) {
    const auto draw = [](int shields) {
        playerShip->ResetPlayer();
        playerShip->TakeDamage(playerShip->GetShields());
        for (int i = 0; i < shields; ++i) {
            playerShip->AddShield();
        }
        gl::ClearGlRecord();
        playerShip->Ship::Draw();
    };
    draw(1);
    EXPECT_EQ(gl::LastGlCall("glLineWidth").arguments[0], 1.5);
    EXPECT_EQ(gl::GlCallCount("gluSphere"), 1);
    EXPECT_EQ(gl::GlCallCount("glPolygonMode"), 2) << "lines, and back again";
    draw(5);
    EXPECT_EQ(gl::LastGlCall("glLineWidth").arguments[0], 3.0);
    draw(0);
    EXPECT_EQ(gl::GlCallCount("gluSphere"), 0);
    EXPECT_EQ(gl::GlCallCount("glPolygonMode"), 0);
    Ship::DeleteQuadric();
    draw(2);
    EXPECT_EQ(gl::GlCallCount("gluSphere"), 0) << "no quadric, no sphere, no crash";
}
