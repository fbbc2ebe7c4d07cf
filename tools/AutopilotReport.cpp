#include "AutopilotReport.h"

#include "core/Registry.h"
#include "game/LevelManager.h"
#include "player/PlayerShip.h"
#include "player/WeaponManager.h"
#include "world/SceneryManager.h"

namespace {

// Rocks live in the field for a while after the contact: the ship then stands in one.
bool TouchesRock(const PlayerShip& ship) {
    constexpr float kSlack = 1.0F;
    const Bounds box = ship.GetBounds();
    for (int i = 0; i < SceneryManager::kForegroundObjects; ++i) {
        const Scenery& rock = levelManager->GetScenery().GetForeground(i);
        const Bounds other = rock.GetBounds();
        const Vec3 offset = rock.GetPosition() - ship.GetPosition();
        if (rock.IsInUse() && offset.x + other.maxX > box.minX - kSlack &&
            offset.x + other.minX < box.maxX + kSlack &&
            offset.y + other.maxY > box.minY - kSlack &&
            offset.y + other.minY < box.maxY + kSlack &&
            offset.z + other.maxZ > box.minZ - kSlack &&
            offset.z + other.minZ < box.maxZ + kSlack) {
            return true;
        }
    }
    return false;
}

}  // namespace

void WriteHeading(std::FILE* file) {
    std::fprintf(file,
                 "level,seed,view,frames,cleared,ships_lost,score,money,shots,hits,hurt,rammed,"
                 "lives,shields,weapon,engine,bullets,empty,piled,with_boss,alone\n");
}

void WriteRow(std::FILE* file, const LevelRow& row) {
    std::fprintf(file, "%d,%u,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d,%d\n",
                 row.level, row.seed, row.view, row.frames, row.cleared ? 1 : 0, row.shipsLost,
                 row.score, row.money, row.shots, row.hits, row.hurt, row.rammed, row.lives,
                 row.shields, row.weapon, row.engine, row.bullets, row.empty, row.piled,
                 row.withBoss, row.alone);
}

void LevelRecorder::Begin(uint32_t gameSeed) {
    const PlayerShip& ship = levelManager->GetPlayer();
    const WeaponManager& weapons = levelManager->GetPlayerWeapons();
    row = {};
    spectator = {};
    row.level = levelManager->GetLevel();
    row.view = levelManager->GetCurrentView();
    row.seed = gameSeed;
    livesBefore = ship.GetHitPoints();
    shieldsBefore = ship.GetShields();
    shotsAtBegin = weapons.ShotsFired();
    hitsAtBegin = weapons.ShotsHit();
}

void LevelRecorder::NoteFrame() {
    const PlayerShip& ship = levelManager->GetPlayer();
    ++row.frames;
    spectator.NoteFrame();
    const bool lost = ship.GetHitPoints() < livesBefore;
    // A ship that has been hit is lost in the next frame, where it was; then it starts afresh.
    if (lost) {
        ++row.shipsLost;
        row.rammed += touchedRock ? 1 : 0;
    }
    touchedRock = TouchesRock(ship);
    const bool shieldLost = ship.GetShields() < shieldsBefore;
    row.rammed += shieldLost && touchedRock ? 1 : 0;
    row.hurt += lost || shieldLost ? 1 : 0;
    livesBefore = ship.GetHitPoints();
    shieldsBefore = ship.GetShields();
}

LevelRow LevelRecorder::End(bool cleared) const {
    const PlayerShip& ship = levelManager->GetPlayer();
    const WeaponManager& weapons = levelManager->GetPlayerWeapons();
    LevelRow ended = row;
    ended.cleared = cleared;
    ended.score = score;
    ended.money = money;
    ended.shots = weapons.ShotsFired() - shotsAtBegin;
    ended.hits = weapons.ShotsHit() - hitsAtBegin;
    ended.lives = ship.GetHitPoints();
    ended.shields = ship.GetShields();
    ended.weapon = ship.GetWeapon();
    ended.engine = ship.GetEngineLevel();
    ended.bullets = ship.GetBullets();
    ended.empty = spectator.LongestEmpty();
    ended.piled = spectator.Piled();
    ended.withBoss = spectator.WithBoss();
    ended.alone = spectator.BossAlone();
    return ended;
}
