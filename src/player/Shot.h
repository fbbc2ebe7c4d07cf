#pragma once

// One projectile in flight: a bolt or shell that flies straight, or a missile. Made once for its
// pool and filled in by the WeaponManager at each launch.

#include <cstdint>

#include "world/GameObject.h"

class ExplosionManager;
class LevelManager;

class Shot final : public GameObject {
public:
    Vec3 GetPosition() const override { return position; }
    void Draw() override;
    bool Update() override;  // true when it must go back to the pool
    void TakeDamage(int /*amount*/) override {}
    Bounds GetBounds() const override { return {}; }  // shots are points in every hit test

    // Copies everything but the missile kind and target: further shots of a volley.
    void InitFrom(const Shot& other);
    int32_t GetDamage() const { return damage; }
    // Whether the shot lies in the target's box; a hit is heard.
    bool HitTest(const GameObject& hitTarget) const;
    // The sounds of a hit.
    void SoundHit() const;

    static void SetLinks(LevelManager* levelManager, ExplosionManager* explosions);
    // Switches off the lights that the last frame's shots took; light 0 belongs to the scene.
    static void ResetLights();
    // Play knows only so many sets of lights that are on: none, few, all. Switches one of them on,
    // without shots and all black, for what is drawn only to have been drawn with them; the caller
    // puts the lights back as they were.
    static constexpr int kLightSets = 3;
    static void SwitchLightsOn(int set);

    Colour colour;  // of its light
    Vec3 position;
    Vec3 velocity;  // units per frame; not used by homing missiles
    int32_t damage = 0;
    int32_t life = 0;  // frames left
    bool isMissile = false;
    int32_t missileKind = 0;   // 0 homing, 1 dumbfire
    float homingSpeed = 0.0F;  // units per frame of a homing missile
    // The enemy that a homing missile chases; it belongs to the current level. Null when that has
    // gone: the missile then looks for another in its next update.
    GameObject* target = nullptr;
    uint32_t model = 0;  // display list

private:
    bool Home();
    void Burst() const;
    void TurnToTarget() const;
    void AddLight() const;
};
