#include "world/Scenery.h"

#include <GL/gl.h>

#include "core/DebugLog.h"
#include "platform/Random.h"

namespace {

constexpr float kSceneryBottom = 105.0F;  // an object below it has left the field
constexpr int32_t kViewWithoutFarLayers = 4;

// The far layers glide by far below the play field, each at its depth and pace.
struct FarLayer {
    float y;
    float speedRange;  // units per frame, added to leastSpeed
    float leastSpeed;
};
constexpr FarLayer kIntermed = {-10.0F, 0.1F, 0.1F};
constexpr FarLayer kBackground = {-25.0F, 0.05F, 0.05F};
constexpr float kFarTop = -126.0F;
constexpr float kForegroundTop = -157.5F;

// `least` to `least` + `range`.
float RandomFrom(float range, float least) {
    return platform::RandomFraction() * range + least;
}

}  // namespace

void Scenery::Place(int32_t newKind, SceneryLayer newLayer, uint32_t list, const Bounds& newBounds,
                    int32_t viewMode) {
    inUse = true;
    kind = newKind;
    layer = newLayer;
    displayList = list;
    bounds = &newBounds;
    hitPoints = kSceneryModels[kind].hitPoints;
    angle = {};
    switch (layer) {
        case SceneryLayer::Foreground:
            PlaceForeground();
            break;
        case SceneryLayer::Intermed:
        case SceneryLayer::Background:
            if (viewMode == kViewWithoutFarLayers) {
                inUse = false;
            } else {
                PlaceFar();
            }
            break;
        default:
            Log("ERROR: Bad scenery type (foreground, intermed, background): %d\n",
                static_cast<int32_t>(layer));
    }
}

// Values are drawn in the order in which they stand: the same seed gives the same field.
void Scenery::PlaceForeground() {
    spin = {RandomFrom(6.0F, -3.0F), RandomFrom(6.0F, -3.0F), RandomFrom(6.0F, -3.0F)};
    position = {RandomFrom(84.0F, -42.0F), RandomFrom(64.8F, -32.4F), kForegroundTop};
    driftX = RandomFrom(0.01F, 0.005F);
    driftY = RandomFrom(0.01F, 0.005F);
    speed = RandomFrom(0.2F, 0.1F);
}

void Scenery::PlaceFar() {
    const bool nebula = layer == SceneryLayer::Background;
    const FarLayer& field = nebula ? kBackground : kIntermed;
    if (nebula) {
        // Nebulae are flat: they turn only within their plane.
        spin = {0.0F, RandomFrom(0.04F, 0.02F), 0.0F};
        angle.y = RandomFrom(360.0F, 0.0F);
    } else {
        spin = {RandomFrom(0.4F, -0.2F), RandomFrom(0.4F, -0.2F), RandomFrom(0.4F, -0.2F)};
    }
    position = {RandomFrom(105.0F, -52.5F), field.y, kFarTop};
    driftX = 0.0F;
    driftY = 0.0F;
    speed = RandomFrom(field.speedRange, field.leastSpeed);
}

bool Scenery::Update() {
    if (!inUse) {
        return false;
    }
    position.z += speed;
    if (position.z > kSceneryBottom) {
        inUse = false;
        return true;
    }
    position.x += driftX;
    position.y += driftY;
    angle = angle + spin;
    for (float* degrees : {&angle.x, &angle.y, &angle.z}) {
        if (*degrees > 360.0F) {
            *degrees -= 360.0F;
        }
    }
    return false;
}

void Scenery::Draw() {
    if (!inUse) {
        return;
    }
    glPushMatrix();
    if (layer != SceneryLayer::Foreground) {
        // The far layers look the same in every view: seen from straight above.
        glLoadIdentity();
        glTranslatef(0.0F, 0.0F, -50.0F);
        glRotatef(90.0F, 1.0F, 0.0F, 0.0F);
    }
    glTranslatef(position.x, position.y, position.z);
    glRotatef(angle.x, 1.0F, 0.0F, 0.0F);
    glRotatef(angle.y, 0.0F, 1.0F, 0.0F);
    glRotatef(angle.z, 0.0F, 0.0F, 1.0F);
    glCallList(displayList);
    glPopMatrix();
}

void Scenery::TakeDamage(int amount) {
    if (hitPoints < 0) {
        return;
    }
    hitPoints = hitPoints > amount ? hitPoints - amount : 0;
}
