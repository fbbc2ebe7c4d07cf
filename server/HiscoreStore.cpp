#include "HiscoreStore.h"

#include <sqlite3.h>

#include <memory>

namespace {

struct Finalizer {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalizer>;

Statement Prepare(sqlite3* database, const char* text) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, text, -1, &statement, nullptr);
    return Statement(statement);
}

// The game uploads its whole local table at every start, so the same result comes again and again.
constexpr const char* kSchema =
    "CREATE TABLE IF NOT EXISTS scores ("
    " id INTEGER PRIMARY KEY, name TEXT NOT NULL, score INTEGER NOT NULL, level INTEGER NOT NULL,"
    " ratio REAL NOT NULL, major INTEGER, minor INTEGER, patch INTEGER, time INTEGER NOT NULL,"
    " UNIQUE (name, score, level, time))";
constexpr const char* kInsert =
    "INSERT OR IGNORE INTO scores (name, score, level, ratio, major, minor, patch, time)"
    " VALUES (?, ?, ?, ?, ?, ?, ?, ?)";
constexpr const char* kPrune =
    "DELETE FROM scores WHERE id NOT IN (SELECT id FROM scores ORDER BY score DESC, id LIMIT 20)";
constexpr const char* kSelect =
    "SELECT name, score, level, ratio, major, minor, patch, time FROM scores"
    " ORDER BY score DESC, id LIMIT 20";

}  // namespace

HiscoreStore::~HiscoreStore() {
    sqlite3_close(database);
}

bool HiscoreStore::Open(const std::string& file) {
    sqlite3_close(database);
    database = nullptr;
    return sqlite3_open(file.c_str(), &database) != SQLITE_OK ||
           sqlite3_busy_timeout(database, 2000) != SQLITE_OK ||
           Execute("PRAGMA synchronous = FULL") || Execute(kSchema);
}

bool HiscoreStore::Execute(const char* statement) {
    return sqlite3_exec(database, statement, nullptr, nullptr, nullptr) != SQLITE_OK;
}

bool HiscoreStore::Add(const std::vector<HiscoreEntry>& entries) {
    if (entries.empty()) {
        return false;
    }
    if (Execute("BEGIN IMMEDIATE")) {
        return true;
    }
    const Statement insert = Prepare(database, kInsert);
    bool failed = insert == nullptr;
    for (const HiscoreEntry& entry : entries) {
        if (failed) {
            break;
        }
        sqlite3_stmt* row = insert.get();
        sqlite3_bind_text(row, 1, entry.name, -1, SQLITE_TRANSIENT);
        sqlite3_bind_int(row, 2, entry.score);
        sqlite3_bind_int(row, 3, entry.level);
        sqlite3_bind_double(row, 4, static_cast<double>(entry.hitRatio));
        for (int i = 0; i < 3; ++i) {
            sqlite3_bind_int(row, 5 + i, entry.version[i]);
        }
        sqlite3_bind_int64(row, 8, entry.time);
        failed = sqlite3_step(row) != SQLITE_DONE;
        sqlite3_reset(row);
    }
    if (failed || Execute(kPrune) || Execute("COMMIT")) {
        Execute("ROLLBACK");
        return true;
    }
    return false;
}

bool HiscoreStore::Best(std::vector<HiscoreEntry>& entries) {
    entries.clear();
    const Statement select = Prepare(database, kSelect);
    if (select == nullptr) {
        return true;
    }
    sqlite3_stmt* row = select.get();
    int result = sqlite3_step(row);
    for (; result == SQLITE_ROW; result = sqlite3_step(row)) {
        HiscoreEntry entry;
        SetName(entry, reinterpret_cast<const char*>(sqlite3_column_text(row, 0)));
        entry.score = sqlite3_column_int(row, 1);
        entry.level = sqlite3_column_int(row, 2);
        entry.hitRatio = static_cast<float>(sqlite3_column_double(row, 3));
        for (int i = 0; i < 3; ++i) {
            entry.version[i] = static_cast<int8_t>(sqlite3_column_int(row, 4 + i));
        }
        entry.time = static_cast<uint32_t>(sqlite3_column_int64(row, 7));
        entries.push_back(entry);
    }
    return result != SQLITE_DONE;
}

std::string HiscoreStore::Error() const {
    return database != nullptr ? sqlite3_errmsg(database) : "out of memory";
}
