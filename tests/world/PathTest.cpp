#include "world/Path.h"

#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "support/GameFixture.h"

namespace {

// A ship's progress along a path.
struct Flight {
    Vec3 position;
    int index = 1;
    bool finished = false;
    float heading = 0.0F;
};

using PathFollowing = RoomFixture;

float HeadingAlong(Vec3 direction, int32_t view, float current = 77.0F) {
    glWindow->SetView(view);
    const Path path({{0.0F, 0.0F, 0.0F}, direction * 10.0F});
    Flight flight;
    flight.heading = current;
    path.Follow(flight.position, 0.5F, flight.index, flight.finished, flight.heading);
    return flight.heading;
}

}  // namespace

TEST_F(PathFollowing, EachPointCostsOneFrameWithoutMotion) {
    const Path path({{0.0F, 0.0F, 0.0F}, {0.0F, 0.0F, -10.0F}, {8.0F, 6.0F, -10.0F}});
    Flight flight;
    int frames = 0;
    while (!flight.finished && frames < 100) {
        const Vec3 before = flight.position;
        const int index = flight.index;
        flight.heading = 33.0F;
        path.Follow(flight.position, 0.5F, flight.index, flight.finished, flight.heading);
        ++frames;
        if (flight.index != index) {
            EXPECT_EQ(flight.position, before) << "the frame that reaches a point";
            EXPECT_EQ(flight.heading, 33.0F) << "the heading stays in that frame";
        } else {
            EXPECT_NEAR(Length(flight.position - before), 0.5F, 1e-4F);
        }
    }
    EXPECT_TRUE(flight.finished);
    EXPECT_EQ(flight.index, 3);
    EXPECT_NEAR(frames, 19 + 1 + 20 + 1, 2) << "ten units twice, half a unit a frame";
    EXPECT_LE(Length(path.GetPoint(2) - flight.position), 0.5F);
    Flight near;
    Path({{0.0F, 0.0F, 0.0F}, {0.0F, 0.0F, -0.5F}})
        .Follow(near.position, 0.5F, near.index, near.finished, near.heading);
    EXPECT_TRUE(near.finished) << "a point just one step away counts as reached";
}

TEST_F(PathFollowing, TheNosePointsAlongTheTravelSeenFromAboveAndBehind) {
    struct Row {
        float dx;
        float dz;
        float heading;
    };
    constexpr Row kRows[] = {{0, -1, 0},   {0, 1, 180},   {1, -1, 45}, {1, 1, 135},
                             {-1, 1, 225}, {-1, -1, -45}, {1, 0, 90},  {-1, 0, 270}};
    for (const Row& row : kRows) {
        for (const int32_t view : {1, 4}) {
            EXPECT_NEAR(HeadingAlong({row.dx, 0.0F, row.dz}, view), row.heading, 1e-3F)
                << "direction " << row.dx << ", " << row.dz << " in view " << view;
        }
        for (const int32_t view : {2, 3}) {
            EXPECT_EQ(HeadingAlong({row.dx, 0.0F, row.dz}, view), 180.0F)
                << "seen from the side every ship faces the player";
        }
    }
    EXPECT_EQ(HeadingAlong({0.0F, 1.0F, 0.0F}, 1), 77.0F) << "straight up gives no direction";
}
