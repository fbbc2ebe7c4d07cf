#include "world/ExplosionManager.h"

#include <GL/gl.h>

#include "audio/SoundManager.h"
#include "core/DebugLog.h"
#include "core/Registry.h"
#include "graphics/ObjectManager.h"

ExplosionManager::~ExplosionManager() {
    Explosion::FreeResources();
}

void ExplosionManager::Init() {
    Explosion::InitResources();
}

bool ExplosionManager::Spawn(Vec3 at, int32_t points, bool withSound) {
    Explosion* explosion = explosions.Take();
    if (explosion == nullptr) {
        return true;
    }
    explosion->Start(at, points);
    if (withSound) {
        soundManager->PlayExplosion();
    }
    return false;
}

void ExplosionManager::Update() {
    explosions.ReleaseIf([](Explosion& explosion) { return explosion.Update(); });
}

// Fire gives its own light: without lighting the debris, rings and points have exactly their own
// colours, whatever material, glow or normal the ships and shots before them have left behind.
void ExplosionManager::Draw() {
    if (ActiveCount() == 0) {
        return;
    }
    ObjectManager::Instance()->DisableTextures();
    glDisable(GL_LIGHTING);
    for (int i = 0; i < ActiveCount(); ++i) {
        explosions.Live(i).Draw();
    }
    glEnable(GL_LIGHTING);
}

bool ExplosionManager::Reset() {
    if (ActiveCount() > 0) {
        while (ActiveCount() > 0) {
            explosions.Release(0);
        }
        return false;
    }
    if (explosions.FreeCount() != kCapacity) {
        Log("WARNING: Explosion lost\n");
        return true;
    }
    return false;
}
