// What a whole frame of play costs on the renderer at hand, at 800 x 600. Run it in the assets
// folder on a display. Allocations are counted too: during play there must be none.

#include <GL/gl.h>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "AllocationCount.h"
#include "GameStage.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "player/PlayerShip.h"
#include "player/WeaponManager.h"
#include "world/ExplosionManager.h"
#include "world/SceneryManager.h"

namespace {

std::unique_ptr<GameStage> stage;

// Four rows of ten, straight into their formation, with the types that a late level has.
std::string FortyShipsLevel(int view) {
    const std::string start = view == 1 || view == 4 ? "0 0 -45" : "0 0 -60";
    std::string text = "Title: Bench\nAuthor: Bench\nView: " + std::to_string(view) +
                       "\nPaths: 1\nPoints: 2\n: " + start + "  0 0 -20\n" +
                       "Waves: 1\nWave bonus: 0\nGroups: 4\n";
    for (const int type : {0, 1, 2, 5}) {
        text += "Bonus: 0 Path: 0 Type: " + std::to_string(type) +
                " Ships: 10 Interval: 1 Start: 0 Fire: 0 Dive: 0 Dives: 0\n";
    }
    return text;
}

void PlayUntilFormed(int view) {
    stage->WriteLevel1(FortyShipsLevel(view));
    levelManager->StartAt(1);
    for (int i = 0; i < 400; ++i) {
        GameStage::Update();
    }
}

void DrawFrames(benchmark::State& state) {
    GameStage::Draw();
    glFinish();
    const int64_t before = AllocationCount();
    int64_t frames = 0;
    for (auto _ : state) {
        GameStage::Draw();
        glFinish();
        GameStage::Update();
        ++frames;
        state.PauseTiming();
        playerShip->SetInvulnerable(0);
        state.ResumeTiming();
    }
    state.counters["allocations/frame"] =
        static_cast<double>(AllocationCount() - before) / static_cast<double>(frames);
}

void FortyShips(benchmark::State& state) {
    PlayUntilFormed(static_cast<int>(state.range(0)));
    DrawFrames(state);
}

// Forty ships, forty lit shots, five explosions, and the scenery that has drifted in.
void BusyScene(benchmark::State& state) {
    const int view = static_cast<int>(state.range(0));
    PlayUntilFormed(view);
    // Scenery takes its time to drift into the picture.
    for (int i = 0; i < 900; ++i) {
        levelManager->GetScenery().Update(false);
    }
    WeaponManager& shots = levelManager->GetEnemyWeapons();
    ExplosionManager& explosions = levelManager->GetExplosions();
    playerShip->SetInvulnerable(1000000);
    GameStage::Draw();
    glFinish();
    int64_t frames = 0;
    const int64_t before = AllocationCount();
    for (auto _ : state) {
        state.PauseTiming();
        AttackWave* wave = levelManager->GetCurrentWave();
        for (int i = 0; wave != nullptr && shots.LiveCount() < 40 && i < 40; ++i) {
            EnemyShip* ship = wave->PickRandomShip();
            if (ship != nullptr) {
                shots.Fire(1, *ship, {});
            }
        }
        while (explosions.ActiveCount() < 5) {
            explosions.Spawn({-20.0F + 10.0F * static_cast<float>(explosions.ActiveCount()), 0, 5},
                             100, false);
        }
        state.ResumeTiming();
        GameStage::Draw();
        glFinish();
        GameStage::Update();
        ++frames;
    }
    state.counters["allocations/frame"] =
        static_cast<double>(AllocationCount() - before) / static_cast<double>(frames);
}

BENCHMARK(FortyShips)
    ->DenseRange(1, 4)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BusyScene)->DenseRange(1, 4)->MeasureProcessCPUTime()->UseRealTime()->Unit(
    benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    stage = std::make_unique<GameStage>(".", int16_t{800}, int16_t{600});
    if (stage->HasFailed()) {
        std::fputs(stage->Log().c_str(), stderr);
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    stage.reset();
    return 0;
}
