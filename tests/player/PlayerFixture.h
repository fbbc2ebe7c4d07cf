#pragma once

// The game world with helpers for the player's side of it.

#include <optional>
#include <ostream>

#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "graphics/GLWindow.h"
#include "platform/Resources.h"
#include "platform/null/NullMedia.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"
#include "player/WeaponManager.h"
#include "support/GameFixture.h"
#include "world/EnemyShip.h"
#include "world/ExplosionManager.h"

inline void PrintTo(Vec3 v, std::ostream* out) {
    *out << "(" << v.x << ", " << v.y << ", " << v.z << ")";
}

// Whether two points are the same but for rounding.
inline testing::AssertionResult Near(Vec3 actual, Vec3 expected) {
    if (Length(actual - expected) < 1e-3F) {
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure()
           << testing::PrintToString(actual) << " instead of " << testing::PrintToString(expected);
}

// A box in space that counts what hits it.
class Block : public GameObject {
public:
    Block(Vec3 position, const Bounds& bounds) : position(position), bounds(bounds) {}
    Vec3 GetPosition() const override { return position; }
    void Draw() override {}
    bool Update() override { return false; }
    void TakeDamage(int amount) override {
        damage += amount;
        bounds = boundsAfterHit.value_or(bounds);
    }
    Bounds GetBounds() const override { return bounds; }

    Vec3 position;
    Bounds bounds;
    std::optional<Bounds> boundsAfterHit;
    int damage = 0;
};

class PlayerFixture : public GameFixture {
protected:
    static void Hold(Action action, bool held = true) {
        keyDown[keyMap->Get(action)] = held ? 1 : 0;
    }
    static void Release(Action action) { Hold(action, false); }
    static void UpdatePlayer(int frames) {
        for (int i = 0; i < frames; ++i) {
            playerShip->Update();
        }
    }
    static void ExpectPlays(const char* wave, int count) {
        const bool exists = platform::FindResource(wave, "WAVE").data != nullptr;
        EXPECT_EQ(platform::null::SoundPlays(wave), exists ? count : 0) << wave;
    }
    static WeaponManager& Weapons() { return levelManager->GetPlayerWeapons(); }
    static PowerupManager& Powerups() { return levelManager->GetPowerups(); }

    // Starts level 1 with one group of ships on the field, all of them launched.
    static void PlayAgainst(int type, int ships) {
        WriteLevel(1, OneGroup(type, ships));
        levelManager->StartAt(1);
        for (int i = 0; i < ships; ++i) {
            levelManager->GetCurrentWave()->Update();
        }
    }
    static EnemyShip& Enemy(int index) {
        return levelManager->GetCurrentWave()->GetGroup(0).GetShip(index);
    }
};
