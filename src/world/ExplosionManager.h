#pragma once

#include "core/Pool.h"
#include "world/Explosion.h"

// Owns every explosion: twenty, recycled.
class ExplosionManager {
public:
    static constexpr int kCapacity = 20;

    ~ExplosionManager();
    void Init();
    // Starts an explosion showing `points` (0 shows none). True when none was free: nothing is
    // shown or heard then.
    bool Spawn(Vec3 at, int32_t points, bool withSound);
    void Update();
    void Draw();
    // Ends all of them for a new game. True = failure: one has got lost.
    bool Reset();

    int ActiveCount() const { return explosions.LiveCount(); }
    const Explosion& GetExplosion(int index) const { return explosions.Live(index); }

private:
    Pool<Explosion> explosions{kCapacity};
};
