#include "AutopilotPilot.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLWindow.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"
#include "player/WeaponManager.h"
#include "world/SceneryManager.h"

const PilotSkill kBeginner = {.name = "beginner",
                              .reaction = 20,
                              .decision = 12,
                              .lookAhead = 50,
                              .watched = 2,
                              .margin = 0.2F,
                              .aimError = 1.2F,
                              .fireEvery = 14,
                              .greed = 12.0F,
                              .choosesItems = false,
                              .plansShopping = false,
                              .homeDown = 20.0F,
                              .homeDownSide = 12.0F};
const PilotSkill kExpert = {.name = "expert",
                            .reaction = 8,
                            .decision = 3,
                            .lookAhead = 90,
                            .watched = 24,
                            .margin = 0.8F,
                            .aimError = 0.2F,
                            .fireEvery = 8,
                            .greed = 30.0F,
                            .choosesItems = true,
                            .plansShopping = true,
                            .homeDown = 16.0F,
                            .homeDownSide = 4.0F};

namespace {

constexpr float kSteerSpeed = 0.2F;  // of a key, before the engine's factor
constexpr std::array<float, 5> kEngineSpeed = {0.75F, 1.0F, 1.35F, 1.75F, 2.2F};
constexpr float kPowerupFall = 0.2F;
constexpr float kFar = 1.0e6F;
constexpr int kBehind = 4;  // the view from behind the ship
constexpr int64_t kForgetAfter = 600;

bool IsSide(int view) {
    return view == 2 || view == 3;
}

// How far apart two places are for the guns: shots fly along Z and meet what is in line.
float Across(int view, Vec3 offset) {
    if (view == 1) {
        return std::abs(offset.x);
    }
    return IsSide(view) ? std::abs(offset.y) : std::max(std::abs(offset.x), std::abs(offset.y));
}

// Whether an offset across the line of fire lies within a box.
bool IsInLine(int view, Vec3 offset, const Bounds& box) {
    const bool x = offset.x > box.minX && offset.x < box.maxX;
    const bool y = offset.y > box.minY && offset.y < box.maxY;
    if (view == 1) {
        return x;
    }
    return IsSide(view) ? y : x && y;
}

// Where the barrels of a weapon point, relative to the ship.
std::vector<Vec3> Muzzles(int view, int32_t weapon) {
    const bool side = IsSide(view);
    if (weapon == kWeaponDouble) {
        const Vec3 barrel = side ? kDoubleBarrelSide : kDoubleBarrel;
        return {barrel, barrel * -1.0F};
    }
    if (weapon == kWeaponQuad) {
        const auto& barrels = side ? kQuadBarrelsSide : kQuadBarrels;
        return {barrels.begin(), barrels.end()};
    }
    return {{}};
}

bool Overlaps(float offset, float low, float high, float margin) {
    return offset > low - margin && offset < high + margin;
}

void Hold(Action action, bool held) {
    keyDown[keyMap->Get(action)] = held ? 1 : 0;
}

}  // namespace

void Pilot::PressKeys() {
    ++frame;
    ++sincePress;
    const PlayerShip& player = levelManager->GetPlayer();
    view = glWindow->GetView();
    ship = player.GetPosition();
    shipBox = player.GetBounds();
    speed = kSteerSpeed * kEngineSpeed[player.GetEngineLevel()];
    const int32_t swayNow = EnemyShip::GetFormationSway();
    swayStep = swayNow != sway ? swayNow - sway : swayStep;
    sway = swayNow;
    Look();
    if (frame % skill.decision == 0) {
        Decide();
    }
    Steer();
    HoldTrigger();
    if (frame % kForgetAfter == 0) {
        Forget();
    }
}

const Pilot::Memory& Pilot::Watch(const void* object, Vec3 position) {
    Memory& memory = memories[object];
    // Objects are used again: one that was out of sight, or has jumped, is another one.
    constexpr float kJump = 4.0F;
    if (memory.lastSeen != frame - 1 || Length(position - memory.position) > kJump) {
        memory = {.position = position, .velocity = {}, .firstSeen = frame, .lastSeen = frame};
        return memory;
    }
    memory.velocity = position - memory.position;
    memory.position = position;
    memory.lastSeen = frame;
    return memory;
}

void Pilot::Forget() {
    std::erase_if(memories, [this](const auto& entry) { return entry.second.lastSeen < frame; });
}

void Pilot::Look() {
    threats.clear();
    enemies.clear();
    LookAtShots();
    LookAtRocks();
    LookAtEnemies();
    const auto count = static_cast<size_t>(skill.watched);
    if (threats.size() > count) {
        // What comes straight at the ship holds the eye.
        const auto remoteness = [this](const Seen& threat) {
            const Vec3 offset = threat.position - ship;
            return std::abs(offset.x) + std::abs(offset.y) + 0.3F * std::abs(offset.z);
        };
        std::nth_element(
            threats.begin(), threats.begin() + skill.watched, threats.end(),
            [&remoteness](const Seen& a, const Seen& b) { return remoteness(a) < remoteness(b); });
        threats.resize(count);
    }
}

void Pilot::AddThreat(const Seen& threat, const Memory& memory) {
    if (frame - memory.firstSeen < skill.reaction) {
        return;
    }
    const float closing = threat.velocity.z;
    const float ahead = ship.z + shipBox.maxZ - (threat.position.z + threat.box.minZ);
    if (ahead > 0.0F && ahead < std::abs(closing) * static_cast<float>(skill.lookAhead) + 12.0F) {
        threats.push_back(threat);
    }
}

void Pilot::LookAtShots() {
    const WeaponManager& shots = levelManager->GetEnemyWeapons();
    for (int i = 0; i < shots.LiveCount(); ++i) {
        const Shot& shot = shots.GetShot(i);
        const Memory& memory = Watch(&shot, shot.GetPosition());
        AddThreat({shot.GetPosition(), memory.velocity, {}}, memory);
    }
}

void Pilot::LookAtRocks() {
    SceneryManager& scenery = levelManager->GetScenery();
    for (int i = 0; i < SceneryManager::kForegroundObjects; ++i) {
        const Scenery& rock = scenery.GetForeground(i);
        if (rock.IsInUse()) {
            const Memory& memory = Watch(&rock, rock.GetPosition());
            AddThreat({rock.GetPosition(), memory.velocity, rock.GetBounds()}, memory);
        }
    }
}

void Pilot::LookAtEnemies() {
    AttackWave* wave = levelManager->GetCurrentWave();
    for (int g = 0; wave != nullptr && g < wave->GroupCount(); ++g) {
        EnemyGroup& group = wave->GetGroup(g);
        for (int i = 0; i < group.ShipCount(); ++i) {
            EnemyShip& enemy = group.GetShip(i);
            if (enemy.active) {
                const Memory& memory = Watch(&enemy, enemy.GetPosition());
                enemies.push_back({enemy.GetPosition(), memory.velocity, enemy.GetBounds(),
                                   enemy.HasFinishedPath() && !enemy.IsDiving()});
            }
        }
    }
}

// --- Where to go ---

Vec3 Pilot::At(Vec3 place, float frames) const {
    const auto along = [reach = speed * frames](float from, float to) {
        return from + std::clamp(to - from, -reach, reach);
    };
    return {along(ship.x, place.x), along(ship.y, place.y), along(ship.z, place.z)};
}

// How much being on the way to `place` and staying there would hurt: 1 for each hit now, less for a
// later one.
float Pilot::Danger(Vec3 place) const {
    float danger = 0.0F;
    for (const Seen& threat : threats) {
        danger += DangerOf(threat, place);
    }
    return danger;
}

float Pilot::DangerOf(const Seen& threat, Vec3 place) const {
    constexpr float kStep = 3.0F;
    const Bounds& box = threat.box;
    const float closing = threat.velocity.z;
    if (closing <= 0.0F) {
        return 0.0F;
    }
    const auto horizon = static_cast<float>(skill.lookAhead);
    const float gap = ship.z - threat.position.z;
    const float from = std::max(0.0F, (gap + shipBox.minZ - box.maxZ) / closing - kStep);
    const float until = std::min(horizon, (gap + shipBox.maxZ - box.minZ) / closing + kStep);
    for (float t = from; t < until; t += kStep) {
        const Vec3 offset = threat.position + threat.velocity * t - At(place, t);
        if (Overlaps(offset.x, shipBox.minX - box.maxX, shipBox.maxX - box.minX, skill.margin) &&
            Overlaps(offset.y, shipBox.minY - box.maxY, shipBox.maxY - box.minY, skill.margin)) {
            return 1.0F - 0.5F * t / horizon;
        }
    }
    return 0.0F;
}

bool Pilot::PowerupPlace(Vec3& place) const {
    const PowerupManager& powerups = levelManager->GetPowerups();
    const PlayerShip& player = levelManager->GetPlayer();
    float nearest = skill.greed;
    for (int i = 0; i < powerups.LiveCount(); ++i) {
        const Powerup& powerup = powerups.GetPowerup(i);
        const int32_t kind = powerup.GetKind();
        const bool sucker = kind >= kSucker1 && kind <= kSucker3;
        if (sucker || (skill.choosesItems && !PowerupManager::IsWanted(player, kind))) {
            continue;
        }
        const Vec3 position = powerup.GetPosition();
        const float arrival = (ship.z + shipBox.minZ - position.z) / kPowerupFall;
        const float distance = Across(view, position - ship);
        const float late = (ship.z + shipBox.maxZ - position.z) / kPowerupFall;
        if (late > 0.0F && distance < nearest && distance < speed * late && arrival < 160.0F) {
            nearest = distance;
            place = position;
        }
    }
    return nearest < skill.greed;
}

float Pilot::ShotSpeed() const {
    return kWeapons[levelManager->GetPlayer().GetWeapon()].speed;
}

Vec3 Pilot::Future(const Seen& enemy, float frames) const {
    if (!enemy.inFormation) {
        return enemy.position + enemy.velocity * frames;
    }
    // The formation's rhythm is easily learnt: so far to the one side, so far to the other.
    constexpr float kLimit = EnemyShip::kSwayLimit;
    constexpr float kSwayUnit = 0.1F;  // world units of a step
    float phase = (swayStep > 0 ? 0.0F : 2.0F * kLimit) +
                  static_cast<float>(swayStep > 0 ? sway : -sway) + kLimit + frames;
    phase = std::fmod(phase, 4.0F * kLimit);
    const float then = phase < 2.0F * kLimit ? phase - kLimit : 3.0F * kLimit - phase;
    const float shift = (then - static_cast<float>(sway)) * kSwayUnit;
    return enemy.position + (IsSide(view) ? Vec3{0.0F, shift, 0.0F} : Vec3{shift, 0.0F, 0.0F});
}

Vec3 Pilot::Meeting(const Seen& enemy) const {
    const float closing = ShotSpeed() + (enemy.inFormation ? 0.0F : enemy.velocity.z);
    return Future(enemy, (ship.z - enemy.position.z) / std::max(closing, 0.1F));
}

bool Pilot::TargetPlace(Vec3& place) const {
    const int32_t weapon = levelManager->GetPlayer().GetWeapon();
    const float range = static_cast<float>(kWeapons[weapon].life) * ShotSpeed();
    float best = kFar;
    for (const Seen& enemy : enemies) {
        const float gap = ship.z - enemy.position.z;
        if (gap < 4.0F || gap > range + 4.0F) {
            continue;
        }
        const Vec3 meeting = Meeting(enemy);
        const float offPlane = view == 1 ? meeting.y : (IsSide(view) ? meeting.x : 0.0F);
        if (std::abs(offPlane) > 1.0F) {
            continue;
        }
        for (const Vec3& muzzle : Muzzles(view, weapon)) {
            const Vec3 stand = meeting - muzzle + misjudged;
            const float cost = Across(view, stand - ship) / speed + gap;
            if (cost < best) {
                best = cost;
                place = stand;
            }
        }
    }
    return best < kFar;
}

Vec3 Pilot::WantedPlace() {
    Vec3 place = ship;
    if (!PowerupPlace(place) && !TargetPlace(place)) {
        place = {};
    }
    // Across the picture it goes for something; down the field it stays where it likes to be.
    if (view == 1) {
        return {std::clamp(place.x, -35.0F, 35.0F), ship.y, skill.homeDown};
    }
    if (IsSide(view)) {
        return {ship.x, std::clamp(place.y, -27.0F, 27.0F), skill.homeDownSide};
    }
    return {std::clamp(place.x, -35.0F, 35.0F), std::clamp(place.y, -27.0F, 27.0F), ship.z};
}

void Pilot::Decide() {
    std::uniform_real_distribution<float> error(-skill.aimError, skill.aimError);
    misjudged = {error(chance), error(chance), 0.0F};
    goal = WantedPlace();
    if (Danger(goal) == 0.0F) {
        return;
    }
    // Not that way: the best of the places around.
    constexpr std::array<float, 9> kSteps = {0.0F,  -2.0F, 2.0F,   -4.0F, 4.0F,
                                             -7.0F, 7.0F,  -11.0F, 11.0F};
    constexpr float kFear = 60.0F;  // units that a hit is worth
    const Vec3 wanted = goal;
    float best = kFar;
    for (const float first : kSteps) {
        for (const float second : kSteps) {
            if (view != kBehind && second != 0.0F) {
                continue;
            }
            Vec3 place = ship;
            if (IsSide(view)) {
                place.y = std::clamp(ship.y + first, -27.0F, 27.0F);
            } else {
                place.x = std::clamp(ship.x + first, -35.0F, 35.0F);
                place.y = std::clamp(ship.y + second, -27.0F, 27.0F);
            }
            const float cost = Danger(place) * kFear + 0.3F * Across(view, place - wanted);
            if (cost < best) {
                best = cost;
                goal = place;
            }
        }
    }
}

// --- Hands ---

void Pilot::Steer() const {
    const Vec3 way = goal - ship;
    const float slack = 0.6F * speed;
    // What each key does in the view: to the right and up in the picture.
    float right = way.x;
    float up = way.y;
    if (view == 1) {
        up = -way.z;
    } else if (IsSide(view)) {
        right = view == 2 ? way.z : -way.z;
    }
    Hold(Action::Right, right > slack);
    Hold(Action::Left, right < -slack);
    Hold(Action::Up, up > slack);
    Hold(Action::Down, up < -slack);
}

bool Pilot::IsAligned() const {
    const std::vector<Vec3> muzzles = Muzzles(view, levelManager->GetPlayer().GetWeapon());
    return std::any_of(enemies.begin(), enemies.end(), [&](const Seen& enemy) {
        if (enemy.position.z > ship.z) {
            return false;
        }
        const Vec3 beside = ship - Meeting(enemy) - misjudged;
        return std::any_of(muzzles.begin(), muzzles.end(), [&](const Vec3& muzzle) {
            return IsInLine(view, beside + muzzle, enemy.box);
        });
    });
}

void Pilot::HoldTrigger() {
    const bool aligned = IsAligned();
    if (levelManager->GetPlayer().GetAutofire()) {
        Hold(Action::Fire1, aligned);
        return;
    }
    const bool press = aligned && sincePress >= skill.fireEvery;
    if (press) {
        sincePress = 0;
    }
    Hold(Action::Fire1, press);
}
