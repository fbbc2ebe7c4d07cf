#pragma once

// A burst of debris, two growing rings and, for a destroyed enemy, the points that it was worth.

#include <array>
#include <cstdint>

#include "world/GameObject.h"

class Explosion : public GameObject {
public:
    static constexpr int kParticles = 75;

    Explosion() { active = false; }

    void Start(Vec3 at, int32_t points);  // points: 0 writes nothing

    Vec3 GetPosition() const override { return position; }
    void Draw() override;
    bool Update() override;
    void TakeDamage(int /*amount*/) override {}
    Bounds GetBounds() const override { return {}; }  // nothing collides with an explosion

    // The debris colour, drawn once for the whole game, and the quadric of the rings, which lives
    // as long as the GL context.
    static void InitResources();
    static void FreeResources();
    static void CreateGLObjects();
    static void DeleteGLObjects();
    // A piece of debris, the rings and some points, about the origin.
    static void DrawSample();

private:
    struct Particle {
        float life = 0.0F;  // 1 at the start, used as alpha; dead at 0 or below
        float fade = 0.0F;  // taken from life each frame
        Vec3 position;
        Vec3 velocity;  // units per frame
        bool alive = false;
    };
    void DrawDebris() const;
    void DrawRings() const;
    void DrawScore() const;

    std::array<Particle, kParticles> particles;
    Vec3 position;
    float ringRadius = 0.0F;
    int32_t points = 0;
};
