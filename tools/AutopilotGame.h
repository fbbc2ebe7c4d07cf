#pragma once

// The game without a display for the autopilot: fills the registry as start-up does, starts games
// with the arms of choice, and plays frames without drawing them.

#include <cstdint>
#include <string>

// What the ship of a player carries.
struct Arms {
    int32_t weapon;
    int32_t engine;
    int32_t bullets;
    int32_t bulletCapacity;
    int32_t shields;
    int32_t homing;
    int32_t dumbfire;
    bool autofire;
};

// What an average player has by the time a level is reached.
const Arms& TypicalArms(int32_t level);

class AutopilotGame {
public:
    AutopilotGame();  // in the folder with the assets
    ~AutopilotGame();
    AutopilotGame(const AutopilotGame&) = delete;
    AutopilotGame& operator=(const AutopilotGame&) = delete;

    // The same seed starts the same game.
    static void StartAt(int32_t level, uint32_t seed);
    static void TakeArms(const Arms& arms);
    static void PlayFrame();

    // Lines of the log that say that something is wrong.
    std::string Faults() const;

private:
    std::string log;
};
