#pragma once

// The screen after a game whose score enters a hiscore table: its statistics, and the name being
// typed.

#include <cstdint>
#include <string>

#include "scores/HiscoreEntry.h"

class WeaponManager;

class NameEntry {
public:
    // One frame of typing. Returns true once the result has been stored and handed to the online
    // client, in the frame after Return. `level` is what the tables store: levels completed + 1.
    bool Step(int32_t level, const WeaponManager& weapons);
    void Draw(const WeaponManager& weapons) const;

    const std::string& GetName() const { return name; }

private:
    void Type(char character);

    std::string name = std::string(kNameLength, '.');  // places not yet typed hold dots
    int cursor = 0;                                    // next place to type
    bool typing = true;
    bool fresh = true;  // the name is still the last game's
};
