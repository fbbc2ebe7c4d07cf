#pragma once

// The table on disk, in SQLite: the best twenty results. What Add has accepted survives a kill at
// any moment.

#include <string>
#include <vector>

#include "scores/HiscoreEntry.h"

struct sqlite3;

class HiscoreStore {
public:
    HiscoreStore() = default;
    ~HiscoreStore();
    HiscoreStore(const HiscoreStore&) = delete;
    HiscoreStore& operator=(const HiscoreStore&) = delete;

    // Opens or creates the database. True = failure; Error() tells why.
    bool Open(const std::string& file);
    // Enters the results that are new and drops what then ranks below the twentieth; on the disk
    // when it returns. True = failure: nothing has changed.
    bool Add(const std::vector<HiscoreEntry>& entries);
    // Best first; of equal scores the older first. True = failure.
    bool Best(std::vector<HiscoreEntry>& entries);
    std::string Error() const;

private:
    bool Execute(const char* statement);

    sqlite3* database = nullptr;
};
