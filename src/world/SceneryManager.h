#pragma once

// Owns the star field and the seven scenery objects in their three layers.

#include <array>

#include "world/Scenery.h"
#include "world/StarField.h"

class ExplosionManager;
class WeaponManager;

class SceneryManager {
public:
    static constexpr int kForegroundObjects = 5;

    // Loads the twelve models (GL context needed). True = failure: logged; the rest stay unloaded.
    static bool LoadModels();
    // One of them, about the origin.
    static void DrawModel(int32_t kind);
    static void SetManagers(WeaponManager* playerWeapons, ExplosionManager* explosions);

    // Places the chosen layers anew.
    void Populate(bool foregroundLayer, bool farLayers, bool starsToo);
    // Camera view of the level; view 4 empties the far layers.
    void SetViewMode(int32_t mode);
    // One frame. With `collide` the player's shots and ship touch the foreground objects.
    void Update(bool collide);
    void Draw();

    Scenery& GetForeground(int index) { return foreground[index]; }
    Scenery& GetIntermediate() { return intermediate; }
    Scenery& GetBackground() { return background; }

private:
    static void PlaceNew(Scenery& object, SceneryLayer layer);
    static int32_t PickModel(SceneryLayer layer);
    static void CollideForeground(Scenery& object);
    void DrawLayers();

    StarField stars;
    std::array<Scenery, kForegroundObjects> foreground;
    Scenery intermediate;
    Scenery background;

    static int32_t viewMode;  // last given to SetViewMode
    static WeaponManager* playerWeapons;
    static ExplosionManager* explosionManager;
};
