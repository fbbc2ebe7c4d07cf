#include "world/SceneryManager.h"

#include <GL/gl.h>

#include "core/DebugLog.h"
#include "core/Registry.h"
#include "graphics/ObjectManager.h"
#include "platform/Random.h"
#include "player/PlayerShip.h"
#include "player/WeaponManager.h"
#include "scores/UserPrefs.h"
#include "world/ExplosionManager.h"

namespace {

// What the ObjectManager gave for each kind.
struct LoadedModel {
    uint32_t displayList = 0;
    Bounds bounds;
};
std::array<LoadedModel, kSceneryModels.size()> loadedModels;

}  // namespace

int32_t SceneryManager::viewMode = 0;
WeaponManager* SceneryManager::playerWeapons = nullptr;
ExplosionManager* SceneryManager::explosionManager = nullptr;

bool SceneryManager::LoadModels() {
    for (size_t kind = 0; kind < kSceneryModels.size(); ++kind) {
        LoadedModel& loaded = loadedModels[kind];
        const char* file = kSceneryModels[kind].model;
        loaded.displayList = ObjectManager::Instance()->Load(file, loaded.bounds);
        if (loaded.displayList == 0) {
            Log("ERROR: Scenery: %s not found\n", file);
            return true;
        }
    }
    return false;
}

void SceneryManager::DrawModel(int32_t kind) {
    glCallList(loadedModels[kind].displayList);
}

void SceneryManager::SetManagers(WeaponManager* weapons, ExplosionManager* explosions) {
    playerWeapons = weapons;
    explosionManager = explosions;
}

void SceneryManager::Populate(bool foregroundLayer, bool farLayers, bool starsToo) {
    if (starsToo) {
        stars.ResetAll();
    }
    if (foregroundLayer) {
        for (Scenery& object : foreground) {
            PlaceNew(object, SceneryLayer::Foreground);
        }
    }
    if (farLayers) {
        PlaceNew(intermediate, SceneryLayer::Intermed);
        PlaceNew(background, SceneryLayer::Background);
    }
}

void SceneryManager::SetViewMode(int32_t mode) {
    viewMode = mode;
    if (mode == 4) {
        Populate(false, true, false);
    }
}

void SceneryManager::PlaceNew(Scenery& object, SceneryLayer layer) {
    const int32_t kind = PickModel(layer);
    object.Place(kind, layer, loadedModels[kind].displayList, loadedModels[kind].bounds, viewMode);
}

int32_t SceneryManager::PickModel(SceneryLayer layer) {
    return kSceneryKinds[static_cast<int32_t>(layer)][platform::Random() % 4];
}

void SceneryManager::Update(bool collide) {
    stars.Update();
    for (Scenery& object : foreground) {
        if (object.Update()) {
            PlaceNew(object, SceneryLayer::Foreground);
        } else if (collide) {
            CollideForeground(object);
        }
    }
    if (intermediate.Update()) {
        PlaceNew(intermediate, SceneryLayer::Intermed);
    }
    if (background.Update()) {
        PlaceNew(background, SceneryLayer::Background);
    }
}

void SceneryManager::CollideForeground(Scenery& object) {
    const bool shot = playerWeapons->CollideWith(object);
    const bool rammed = playerShip->CollideWithShip(object);
    if ((shot || rammed) && object.GetHitPoints() == 0) {
        explosionManager->Spawn(object.GetPosition(), 0, true);
        PlaceNew(object, SceneryLayer::Foreground);
    }
}

// Fog is for the play field: it would swallow the far layers and the stars. The flush hands the
// scenery on: a software renderer fills its pixels on other threads while this one goes on to the
// ships, which takes a fifth off a busy frame.
void SceneryManager::Draw() {
    const bool fog = userPrefs->GetFog();
    if (fog) {
        glDisable(GL_FOG);
    }
    DrawLayers();
    if (fog) {
        glEnable(GL_FOG);
    }
    glFlush();
}

void SceneryManager::DrawLayers() {
    stars.Draw();
    for (Scenery& object : foreground) {
        object.Draw();
    }
    intermediate.Draw();
    background.Draw();
}
