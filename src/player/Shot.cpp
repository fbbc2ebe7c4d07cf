#include "player/Shot.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "audio/SoundManager.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLWindow.h"
#include "player/Collision.h"
#include "player/WeaponKinds.h"
#include "world/EnemyShip.h"
#include "world/ExplosionManager.h"

namespace {

LevelManager* level = nullptr;
ExplosionManager* explosionManager = nullptr;

uint32_t nextLight = GL_LIGHT1;  // that the next shot drawn may take
uint32_t nextLit = GL_LIGHT1;    // that the next shot whose light is not black switches on

constexpr Colour kBlack = {0.0F, 0.0F, 0.0F};

void SwitchOn(uint32_t light, Colour colour) {
    constexpr std::array<float, 4> kAboveShot = {0.0F, 1.0F, 0.0F, 1.0F};
    constexpr float kAttenuation = 0.05F;
    const std::array<float, 4> diffuse = {colour.red, colour.green, colour.blue, 0.0F};
    glLightfv(light, GL_POSITION, kAboveShot.data());
    glLightfv(light, GL_DIFFUSE, diffuse.data());
    glLightf(light, GL_QUADRATIC_ATTENUATION, kAttenuation);
    glEnable(light);
}

// Where the lights of a set end. A driver makes a shader for each set of lights that it meets and
// for each kind of material with it, and keeps half a megabyte for it. So there are only three
// sets, filled up with black lights: these cost less time than the shaders would.
uint32_t EndOfSet(int set) {
    constexpr uint32_t kFew = 2;
    const uint32_t all = glWindow->GetLightLimit();
    return set == 0 ? GL_LIGHT1 : set == 1 ? std::min(GL_LIGHT1 + kFew, all) : all;
}

// One past the last light that is on.
uint32_t EndOfLights() {
    return EndOfSet(nextLit == GL_LIGHT1 ? 0 : nextLit <= EndOfSet(1) ? 1 : 2);
}

}  // namespace

void Shot::SetLinks(LevelManager* levelManager, ExplosionManager* explosions) {
    level = levelManager;
    explosionManager = explosions;
}

void Shot::InitFrom(const Shot& other) {
    position = other.position;
    velocity = other.velocity;
    colour = other.colour;
    damage = other.damage;
    life = other.life;
    model = other.model;
    isMissile = other.isMissile;
    homingSpeed = other.homingSpeed;
}

bool Shot::Update() {
    --life;
    if (life == 0) {
        if (isMissile) {
            Burst();
        }
        return true;
    }
    if (isMissile && missileKind == kMissileHoming) {
        return Home();
    }
    position = position + velocity;
    return false;
}

// One step straight at where the target is now; the last one lands exactly on it, where the
// enemy's next hit test finds the missile. True when there is nothing left to chase.
bool Shot::Home() {
    if (target == nullptr || !target->active) {
        target = level->PickTarget();
        if (target == nullptr) {
            Burst();
            return true;
        }
    }
    const Vec3 way = target->GetPosition() - position;
    const float squares = way.x * way.x + way.y * way.y + way.z * way.z;
    const double distance = std::sqrt(static_cast<double>(squares));
    const float step = homingSpeed < distance ? static_cast<float>(homingSpeed / distance) : 1.0F;
    position = position + way * step;
    return false;
}

void Shot::Burst() const {
    explosionManager->Spawn(position, 0, false);
    soundManager->PlayMissileExplosion();
}

bool Shot::HitTest(const GameObject& hitTarget) const {
    if (!Collision::PointInBox(hitTarget.GetPosition(), position, hitTarget.GetBounds())) {
        return false;
    }
    SoundHit();
    return true;
}

void Shot::SoundHit() const {
    soundManager->PlayHit();
    if (isMissile) {
        soundManager->PlayMissileExplosion();
    }
}

void Shot::Draw() {
    glPushMatrix();
    glTranslatef(position.x, position.y, position.z);
    if (isMissile && missileKind == kMissileHoming && target != nullptr) {
        TurnToTarget();
    }
    glCallList(model);
    AddLight();
    glPopMatrix();
}

// The missile's nose points up the screen until it is turned.
void Shot::TurnToTarget() const {
    const Vec3 way = target->GetPosition() - position;
    const int32_t view = glWindow->GetView();
    if (view == 1 || view == 4) {
        glRotatef(HeadingTowards(way.x, way.z, 0.0F), 0.0F, -1.0F, 0.0F);
    }
    if (view != 1) {
        glRotatef(HeadingTowards(way.y, way.z, 0.0F), 1.0F, 0.0F, 0.0F);
    }
}

// Shots drawn first take the lights, one each, and the rest go unlit. A cannon shell takes one too,
// but its light is black and need not be switched on.
void Shot::AddLight() const {
    if (nextLight >= glWindow->GetLightLimit()) {
        return;
    }
    ++nextLight;
    if (colour.red == 0.0F && colour.green == 0.0F && colour.blue == 0.0F) {
        return;
    }
    const uint32_t before = EndOfLights();
    SwitchOn(nextLit++, colour);
    for (uint32_t light = std::max(before, nextLit); light < EndOfLights(); ++light) {
        SwitchOn(light, kBlack);
    }
}

void Shot::ResetLights() {
    for (uint32_t light = GL_LIGHT1; light < EndOfLights(); ++light) {
        glDisable(light);
    }
    nextLight = GL_LIGHT1;
    nextLit = GL_LIGHT1;
}

void Shot::SwitchLightsOn(int set) {
    const uint32_t end = EndOfSet(set);
    for (uint32_t light = GL_LIGHT1; light < glWindow->GetLightLimit(); ++light) {
        if (light < end) {
            SwitchOn(light, kBlack);
        } else {
            glDisable(light);
        }
    }
}
