#pragma once

// Sends results to an online hiscore server and fetches its table. Each exchange runs in a worker
// thread of its own that nobody waits for; a worker shares only the Shared record below, which it
// keeps alive itself, so it may outlive this object.

#include <cstdint>
#include <memory>

#include "scores/HiscoreProtocol.h"

class OnlineHiscores {
public:
    // Below every possible score: before the first answer every score may be submitted.
    static constexpr int32_t kUnknownThreshold = -1;

    OnlineHiscores();  // default table, then StartDownload
    virtual ~OnlineHiscores();

    // Sends the local table in the background and takes the answer, when online hiscores are on.
    void StartDownload();
    // After the online option or the server has changed: gives up what runs and starts anew.
    void Restart();
    // Sends one result in the background if it enters the online table.
    void SubmitScore(const char* name, int32_t points, int32_t level, float hitRatio);
    // Lowest score that enters the online table.
    int32_t GetThreshold() const;

    // Reading the table happens between these two.
    void Lock() const;
    void Unlock() const;
    const HiscoreEntry& Entry(int index) const;  // 0 to 19, best first

    // True while an exchange is under way: for tests.
    bool IsBusy() const;

private:
    struct Shared;
    void Cleanup();

    std::shared_ptr<Shared> shared;
};
