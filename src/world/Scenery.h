#pragma once

// A rock, planet or nebula that drifts down the field in one of three layers.

#include "world/GameObject.h"
#include "world/SceneryModels.h"

class Scenery : public GameObject {
public:
    // Puts an object of `kind` at the top of its layer's field with a random place, drift and spin.
    // In view 4 the far layers stay empty. `bounds` outlives the object.
    void Place(int32_t kind, SceneryLayer layer, uint32_t displayList, const Bounds& bounds,
               int32_t viewMode);

    Vec3 GetPosition() const override { return position; }
    void Draw() override;
    bool Update() override;  // true when it has left the bottom of the field
    void TakeDamage(int amount) override;
    Bounds GetBounds() const override { return bounds != nullptr ? *bounds : Bounds{}; }

    int32_t GetHitPoints() const { return hitPoints; }
    bool IsInUse() const { return inUse; }
    int32_t GetKind() const { return kind; }

private:
    void PlaceForeground();
    void PlaceFar();

    bool inUse = false;
    Vec3 position;
    float driftX = 0.0F;  // units per frame
    float driftY = 0.0F;
    float speed = 0.0F;  // along Z, down the screen
    Vec3 angle;          // degrees about X, Y and Z
    Vec3 spin;           // degrees per frame
    uint32_t displayList = 0;
    const Bounds* bounds = nullptr;
    int32_t kind = 0;  // index into kSceneryModels
    SceneryLayer layer = SceneryLayer::Foreground;
    int32_t hitPoints = 0;
};
