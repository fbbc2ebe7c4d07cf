#include "world/EnemyGroup.h"

#include <algorithm>
#include <limits>

#include "core/Registry.h"
#include "platform/Random.h"
#include "world/EnemyTypes.h"

namespace {

constexpr int kShipPickTries = 10;
constexpr int32_t kAnyNumber = std::numeric_limits<int32_t>::max();

}  // namespace

EnemyGroup::EnemyGroup(int32_t row) {
    orders.row = row;
}

bool EnemyGroup::Read(LevelText& file, const PathTable& paths) {
    bonus = file.ReadInt("bonus of a group", -kMaxBonus, kMaxBonus);
    if (paths.empty()) {
        file.Fail("the group needs a path, and the level has none");
        return true;
    }
    const auto lastPath = static_cast<int32_t>(paths.size()) - 1;
    orders.path = paths[file.ReadInt("path of a group", 0, lastPath)].get();
    orders.type = file.ReadInt("enemy type of a group", 0, kAnyNumber);
    if (FindEnemyType(orders.type) == nullptr) {
        file.Fail("there is no enemy type " + std::to_string(orders.type));
    }
    const int32_t count = file.ReadInt("number of ships of a group", 1, kMaxShips);
    launchInterval = file.ReadInt("launch interval of a group", 0, kAnyNumber);
    startFrame = file.ReadInt("start frame of a group", 0, kAnyNumber);
    orders.fireChance = file.ReadInt("fire chance of a group", 0, kAnyNumber);
    orders.diveChance = file.ReadInt("dive chance of a group", 0, kAnyNumber);
    orders.diveKinds = file.ReadIntList("list of dive kinds of a group", kMaxDiveKinds);
    if (file.HasFailed()) {
        return true;
    }
    MakeShips(count);
    return false;
}

void EnemyGroup::MakeShips(int32_t count) {
    orders.rowLength = count;
    ships.reserve(count);
    for (int32_t column = 0; column < count; ++column) {
        ships.push_back(std::make_unique<EnemyShip>(orders, column));
        ships.back()->active = false;
    }
}

bool EnemyGroup::Update() {
    ForfeitBonus();
    if (!launching) {
        return true;
    }
    Launch();
    int32_t destroyed = 0;
    for (int32_t i = 0; i < launched; ++i) {
        EnemyShip& ship = *ships[i];
        if (!ship.active || ship.Update()) {
            ++destroyed;
        }
    }
    if (destroyed < ShipCount()) {
        return false;
    }
    launching = false;
    cleared = true;
    score += bonus;
    return true;
}

// The bonus is for those who are quick: it is gone once all survivors have reached the formation.
void EnemyGroup::ForfeitBonus() {
    if (launched != ShipCount() || bonus == 0) {
        return;
    }
    const bool allArrived = std::all_of(ships.begin(), ships.end(), [](const auto& ship) {
        return !ship->active || ship->HasFinishedPath();
    });
    if (allArrived) {
        bonus = 0;
    }
}

void EnemyGroup::Launch() {
    if (launched >= ShipCount()) {
        return;
    }
    ++launchTimer;
    if (launchTimer >= launchInterval) {
        launchTimer = 0;
        ships[launched]->active = true;
        ++launched;
    }
}

void EnemyGroup::Draw() {
    for (int32_t i = 0; i < launched; ++i) {
        if (ships[i]->active) {
            ships[i]->Draw();
        }
    }
}

EnemyShip* EnemyGroup::PickRandomShip() {
    for (int i = 0; i < kShipPickTries && !ships.empty(); ++i) {
        EnemyShip& ship = *ships[platform::Random() % ShipCount()];
        if (ship.active) {
            return &ship;
        }
    }
    return nullptr;
}
