#pragma once

// The ship that the user flies: steering in the plane of the current camera view, volleys,
// upgrades, lives with respawn and invulnerability, the magnet and the reward for three different
// suckers.

#include "world/Ship.h"

class ExplosionManager;
class WeaponManager;

class PlayerShip : public Ship {
public:
    static constexpr int32_t kMaxShields = 5;
    static constexpr int32_t kMaxLives = 5;
    static constexpr int32_t kEngineLevels = 5;
    static constexpr int32_t kMaxBulletCapacity = 40;
    static constexpr int32_t kMaxMissileCapacity = 10;
    static constexpr int32_t kMaxMissileSpeed = 10;

    PlayerShip();

    // The models of engines, guns, lives icon and aiming ring (GL context needed). True = failure:
    // at least one is missing.
    static bool LoadMods();
    void SetManagers(WeaponManager* weapons, ExplosionManager* explosions);
    WeaponManager* GetWeaponManager() const { return weaponManager; }

    void ResetPlayer();  // new game; also zeroes score and money
    void ResetPosition();
    void StartRecentre();  // glide back to the start position while the camera changes its view

    void Draw() override;
    bool Update() override;  // true: the last life has been lost
    void TakeDamage(int amount) override;
    float GetRotationZ() const override { return roll; }
    float GetRotationX() const override { return pitch; }
    float GetRotationY() const override { return 0.0F; }

    // Waiting to respawn or invulnerable: enemy shots pass through.
    bool IsProtected() const { return invulnerableTime != 0 || respawnDelay != 0; }
    bool IsRespawning() const { return respawnDelay != 0; }
    // The ram test: on contact both take one point of damage.
    bool CollideWithShip(GameObject& other);
    void DrawLives() const;
    void DrawTarget() const;
    // For the shop's preview ship.
    void CopyStateTo(PlayerShip& other) const;

    void SetWeapon(int32_t kind) { weapon = kind; }
    void UpgradeEngine();
    void AddBullet();
    void AddBulletCapacity();
    void AddShield();
    void AddLife();
    void AddHomingMissile();
    void AddDumbfireMissile();
    void AddMissileCapacity();
    void AddMissileSpeed();
    void SetAutofire(bool on) { autofire = on; }
    void SetMagnet(bool strong);
    void SetInvulnerable(int32_t frames) { invulnerableTime = frames; }
    // On the loss of a life and for a sucker; `countSucker` counts sucker `kind` (351 to 353)
    // towards the bonus.
    void LoseUpgrades(bool countSucker, int32_t kind);

    int32_t GetEngineLevel() const { return engineLevel; }
    int32_t GetBullets() const { return bullets; }
    int32_t GetBulletCapacity() const { return bulletCapacity; }
    int32_t GetHomingMissiles() const { return homingMissiles; }
    int32_t GetDumbfireMissiles() const { return dumbfireMissiles; }
    int32_t GetMissileCapacity() const { return missileCapacity; }
    int32_t GetMissileSpeed() const { return missileSpeed; }
    bool GetAutofire() const { return autofire; }
    int32_t GetInvulnerableTime() const { return invulnerableTime; }
    // Both report in `strong` whether the fitted magnet is the strong one.
    bool GetMagnet(bool& strong) const;
    bool IsMagnetActive(bool& strong) const;  // fitted, and Fire2 held in this frame

private:
    // What the player asks for in this frame: steering to the right and up, at most 0.2 each.
    struct Input {
        float horizontal = 0.0F;
        float vertical = 0.0F;
        bool fire = false;
    };

    void ResetShip();
    void RecentreStep();
    Input ReadInput();  // also decides whether the magnet is on
    void Move(const Input& input);
    void FireWeapons(bool fire);
    bool LoseLife();  // true: it was the last
    void FullPowerBonus();
    void DrawBubble() const;

    float roll = 0.0F;  // degrees
    float pitch = 0.0F;
    int32_t respawnDelay = 0;                      // frames until the destroyed ship reappears
    int32_t invulnerableTime = 0;                  // frames left
    WeaponManager* weaponManager = nullptr;        // not owned
    ExplosionManager* explosionManager = nullptr;  // not owned
    int32_t engineLevel = 0;                       // 0 to 4
    int32_t homingMissiles = 0;                    // how many may be in flight at once
    int32_t dumbfireMissiles = 0;
    int32_t missileCapacity = 2;  // upper limit of both
    int32_t missileSpeed = 0;     // speed level
    int32_t bullets = 3;          // how many other shots may be in flight at once
    int32_t bulletCapacity = 12;  // upper limit of that
    int32_t fireDelay = 7;        // frames between two volleys
    int32_t fireCooldown = 0;     // frames left before the next one
    bool autofire = false;
    bool fireReleased = true;    // fire has been seen up since it was last used
    bool destroyed = false;      // hit beyond the shields; handled by the next Update
    uint32_t suckerMask = 0;     // bit k: sucker 351 + k collected
    int32_t bonusCountdown = 0;  // frames until the full-power bonus; 0 = none pending
    bool hasMagnet = false;
    bool strongMagnet = false;
    bool magnetActive = false;  // Fire2 is held in this frame
    int32_t recentreTime = 0;   // frames left of the glide
};
