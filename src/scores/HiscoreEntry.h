#pragma once

#include <array>
#include <cstdint>

constexpr int kNameLength = 20;      // characters of a player's name
constexpr int kHiscoreEntries = 20;  // of the local and of the online table

// Program version that marks results, preferences and requests.
constexpr std::array<int8_t, 3> kProgramVersion = {1, 0, 0};

// One result.
struct HiscoreEntry {
    char name[24] = {};  // zero-terminated, at most kNameLength characters, padded with dots
    int32_t score = 0;
    int32_t level = 0;      // levels completed + 1
    float hitRatio = 0.0F;  // shots that hit, in percent of shots fired
    std::array<int8_t, 3> version = {};
    uint32_t time = 0;  // seconds since 1 January 1970
};

// Copies at most kNameLength characters of `name` into the entry.
void SetName(HiscoreEntry& entry, const char* name);
// The moment as the tables store it.
uint32_t TimeNow();
