#pragma once

// What the player's ship and the enemies share: a model with its box, hull and shields, the weapon
// kind that it fires, and the drawing of the ship within its wire shield sphere.

#include <array>
#include <cstdint>

#include "world/GameObject.h"

class Ship : public GameObject {
public:
    Vec3 GetPosition() const override { return position; }
    void Draw() override;
    // Shields take damage first; what they cannot take goes to the hull. Death is decided in the
    // subclass's Update.
    void TakeDamage(int amount) override;
    // The model's box, or the cube of the ship's radius while it has shields.
    Bounds GetBounds() const override;
    virtual float GetRotationZ() const = 0;  // roll, degrees
    virtual float GetRotationX() const = 0;  // pitch
    virtual float GetRotationY() const = 0;  // heading in the play field

    // Loads the model through the ObjectManager. Returns true when it WAS loaded; the caller
    // reports a failure.
    bool LoadModel(const char* fileName);
    void SetShieldColour(float red, float green, float blue, float alpha);
    void CalculateBounds();  // radius and centre from the box
    void CalculateRadius();
    void CalculateCentre();

    int32_t GetWeapon() const { return weapon; }
    int32_t GetShields() const { return shields; }
    int32_t GetHitPoints() const { return hitPoints; }

    // The GLU quadric of all shield spheres lives as long as the GL context.
    static void CreateQuadric();
    static void DeleteQuadric();
    // A sphere of lines, as shields are, and a filled one, as the player's bubble is, about the
    // origin.
    static void DrawSampleSpheres();

protected:
    Vec3 position;
    int32_t weapon = 0;                      // weapon kind (player/WeaponKinds.h); 0 fires nothing
    Bounds box;                              // of the model; all 0 when it failed to load
    int32_t hitPoints = 0;                   // hull strength
    int32_t shields = 0;                     // never left below 0
    float radius = 0.0F;                     // length of (box.maxX, box.maxY, box.maxZ)
    Vec3 centre;                             // middle of the box
    std::array<float, 4> shieldColour = {};  // RGBA
    uint32_t model = 0;                      // display list; 0 when no model is loaded

    // Draws a sphere about the origin in the current colour, without texture and glow, with the
    // shared quadric; nothing while there is none.
    static void DrawSphere(float sphereRadius, int slices, int stacks);

private:
    void DrawShield() const;
};
