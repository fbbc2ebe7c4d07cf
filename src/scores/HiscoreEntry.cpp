#include "scores/HiscoreEntry.h"

#include <cstring>
#include <ctime>

void SetName(HiscoreEntry& entry, const char* name) {
    const size_t length = strnlen(name, kNameLength);
    std::memcpy(entry.name, name, length);
    entry.name[length] = '\0';
}

uint32_t TimeNow() {
    return static_cast<uint32_t>(std::time(nullptr));
}
