#pragma once

// An attack wave: groups of enemies that come in together. It is over when every ship of every
// group has been destroyed.

#include <memory>
#include <vector>

#include "world/EnemyGroup.h"

class AttackWave {
public:
    static constexpr int kMaxGroups = 1000;

    AttackWave() = default;
    virtual ~AttackWave() = default;

    // True = failure (the fault is the reader's).
    bool Read(LevelText& file, const PathTable& paths);
    // One frame; true when the wave is over.
    bool Update();
    void Draw();
    // A random live enemy for a homing missile; null when ten draws find none.
    EnemyShip* PickRandomShip();

    int GroupCount() const { return static_cast<int>(groups.size()); }
    EnemyGroup& GetGroup(int index) { return *groups[index]; }
    int32_t GetFrame() const { return frame; }

private:
    std::vector<std::unique_ptr<EnemyGroup>> groups;
    int32_t bonus = 0;  // points when the wave is over
    int32_t frame = 0;  // frames since the wave started
};
