#include "scores/HiscoreTable.h"

#include <cmath>
#include <cstring>

#include "core/DebugLog.h"
#include "platform/Files.h"
#include "platform/Random.h"
#include "scores/Bytes.h"

namespace {

constexpr int kNameBytes = 21;  // of a record: a name and its terminating zero
using NameBytes = std::array<uint8_t, kNameBytes>;

// What is added to byte `j` of the name in record `i`: enough that nobody reads the names, or
// changes one, with a plain editor.
uint8_t Scramble(int i, int j) {
    return static_cast<uint8_t>(i - j % 3);
}

NameBytes ScrambledName(const HiscoreEntry& entry, int record) {
    NameBytes bytes = {};
    for (uint8_t& byte : bytes) {
        const auto noise = static_cast<int8_t>(platform::Random() & 0xFF);
        byte = static_cast<uint8_t>('0' + noise % 64);
    }
    std::memcpy(bytes.data(), entry.name, strnlen(entry.name, kNameLength) + 1);
    for (int j = 0; j < kNameBytes; ++j) {
        bytes[j] = static_cast<uint8_t>(bytes[j] + Scramble(record, j));
    }
    return bytes;
}

}  // namespace

HiscoreTable::HiscoreTable() {
    for (int i = 0; i < kHiscoreEntries; ++i) {
        HiscoreEntry& entry = entries[i];
        SetName(entry, "VEXO................");
        entry.score = (kHiscoreEntries - i) * 100;
        entry.version = kProgramVersion;
        entry.time = TimeNow();
    }
}

void HiscoreTable::Load(const char* fileName) {
    std::FILE* probe = platform::OpenFile(fileName, "rb");
    if (probe == nullptr) {
        Log("\nWARNING: Cant load hiscores from file\n\n");
        return;
    }
    std::fclose(probe);
    std::vector<uint8_t> bytes;
    if (platform::ReadWholeFile(fileName, bytes, kFileSize) || bytes.size() != kFileSize) {
        Log("\nWARNING: Hiscores file is invalid\n\n");
        return;
    }
    ByteReader file(bytes);
    for (int i = 0; i < kHiscoreEntries; ++i) {
        char name[kNameBytes + 1] = {};
        for (int j = 0; j < kNameBytes; ++j) {
            name[j] = static_cast<char>(file.NextByte() - Scramble(i, j));
        }
        HiscoreEntry& entry = entries[i];
        SetName(entry, name);
        entry.score = file.Get<int32_t>();
        entry.level = file.Get<int32_t>();
        const auto ratio = file.Get<float>();
        entry.hitRatio = std::isfinite(ratio) ? ratio : 0.0F;
        for (int8_t& number : entry.version) {
            number = file.Get<int8_t>();
        }
        entry.time = file.Get<uint32_t>();
    }
}

bool HiscoreTable::Save(const char* fileName) const {
    ByteWriter file;
    for (int i = 0; i < kHiscoreEntries; ++i) {
        const HiscoreEntry& entry = entries[i];
        const NameBytes name = ScrambledName(entry, i);
        file.PutBytes(name.data(), name.size());
        file.Put(entry.score);
        file.Put(entry.level);
        file.Put(entry.hitRatio);
        for (const int8_t number : entry.version) {
            file.Put(number);
        }
        file.Put(entry.time);
    }
    if (platform::WriteWholeFile(fileName, file.Bytes().data(), file.Bytes().size())) {
        Log("WARNING: Cant write hiscores to disk\n");
        return true;
    }
    return false;
}

void HiscoreTable::Insert(int32_t score, const char* name, int32_t level, float hitRatio) {
    if (score <= LowestScore()) {
        return;
    }
    HiscoreEntry& entry = entries.back();
    SetName(entry, name);
    entry.score = score;
    entry.level = level;
    entry.hitRatio = hitRatio;
    entry.time = TimeNow();
    entry.version = kProgramVersion;
    for (int i = kHiscoreEntries - 1; i > 0 && entries[i].score > entries[i - 1].score; --i) {
        std::swap(entries[i], entries[i - 1]);
    }
}
