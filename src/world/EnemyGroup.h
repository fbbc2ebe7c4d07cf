#pragma once

// A row of identical enemies that enter one after another along one path and then hold one row of
// the formation.

#include <memory>
#include <vector>

#include "world/EnemyShip.h"

using PathTable = std::vector<std::unique_ptr<Path>>;

class EnemyGroup {
public:
    static constexpr int kMaxShips = 1000;  // a slip of the pen, not a formation
    static constexpr int kMaxDiveKinds = 5;
    static constexpr int32_t kMaxBonus = 100'000'000;  // of a group or a wave

    explicit EnemyGroup(int32_t row);
    virtual ~EnemyGroup() = default;
    EnemyGroup(const EnemyGroup&) = delete;  // its ships refer to its orders
    EnemyGroup& operator=(const EnemyGroup&) = delete;

    // Reads the group's record and makes its ships. True = failure (the fault is the reader's).
    bool Read(LevelText& file, const PathTable& paths);
    // One frame; true when the group is cleared.
    bool Update();
    void Draw();
    // A random live ship; null when ten draws find none.
    EnemyShip* PickRandomShip();

    bool IsLaunching() const { return launching; }
    bool IsCleared() const { return cleared; }
    void Start() { launching = true; }
    int32_t StartFrame() const { return startFrame; }
    // Ships, launched or not: for the autopilot and the level check.
    int ShipCount() const { return static_cast<int>(ships.size()); }
    EnemyShip& GetShip(int index) { return *ships[index]; }
    const EnemyOrders& GetOrders() const { return orders; }
    int32_t LaunchInterval() const { return launchInterval; }

private:
    void ForfeitBonus();
    void Launch();
    void MakeShips(int32_t count);

    int32_t startFrame = 0;  // frame of the wave at which the group starts
    bool launching = false;  // launching, flying, drawn and updated
    bool cleared = false;    // every ship has been destroyed
    int32_t bonus = 0;       // points for destroying all of it; can be forfeited
    int32_t launched = 0;
    int32_t launchInterval = 0;  // frames between two launches
    int32_t launchTimer = 0;
    EnemyOrders orders;
    std::vector<std::unique_ptr<EnemyShip>> ships;  // in launch order
};
