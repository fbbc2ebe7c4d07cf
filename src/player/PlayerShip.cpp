#include "player/PlayerShip.h"

#include <GL/gl.h>

#include <algorithm>
#include <array>
#include <limits>

#include "audio/SoundManager.h"
#include "core/Joystick.h"
#include "core/KeyMap.h"
#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "graphics/ObjectManager.h"
#include "player/Collision.h"
#include "player/PowerupKinds.h"
#include "player/WeaponManager.h"
#include "world/ExplosionManager.h"

namespace {

constexpr Vec3 kStart = {0.0F, 0.0F, 10.0F};
constexpr int32_t kStartLives = 2;
constexpr int32_t kStartBullets = 3;
constexpr int32_t kStartBulletCapacity = 12;
constexpr int32_t kStartMissileCapacity = 2;
constexpr int32_t kFireDelay = 7;            // frames between two volleys
constexpr int32_t kRespawnDelay = 125;       // frames
constexpr int32_t kRespawnProtection = 350;  // frames
constexpr int32_t kBonusProtection = 750;    // frames
constexpr int32_t kBonusDelay = 75;          // frames from the third sucker to its reward
constexpr uint32_t kAllSuckers = 7;

constexpr float kKeySteering = 0.2F;    // units per frame at engine speed 1
constexpr float kStickScale = 5000.0F;  // so that the full stick steers like a key
constexpr float kBankAngle = 50.0F;     // degrees for each unit per frame

constexpr std::array<float, PlayerShip::kEngineLevels> kEngineSpeed = {0.75F, 1.0F, 1.35F, 1.75F,
                                                                       2.2F};

// How the ship moves in a camera view: always in the plane that faces the camera.
struct Steering {
    Vec3 horizontal;    // where steering right goes
    Vec3 vertical;      // where steering up goes
    float bank = 0.0F;  // roll when steering right
    float nose = 0.0F;  // pitch when steering up
    Vec3 limit;         // of the position, to both sides of the middle
};
constexpr float kFree = std::numeric_limits<float>::infinity();
constexpr std::array<Steering, 5> kSteering = {{
    {{}, {}, 0.0F, 0.0F, {kFree, kFree, kFree}},  // views count from 1
    {{1.0F, 0.0F, 0.0F}, {0.0F, 0.0F, -1.0F}, 1.0F, 1.0F, {35.0F, kFree, 26.0F}},
    {{0.0F, 0.0F, 1.0F}, {0.0F, 1.0F, 0.0F}, 0.0F, -1.0F, {kFree, 27.0F, 34.0F}},
    {{0.0F, 0.0F, -1.0F}, {0.0F, 1.0F, 0.0F}, 0.0F, -1.0F, {kFree, 27.0F, 34.0F}},
    {{1.0F, 0.0F, 0.0F}, {0.0F, 1.0F, 0.0F}, 1.0F, -1.0F, {35.0F, 27.0F, kFree}},
}};

constexpr std::array<const char*, kWeaponKinds> kWeaponModModels = {
    "Objects\\SingleLaser.aob", "Objects\\DoubleLasers.aob", "Objects\\TripleLaser.aob",
    "Objects\\QuadLasers.aob",  "Objects\\Cannon.aob",
};
constexpr std::array<const char*, PlayerShip::kEngineLevels> kEngineModels = {
    "Objects\\BasicEngines.aob",     "Objects\\TwinBasicEngines.aob", "Objects\\BigEngines.aob",
    "Objects\\TwinInterEngines.aob", "Objects\\TwinBigEngines.aob",
};

// Display lists, by weapon kind (entry 0 unused) and by engine level.
std::array<uint32_t, kWeaponKinds + 1> weaponMods = {};
std::array<uint32_t, PlayerShip::kEngineLevels> engineMods = {};
uint32_t livesIcon = 0;
float livesIconWidth = 0.0F;
uint32_t aimingRing = 0;

void RaiseBelow(int32_t& level, int32_t limit) {
    if (level < limit) {
        ++level;
    }
}

void RaiseTo(int32_t& level, int32_t minimum) {
    level = std::max(level, minimum);
}

void LowerAbove(int32_t& level, int32_t minimum) {
    if (level > minimum) {
        --level;
    }
}

// The ring lies flat in its model.
void DrawRingAhead(float distance) {
    glPushMatrix();
    glTranslatef(0.0F, 0.0F, -distance);
    glRotatef(90.0F, 1.0F, 0.0F, 0.0F);
    glCallList(aimingRing);
    glPopMatrix();
}

}  // namespace

PlayerShip::PlayerShip() {
    ResetShip();
    SetShieldColour(1.0F, 0.6F, 0.0F, 0.5F);
}

bool PlayerShip::LoadMods() {
    ObjectManager& objects = *ObjectManager::Instance();
    bool missing = false;
    for (int i = 0; i < kWeaponKinds; ++i) {
        weaponMods[i + 1] = objects.Load(kWeaponModModels[i]);
        missing |= weaponMods[i + 1] == 0;
    }
    for (int i = 0; i < kEngineLevels; ++i) {
        engineMods[i] = objects.Load(kEngineModels[i]);
        missing |= engineMods[i] == 0;
    }
    Bounds icon;
    livesIcon = objects.Load("Objects\\PlayerBase-small.aob", icon);
    livesIconWidth = icon.maxX - icon.minX;
    aimingRing = objects.Load("Objects\\Target.aob");
    return missing || livesIcon == 0 || aimingRing == 0;
}

void PlayerShip::SetManagers(WeaponManager* weapons, ExplosionManager* explosions) {
    weaponManager = weapons;
    explosionManager = explosions;
}

void PlayerShip::ResetPlayer() {
    ResetShip();
    score = 0;
    money = 0;
}

// The ship of a new game. Apart from ResetPlayer because a ship made for the shop's preview must
// not cost the player of the real one the score and the money.
void PlayerShip::ResetShip() {
    ResetPosition();
    fireCooldown = 0;
    roll = 0.0F;
    pitch = 0.0F;
    homingMissiles = 0;
    dumbfireMissiles = 0;
    missileSpeed = 0;
    destroyed = false;
    respawnDelay = 0;
    invulnerableTime = 0;
    suckerMask = 0;
    bonusCountdown = 0;
    recentreTime = 0;
    missileCapacity = kStartMissileCapacity;
    bulletCapacity = kStartBulletCapacity;
    autofire = false;
    weapon = kWeaponSingle;
    engineLevel = 0;
    fireDelay = kFireDelay;
    shields = 0;
    bullets = kStartBullets;
    hasMagnet = false;
    strongMagnet = false;
    hitPoints = kStartLives;
}

void PlayerShip::ResetPosition() {
    position = kStart;
}

void PlayerShip::StartRecentre() {
    recentreTime = GLWindow::kViewBlendFrames;
}

bool PlayerShip::Update() {
    magnetActive = false;
    if (destroyed) {
        return LoseLife();
    }
    if (respawnDelay != 0) {
        --respawnDelay;
        return false;
    }
    LowerAbove(invulnerableTime, 0);
    if (bonusCountdown != 0) {
        --bonusCountdown;
        if (bonusCountdown == 0) {
            FullPowerBonus();
        }
    }
    Input input;
    if (recentreTime != 0) {
        RecentreStep();
    } else {
        input = ReadInput();
        Move(input);
    }
    LowerAbove(fireCooldown, 0);
    FireWeapons(input.fire);
    return false;
}

bool PlayerShip::LoseLife() {
    soundManager->PlayPlayerExplosion();
    explosionManager->Spawn(position, 0, true);
    --hitPoints;
    destroyed = false;
    if (hitPoints <= 0) {
        return true;
    }
    LoseUpgrades(false, 0);
    ResetPosition();
    respawnDelay = kRespawnDelay;
    SetInvulnerable(kRespawnProtection);
    return false;
}

// The player cannot steer while the camera swings round, so the ship glides in a straight line and
// arrives with it.
void PlayerShip::RecentreStep() {
    --recentreTime;
    if (recentreTime > 0) {
        const float share = 1.0F / static_cast<float>(recentreTime);
        position = position + (kStart - position) * share;
    } else {
        ResetPosition();
    }
    roll = 0.0F;
    pitch = 0.0F;
}

// Keys override the controller, and of two opposite keys the later in the list wins.
PlayerShip::Input PlayerShip::ReadInput() {
    Input input;
    const auto* stick = joystick != nullptr ? joystick->GetState() : nullptr;
    if (stick != nullptr) {
        input.horizontal = static_cast<float>(stick->lX) / kStickScale;
        input.vertical = static_cast<float>(-stick->lY) / kStickScale;
        input.fire = stick->buttons[0];
        magnetActive = stick->buttons[1] && hasMagnet;
    }
    if (keyMap->IsHeld(Action::Up)) {
        input.vertical = kKeySteering;
    }
    if (keyMap->IsHeld(Action::Down)) {
        input.vertical = -kKeySteering;
    }
    if (keyMap->IsHeld(Action::Left)) {
        input.horizontal = -kKeySteering;
    }
    if (keyMap->IsHeld(Action::Right)) {
        input.horizontal = kKeySteering;
    }
    if (keyMap->IsHeld(Action::Fire1)) {
        input.fire = true;
    }
    if (keyMap->IsHeld(Action::Fire2)) {
        magnetActive = hasMagnet;
    }
    return input;
}

void PlayerShip::Move(const Input& input) {
    const Steering& steering = kSteering[glWindow->GetView()];
    const float horizontal = input.horizontal * kEngineSpeed[engineLevel];
    const float vertical = input.vertical * kEngineSpeed[engineLevel];
    const Vec3 moved = position + steering.horizontal * horizontal + steering.vertical * vertical;
    position.x = std::clamp(moved.x, -steering.limit.x, steering.limit.x);
    position.y = std::clamp(moved.y, -steering.limit.y, steering.limit.y);
    position.z = std::clamp(moved.z, -steering.limit.z, steering.limit.z);
    roll = horizontal * steering.bank * kBankAngle;
    pitch = vertical * steering.nose * kBankAngle;
}

void PlayerShip::FireWeapons(bool fire) {
    if (!fire) {
        fireReleased = true;
        return;
    }
    if (!autofire && !fireReleased) {
        return;
    }
    if (fireCooldown == 0) {
        const FireAllowance allowance = {bullets, homingMissiles, dumbfireMissiles, missileSpeed};
        const bool nothingLeft = weaponManager->Fire(weapon, *this, allowance);
        if (!nothingLeft) {
            fireCooldown = fireDelay;
            soundManager->PlayWeaponSound(weapon);
        }
    }
    // Also for a press during the cooldown: it is used up without a volley.
    fireReleased = false;
}

// A hit that the shields cannot take in full costs one life, however large it is; the next Update
// takes the life.
void PlayerShip::TakeDamage(int amount) {
    shields -= amount;
    if (shields < 0) {
        shields = 0;
        destroyed = true;
    }
}

bool PlayerShip::CollideWithShip(GameObject& other) {
    if (IsProtected() ||
        !Collision::BoxesOverlap(other.GetPosition(), position, other.GetBounds(), box)) {
        return false;
    }
    TakeDamage(1);
    other.TakeDamage(1);
    soundManager->PlayHit();
    return true;
}

void PlayerShip::UpgradeEngine() {
    RaiseBelow(engineLevel, kEngineLevels - 1);
}

// Two volleys of the fitted weapon may always be in flight.
void PlayerShip::AddBullet() {
    if (bullets < bulletCapacity) {
        ++bullets;
        RaiseTo(bullets, 2 * ShotsPerVolley(weapon));
    }
}

void PlayerShip::AddBulletCapacity() {
    RaiseBelow(bulletCapacity, kMaxBulletCapacity);
}

void PlayerShip::AddShield() {
    RaiseBelow(shields, kMaxShields);
}

void PlayerShip::AddLife() {
    RaiseBelow(hitPoints, kMaxLives);
}

void PlayerShip::AddHomingMissile() {
    RaiseBelow(homingMissiles, missileCapacity);
}

void PlayerShip::AddDumbfireMissile() {
    RaiseBelow(dumbfireMissiles, missileCapacity);
}

void PlayerShip::AddMissileCapacity() {
    RaiseBelow(missileCapacity, kMaxMissileCapacity);
}

void PlayerShip::AddMissileSpeed() {
    RaiseBelow(missileSpeed, kMaxMissileSpeed);
}

void PlayerShip::SetMagnet(bool strong) {
    hasMagnet = true;
    strongMagnet = strong;
}

bool PlayerShip::GetMagnet(bool& strong) const {
    strong = strongMagnet;
    return hasMagnet;
}

bool PlayerShip::IsMagnetActive(bool& strong) const {
    strong = strongMagnet;
    return hasMagnet && magnetActive;
}

void PlayerShip::LoseUpgrades(bool countSucker, int32_t kind) {
    LowerAbove(weapon, kWeaponSingle);
    LowerAbove(engineLevel, 0);
    const int32_t twoVolleys = 2 * ShotsPerVolley(weapon);
    if (bullets > kStartBullets && bullets > twoVolleys) {
        --bullets;
    } else {
        RaiseTo(bullets, twoVolleys);
    }
    LowerAbove(homingMissiles, 0);
    LowerAbove(dumbfireMissiles, 0);
    autofire = false;
    hasMagnet = false;
    strongMagnet = false;
    if (countSucker) {
        suckerMask |= 1U << (kind - kSucker1);
        if (suckerMask == kAllSuckers) {
            suckerMask = 0;
            bonusCountdown = kBonusDelay;
        }
    }
}

// The reward for daring to collect all three suckers.
void PlayerShip::FullPowerBonus() {
    RaiseTo(bulletCapacity, 20);
    RaiseTo(bullets, bulletCapacity);
    SetInvulnerable(kBonusProtection);
    RaiseTo(missileCapacity, 2);
    RaiseTo(homingMissiles, 2);
    RaiseTo(dumbfireMissiles, 2);
    weapon = kWeaponQuad;
    autofire = true;
    RaiseTo(engineLevel, 3);
}

void PlayerShip::CopyStateTo(PlayerShip& other) const {
    other.hitPoints = hitPoints;
    other.shields = shields;
    other.invulnerableTime = invulnerableTime;
    other.engineLevel = engineLevel;
    other.weapon = weapon;
    other.missileCapacity = missileCapacity;
    other.homingMissiles = homingMissiles;
    other.dumbfireMissiles = dumbfireMissiles;
    other.bullets = bullets;
    other.bulletCapacity = bulletCapacity;
    other.autofire = autofire;
    other.fireCooldown = fireCooldown;
    other.fireDelay = fireDelay;
    other.missileSpeed = missileSpeed;
    other.model = model;
    other.centre = centre;
    other.radius = radius;
    other.shieldColour = shieldColour;
    other.position = {};
}

void PlayerShip::Draw() {
    if (respawnDelay != 0) {
        return;
    }
    Ship::Draw();
    glPushMatrix();
    glTranslatef(position.x, position.y, position.z);
    glRotatef(pitch, -1.0F, 0.0F, 0.0F);
    glRotatef(roll, 0.0F, 0.0F, -1.0F);
    glCallList(engineMods[engineLevel]);
    glCallList(weaponMods[weapon]);
    if (invulnerableTime != 0) {
        DrawBubble();
    }
    glPopMatrix();
}

// The bubble of an invulnerable ship fades as its time runs out. It is drawn in the ship's frame
// after the guns.
void PlayerShip::DrawBubble() const {
    const float strength = static_cast<float>(invulnerableTime) / kBonusProtection;
    glColor4f(0.2F, 0.9F, 0.5F, strength * 0.5F + 0.15F);
    glTranslatef(centre.x, centre.y, centre.z);
    DrawSphere(radius * 1.1F, 10, 10);
}

// In a row across the top of the view, whatever the camera does.
void PlayerShip::DrawLives() const {
    const int32_t spares = hitPoints - 1;
    glPushMatrix();
    glLoadIdentity();
    glTranslatef(0.0F, 0.0F, -50.0F);
    glRotatef(90.0F, 1.0F, 0.0F, 0.0F);
    glTranslatef(-(static_cast<float>(spares) * livesIconWidth / 2.0F), 0.0F, -24.3F);
    for (int32_t i = 0; i < spares; ++i) {
        glCallList(livesIcon);
        glTranslatef(livesIconWidth, 0.0F, 0.0F);
    }
    glPopMatrix();
}

// From behind the ship its line of fire is hard to see: two rings mark it.
void PlayerShip::DrawTarget() const {
    if (glWindow->GetView() != 4) {
        return;
    }
    glPushMatrix();
    glTranslatef(position.x, position.y, position.z);
    DrawRingAhead(44.0F);
    DrawRingAhead(22.0F);
    glPopMatrix();
}
