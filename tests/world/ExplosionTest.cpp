#include <GL/gl.h>

#include <algorithm>

#include "core/Registry.h"
#include "platform/null/NullGl.h"
#include "platform/null/NullMedia.h"
#include "support/GameFixture.h"
#include "world/ExplosionManager.h"

namespace {

namespace gl = platform::null;

class Explosions : public RoomFixture {
protected:
    void SetUp() override {
        RoomFixture::SetUp();
        explosions.Init();
        gl::ClearGlRecord();
        log.clear();
    }

    ExplosionManager explosions;
};

}  // namespace

TEST_F(Explosions, AreTwentyAndNoMore) {
    for (int i = 0; i < 20; ++i) {
        EXPECT_FALSE(explosions.Spawn({static_cast<float>(i), 0, 0}, 0, true)) << i;
    }
    const int heard = gl::SoundPlays("EXPLOSION1");
    EXPECT_EQ(heard, 20);
    EXPECT_TRUE(explosions.Spawn({}, 100, true)) << "the 21st must be refused";
    EXPECT_EQ(gl::SoundPlays("EXPLOSION1"), heard) << "and is not heard";
    EXPECT_FALSE(explosions.Reset());
    EXPECT_EQ(explosions.ActiveCount(), 0);
    EXPECT_FALSE(explosions.Reset()) << "none has got lost";
    EXPECT_FALSE(explosions.Spawn({}, 0, false)) << "all are free again";
}

TEST_F(Explosions, LiveUntilTheirSlowestPieceHasFaded) {
    for (int round = 0; round < 20; ++round) {
        explosions.Spawn({1, 2, 3}, 0, false);
        int frames = 0;
        while (explosions.ActiveCount() == 1 && frames < 100) {
            explosions.Update();
            ++frames;
        }
        EXPECT_EQ(frames, 35) << "34 frames for the slowest piece and one to notice";
    }
}

TEST_F(Explosions, ThatEndGiveTheirTurnToTheOneThatTakesTheirPlace) {
    explosions.Spawn({1, 0, 0}, 0, false);
    for (int i = 0; i < 5; ++i) {
        explosions.Update();
    }
    explosions.Spawn({2, 0, 0}, 0, false);
    explosions.Spawn({3, 0, 0}, 0, false);
    while (explosions.ActiveCount() == 3) {
        explosions.Update();
    }
    ASSERT_EQ(explosions.ActiveCount(), 2);
    EXPECT_EQ(explosions.GetExplosion(0).GetPosition().x, 3.0F) << "the last moved into the hole";
    EXPECT_EQ(explosions.GetExplosion(1).GetPosition().x, 2.0F);
    // The second and third were born in the same frame: a turn missed shows as a later end.
    int frames = 0;
    while (explosions.ActiveCount() > 0 && frames < 100) {
        explosions.Update();
        ++frames;
    }
    EXPECT_LE(frames, 5 + 1);
}

TEST_F(Explosions, ShowDebrisRingsAndPointsInTheirOwnColours) {
    explosions.Spawn({1, 2, -30}, 100, false);
    explosions.Spawn({4, 5, -30}, 0, false);
    explosions.Draw();
    EXPECT_EQ(gl::GlCallCount("glVertex3f"), 2 * 75 * 12) << "four triangles a piece";
    EXPECT_EQ(gl::GlCallCount("gluDisk"), 2 * 2);
    ASSERT_EQ(gl::DrawnTexts(), 1U) << "an explosion of no points writes nothing";
    EXPECT_STREQ(gl::DrawnTextAt(0).text, "100");
    EXPECT_EQ(gl::DrawnTextAt(0).colour[1], 1.0F);
    EXPECT_EQ(gl::DrawnTextAt(0).colour[3], 0.4F);
    EXPECT_TRUE(gl::IsEnabled(GL_LIGHTING)) << "for whoever draws next";
    EXPECT_EQ(gl::ModelViewDepth(), 0);
    EXPECT_EQ(gl::AttributeDepth(), 0);
    EXPECT_EQ(gl::GlMisuses(), 0);

    for (int i = 0; i < 30; ++i) {
        explosions.Update();
    }
    gl::ClearGlRecord();
    explosions.Draw();
    EXPECT_LT(gl::GlCallCount("glVertex3f"), 2 * 75 * 12) << "dead pieces are not drawn";
    EXPECT_FALSE(Logged("ERROR"));
    Explosion idle;
    idle.Draw();
    EXPECT_TRUE(Logged("ERROR: Attempting to draw an inactive explosion."));
}
