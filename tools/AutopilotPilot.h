#pragma once

// A player who looks at the game and presses keys. It knows nothing that a player could not see: a
// new shot is noticed only after the reaction time, and what moves is judged by how it has moved.

#include <cstdint>
#include <random>
#include <unordered_map>
#include <vector>

#include "core/Geometry.h"

class EnemyShip;
class GameObject;

// What tells a beginner from an expert. Times in frames, lengths in world units.
struct PilotSkill {
    const char* name;
    int reaction;        // until a new shot or rock is noticed
    int decision;        // between two looks at the whole picture
    int lookAhead;       // how far ahead danger is foreseen
    int watched;         // how many threats can be watched at once
    float margin;        // kept between the ship and a threat
    float aimError;      // how far off it may judge where to shoot
    int fireEvery;       // between two presses of the fire key
    float greed;         // how far it goes for a powerup
    bool choosesItems;   // leaves weapons alone that are worse than its own
    bool plansShopping;  // knows what it needs; others buy the dearest thing that they can
    float homeDown;      // where it likes to be down the field, seen from above
    float homeDownSide;  // the same in the side views, where ships are thin targets
};

extern const PilotSkill kBeginner;
extern const PilotSkill kExpert;

class Pilot {
public:
    Pilot(const PilotSkill& skill, uint32_t seed) : skill(skill), chance(seed) {}

    // Sets the keys for the coming frame of play.
    void PressKeys();

private:
    // Something that would hurt, or is worth hitting, as it seems to move.
    struct Seen {
        Vec3 position;
        Vec3 velocity;
        Bounds box;
        bool inFormation = false;  // sways with the others
    };
    // What is remembered of an object from frame to frame.
    struct Memory {
        Vec3 position;
        Vec3 velocity;
        int64_t firstSeen = 0;
        int64_t lastSeen = 0;
    };

    const Memory& Watch(const void* object, Vec3 position);
    void Look();
    void LookAtShots();
    void LookAtRocks();
    void LookAtEnemies();
    void AddThreat(const Seen& threat, const Memory& memory);
    void Decide();
    Vec3 WantedPlace();
    bool PowerupPlace(Vec3& place) const;
    bool TargetPlace(Vec3& place) const;
    // Where an enemy will be in so many frames.
    Vec3 Future(const Seen& enemy, float frames) const;
    Vec3 Meeting(const Seen& enemy) const;  // of a shot fired now with that enemy
    float ShotSpeed() const;
    float Danger(Vec3 place) const;
    float DangerOf(const Seen& threat, Vec3 place) const;
    Vec3 At(Vec3 place, float frames) const;  // of the ship on its way to `place`
    bool IsAligned() const;
    void Steer() const;
    void HoldTrigger();
    void Forget();

    const PilotSkill& skill;
    int64_t frame = 0;
    int view = 1;
    float speed = 0.0F;  // of the ship along one axis, units per frame
    Vec3 ship;
    Bounds shipBox;
    Vec3 goal;       // where it steers
    Vec3 misjudged;  // by how much it aims beside the target at present
    int sincePress = 0;
    int32_t sway = 0;         // of the formation
    int32_t swayStep = 1;     // and where it goes
    std::minstd_rand chance;  // the pilot's own: the game's chances do not depend on it
    std::unordered_map<const void*, Memory> memories;
    std::vector<Seen> threats;
    std::vector<Seen> enemies;
};
