#pragma once

// What the autopilot writes down: a row for each level played.

#include <cstdint>
#include <cstdio>

#include "AutopilotSpectator.h"

struct LevelRow {
    int32_t level;
    uint32_t seed;
    int32_t view;
    int32_t frames;
    bool cleared;
    int32_t shipsLost;
    int32_t score;  // at the end of the level
    int32_t money;
    int32_t shots;  // in this level
    int32_t hits;
    int32_t hurt;    // times that a shield or a ship was lost
    int32_t rammed;  // of these, to a rock
    // What the ship carries at the end.
    int32_t lives;
    int32_t shields;
    int32_t weapon;
    int32_t engine;
    int32_t bullets;
    // What a spectator sees, in frames.
    int32_t empty;     // the longest time without an enemy in the picture
    int32_t piled;     // for each two ships that stayed inside one another
    int32_t withBoss;  // a boss in the picture
    int32_t alone;     // of these, without an escort
};

void WriteHeading(std::FILE* file);
void WriteRow(std::FILE* file, const LevelRow& row);

// Notes the state of the game when a level begins and gives its row when it ends.
class LevelRecorder {
public:
    void Begin(uint32_t gameSeed);
    void NoteFrame();
    LevelRow End(bool cleared) const;
    int32_t Frames() const { return row.frames; }
    int32_t Level() const { return row.level; }

private:
    LevelRow row = {};
    Spectator spectator;
    int32_t livesBefore = 0;
    int32_t shieldsBefore = 0;
    bool touchedRock = false;  // in the frame before
    int32_t shotsAtBegin = 0;
    int32_t hitsAtBegin = 0;
};
