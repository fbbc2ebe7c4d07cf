#include "game/Rehearsal.h"

#include <GL/gl.h>

#include "core/Registry.h"
#include "graphics/ObjectManager.h"
#include "platform/Clock.h"
#include "player/Shot.h"
#include "scores/UserPrefs.h"
#include "world/Explosion.h"
#include "world/SceneryManager.h"
#include "world/Ship.h"

namespace {

// What a frame of the title can spare at 60 a second, also on a software renderer.
constexpr int64_t kMillisecondsPerFrame = 4;

// What there is to draw, in this order: the shapes that are no models, the models of the scenery,
// for which there is no fog, and all models as they stand in the play field.
constexpr int32_t kFirstScenery = 1;
constexpr int32_t kFirstModel = kFirstScenery + static_cast<int32_t>(kSceneryModels.size());

}  // namespace

bool Rehearsal::IsDone() const {
    return item >= kFirstModel + ObjectManager::Instance()->ModelCount();
}

void Rehearsal::Continue() {
    const int64_t end = platform::PerformanceCounter() +
                        kMillisecondsPerFrame * platform::PerformanceFrequency() / 1000;
    while (!IsDone() && platform::PerformanceCounter() < end) {
        Step();
    }
}

// An empty scissor box lets everything be drawn as in play but for the pixels. All stands about the
// origin, which every scene has before the camera.
void Rehearsal::Step() {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glScissor(0, 0, 0, 0);
    glEnable(GL_SCISSOR_TEST);
    Shot::SwitchLightsOn(lightSet);
    DrawItem();
    glPopAttrib();
    if (++lightSet == Shot::kLightSets) {
        lightSet = 0;
        ++item;
    }
}

void Rehearsal::DrawItem() const {
    const bool isScenery = item >= kFirstScenery && item < kFirstModel;
    if (userPrefs->GetFog() && !isScenery) {
        glEnable(GL_FOG);
    } else {
        glDisable(GL_FOG);
    }
    if (isScenery) {
        SceneryManager::DrawModel(item - kFirstScenery);
    } else if (item >= kFirstModel) {
        ObjectManager::Instance()->DrawModel(item - kFirstModel);
    } else {
        Ship::DrawSampleSpheres();
        glDisable(GL_LIGHTING);
        Explosion::DrawSample();
    }
}
