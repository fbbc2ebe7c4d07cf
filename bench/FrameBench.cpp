// What a whole frame of play costs on the renderer at hand, at 800 x 600. Run it in the assets
// folder on a display. Allocations are counted too: during play there must be none.

#include <GL/gl.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <string>

#include "AllocationCount.h"
#include "AutopilotGame.h"
#include "AutopilotPilot.h"
#include "GameStage.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/ObjectManager.h"
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

// Sends an object of `kind` down its layer again and again until it stands in the middle of the
// picture, above the point that it drifts past while frames are measured.
void BringIntoPicture(Scenery& object, int32_t kind, SceneryLayer layer, float range) {
    static std::array<Bounds, kSceneryModels.size()> bounds;
    const uint32_t list = ObjectManager::Instance()->Load(kSceneryModels[kind].model, bounds[kind]);
    const auto inPicture = [&object, range] {
        const Vec3 at = object.GetPosition();
        return std::abs(at.x) < range && std::abs(at.y) < range && at.z > -range && at.z < 0.0F;
    };
    do {
        object.Place(kind, layer, list, bounds[kind], 1);
        while (!object.Update() && !inPicture()) {
        }
    } while (!inPicture());
}

// Five rocks, and below them a planet before a nebula, which view 4 does without.
void CrowdScenery(int view) {
    constexpr float kRockRange = 25.0F;
    constexpr float kPlanetRange = 15.0F;
    constexpr float kNebulaRange = 26.0F;
    constexpr int32_t kPlanet = 3;
    constexpr int32_t kNebula = 5;
    SceneryManager& scenery = levelManager->GetScenery();
    for (int i = 0; i < SceneryManager::kForegroundObjects; ++i) {
        BringIntoPicture(scenery.GetForeground(i), i % 3, SceneryLayer::Foreground, kRockRange);
    }
    if (view != 4) {
        BringIntoPicture(scenery.GetIntermediate(), kPlanet, SceneryLayer::Intermed, kPlanetRange);
        BringIntoPicture(scenery.GetBackground(), kNebula, SceneryLayer::Background, kNebulaRange);
    }
}

// What the busiest moment of a late level has: forty ships, forty lit shots, five explosions, five
// rocks, a planet and a nebula, all in the picture.
void BusyScene(benchmark::State& state) {
    const int view = static_cast<int>(state.range(0));
    PlayUntilFormed(view);
    CrowdScenery(view);
    WeaponManager& shots = levelManager->GetEnemyWeapons();
    ExplosionManager& explosions = levelManager->GetExplosions();
    playerShip->SetInvulnerable(1000000);
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

// A level as it is played after the title has stood long enough. What an average hides counts here:
// frames that come late, as those do for which the driver has to make a new shader first. That
// takes longest with MESA_SHADER_CACHE_DISABLE=true, as on the first start on a machine.
void PlayedLevel(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::duration<double, std::milli>;
    constexpr double kInTime = 1000.0 / 60.0;
    const auto level = static_cast<int32_t>(state.range(0));
    while (!levelManager->GetRehearsal().IsDone()) {
        GameStage::Draw();
    }
    AutopilotGame::StartAt(level, static_cast<uint32_t>(level));
    AutopilotGame::TakeArms(TypicalArms(level));
    Pilot pilot(kExpert, static_cast<uint32_t>(level));
    double worst = 0.0;
    double late = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        pilot.PressKeys();
        playerShip->AddLife();
        state.ResumeTiming();
        const Clock::time_point start = Clock::now();
        GameStage::Draw();
        glFinish();
        GameStage::Update();
        const double taken = Milliseconds(Clock::now() - start).count();
        worst = std::max(worst, taken);
        late += taken > kInTime ? 1.0 : 0.0;
    }
    state.counters["worst"] = worst;
    state.counters["late"] = late;
}

BENCHMARK(FortyShips)
    ->DenseRange(1, 4)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
// A fixed number of frames, in which the scenery stays in the picture.
BENCHMARK(BusyScene)
    ->DenseRange(1, 4)
    ->Iterations(60)
    ->Repetitions(5)
    ->ReportAggregatesOnly()
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// The first six, with all four views and their sceneries, a minute of each.
BENCHMARK(PlayedLevel)
    ->DenseRange(1, 6)
    ->Iterations(3600)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

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
