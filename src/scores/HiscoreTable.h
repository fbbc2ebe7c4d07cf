#pragma once

// The twenty best local results, best first, and their file.

#include <array>

#include "scores/HiscoreEntry.h"

class HiscoreTable {
public:
    static constexpr int kRecordSize = 40;
    static constexpr int kFileSize = kHiscoreEntries * kRecordSize;

    HiscoreTable();  // twenty default entries
    virtual ~HiscoreTable() = default;

    // Replaces the entries with the file's; a missing or invalid file leaves them as they are.
    void Load(const char* fileName);
    // True = failure; the table in memory stays.
    bool Save(const char* fileName) const;
    // Enters a result above the lowest score, below every older one with the same score.
    void Insert(int32_t score, const char* name, int32_t level, float hitRatio);

    int32_t LowestScore() const { return entries.back().score; }
    int32_t TopScore() const { return entries.front().score; }
    const HiscoreEntry& Entry(int index) const { return entries[index]; }

private:
    std::array<HiscoreEntry, kHiscoreEntries> entries;
};
