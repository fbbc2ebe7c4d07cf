#include "AutopilotSpectator.h"

#include <algorithm>

#include "Picture.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "world/EnemyTypes.h"

namespace {

constexpr float kInside = 2.0F;   // units between the middles of two ships that look like one
constexpr int32_t kPassing = 30;  // frames that two ships may take to fly past one another

std::vector<EnemyShip*> ShipsInPicture() {
    std::vector<EnemyShip*> ships;
    AttackWave* wave = levelManager->GetCurrentWave();
    for (int g = 0; wave != nullptr && g < wave->GroupCount(); ++g) {
        EnemyGroup& group = wave->GetGroup(g);
        for (int i = 0; i < group.ShipCount(); ++i) {
            EnemyShip& ship = group.GetShip(i);
            if (ship.active && IsInPicture(levelManager->GetCurrentView(), ship.GetPosition())) {
                ships.push_back(&ship);
            }
        }
    }
    return ships;
}

bool IsBoss(const EnemyShip* ship) {
    return ship->GetType() >= kFirstBossType;
}

}  // namespace

void Spectator::NoteFrame() {
    const std::vector<EnemyShip*> ships = ShipsInPicture();
    // The end of a level is no longer play.
    empty = ships.empty() && levelManager->GetCurrentWave() != nullptr ? empty + 1 : 0;
    longestEmpty = std::max(longestEmpty, empty);
    NotePiles(ships);
    const auto bosses = std::count_if(ships.begin(), ships.end(), IsBoss);
    withBoss += bosses > 0 ? 1 : 0;
    bossAlone += bosses > 0 && static_cast<size_t>(bosses) == ships.size() ? 1 : 0;
}

void Spectator::NotePiles(const std::vector<EnemyShip*>& ships) {
    std::map<std::pair<EnemyShip*, EnemyShip*>, int32_t> now;
    for (size_t a = 0; a < ships.size(); ++a) {
        for (size_t b = a + 1; b < ships.size(); ++b) {
            if (IsBoss(ships[a]) || IsBoss(ships[b]) ||
                Length(ships[a]->GetPosition() - ships[b]->GetPosition()) > kInside) {
                continue;
            }
            const auto pair = std::make_pair(ships[a], ships[b]);
            const auto before = together.find(pair);
            now[pair] = before == together.end() ? 1 : before->second + 1;
            piled += now[pair] > kPassing ? 1 : 0;
        }
    }
    together = std::move(now);
}
