// What the update of one frame costs when everything that the pools allow is in flight: 100 shots
// of the player's, 1000 of the enemies', 60 enemies, 20 explosions, 20 powerups under a magnet's
// pull and all the scenery. Nothing may be allocated meanwhile. Runs on the null platform with the
// tests' small models, so it needs no display and measures the game's own work: no drawing, no
// mixing of sounds.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "AllocationCount.h"
#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"
#include "player/WeaponManager.h"
#include "support/GameFixture.h"
#include "world/AttackWave.h"
#include "world/ExplosionManager.h"

namespace {

constexpr int kRows = 10;
constexpr int kShipsInRow = 6;
constexpr int kEnemies = kRows * kShipsInRow;
constexpr int kWarmUpFrames = 600;  // until every enemy is in the formation or diving
constexpr int kFramesToTheEdge = 250;
constexpr Vec3 kFarLeft = {-30.0F, 0.0F, 0.0F};

// The game as the tests know it, kept at its busiest. The player sits at the right edge and fires
// up along it, the enemies dive on the left: every shot is tested against everything and misses, so
// that nothing thins out.
class BusyGame : public GameFixture {
public:
    BusyGame() {
        SetUp();
        std::string waves = "Waves: 1\nBonus: 0\nGroups: " + std::to_string(kRows) + "\n";
        for (int i = 0; i < kRows; ++i) {
            waves += "Bonus: 0 Path: 0 Type: 5 Ships: " + std::to_string(kShipsInRow) +
                     " Interval: 1 Start: 0 Fire: 20 Dive: 100 Dives: 1,3\n";
        }
        WriteLevel(1, waves);
        levelManager->StartAt(1);
        playerShip->SetInvulnerable(kWarmUpFrames);
        keyDown[keyMap->Get(Action::Right)] = 1;
        keyDown[keyMap->Get(Action::Fire2)] = 1;
        for (int i = 0; i < kWarmUpFrames; ++i) {
            if (i >= kFramesToTheEdge) {
                // One shot a frame, so that a hundred are spread over the way that they live.
                const FireAllowance allowance = {.bullets = 1000};
                levelManager->GetPlayerWeapons().Fire(kWeaponSingle, *playerShip, allowance);
            }
            levelManager->Update();
        }
    }
    ~BusyGame() override { TearDown(); }
    BusyGame(const BusyGame&) = delete;
    BusyGame& operator=(const BusyGame&) = delete;

    void FillUp() {
        WeaponManager& playerWeapons = levelManager->GetPlayerWeapons();
        WeaponManager& enemyWeapons = levelManager->GetEnemyWeapons();
        playerShip->SetMagnet(true);
        for (int i = 0; i < PlayerShip::kMaxShields; ++i) {
            playerShip->AddShield();  // against passing rocks
        }
        while (playerWeapons.FreeCount() > 0) {
            playerWeapons.Fire(kWeaponSingle, *playerShip, {.bullets = 1000});
        }
        for (int i = 0; enemyWeapons.FreeCount() > 0; ++i) {
            enemyWeapons.Fire(kWeaponSingle, Enemy(i % kEnemies), {});
        }
        while (!levelManager->GetExplosions().Spawn(kFarLeft, 100, false)) {
        }
        levelManager->GetPowerups().Clear();
        while (levelManager->GetPowerups().LiveCount() < PowerupManager::kCapacity) {
            levelManager->GetPowerups().Drop(kFarLeft);
        }
    }

    // What is missing from the worst case; null when nothing is.
    const char* Shortfall() {
        if (levelManager->GetState() != GameState::Playing) {
            return "the game is not being played";
        }
        for (int i = 0; i < kEnemies; ++i) {
            if (!Enemy(i).active) {
                return "an enemy has been lost";
            }
        }
        if (playerShip->IsProtected()) {
            return "the enemies' shots are not tested against the player's ship";
        }
        return nullptr;
    }

private:
    EnemyShip& Enemy(int index) {
        return levelManager->GetCurrentWave()
            ->GetGroup(index / kShipsInRow)
            .GetShip(index % kShipsInRow);
    }
    void TestBody() override {}
};

void WorstCaseUpdate(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    BusyGame game;
    std::vector<double> microseconds;
    microseconds.reserve(1 << 20);
    int64_t allocated = 0;
    for ([[maybe_unused]] auto frame : state) {
        game.FillUp();
        const int64_t before = AllocationCount();
        const auto start = Clock::now();
        levelManager->Update();
        const std::chrono::duration<double> time = Clock::now() - start;
        allocated += AllocationCount() - before;
        state.SetIterationTime(time.count());
        if (microseconds.size() < microseconds.capacity()) {
            microseconds.push_back(time.count() * 1e6);
        }
        if (const char* shortfall = game.Shortfall()) {
            state.SkipWithError(shortfall);
            return;
        }
    }
    if (microseconds.empty()) {
        return;
    }
    std::sort(microseconds.begin(), microseconds.end());
    state.counters["median_us"] = microseconds[microseconds.size() / 2];
    state.counters["p99_us"] = microseconds[microseconds.size() * 99 / 100];
    state.counters["max_us"] = microseconds.back();
    state.counters["allocations"] =
        static_cast<double>(allocated) / static_cast<double>(state.iterations());
    if (allocated != 0) {
        state.SkipWithError("the update allocated memory");
    }
}
BENCHMARK(WorstCaseUpdate)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
