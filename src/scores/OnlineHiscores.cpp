#include "scores/OnlineHiscores.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <limits>
#include <mutex>
#include <system_error>
#include <thread>

#include "core/DebugLog.h"
#include "core/Registry.h"
#include "platform/Network.h"
#include "scores/HiscoreTable.h"
#include "scores/UserPrefs.h"

namespace {

constexpr int kEntriesPerRequest = 10;
constexpr size_t kMinResponse = 2;     // an answer of so many bytes or fewer is none
constexpr int kMaxLoggedBytes = 1024;  // of each piece of an answer
// A server that drips a byte at a time is given up after this, however alive each byte makes it
// look.
constexpr std::chrono::seconds kExchangeTimeout{30};

// What the exchanges since the last restart share. A restart raises the flag and starts a new one,
// so whatever is still under way can neither use nor change what comes after it.
struct Campaign {
    HiscoreServer server;
    platform::CancelFlag cancelled{false};
    std::mutex addressLock;
    bool resolved = false;
    platform::IPv4Address address = {};  // of the server, or of the proxy when one is used
};

HiscoreServer CurrentServer() {
    return {.host = userPrefs->GetCurrentServerHost(),
            .path = userPrefs->GetCurrentServerPath(),
            .port = userPrefs->GetCurrentServerPort(),
            .useProxy = userPrefs->UseProxy(),
            .proxyHost = userPrefs->GetProxyHost(),
            .proxyPort = static_cast<uint16_t>(userPrefs->GetProxyPort())};
}

OnlineTable DefaultTable() {
    OnlineTable table;
    for (int i = 0; i < kHiscoreEntries; ++i) {
        SetName(table[i], "VEXO................");
        table[i].score = (kHiscoreEntries - i) * 10000;
        table[i].time = TimeNow();
    }
    return table;
}

OnlineTable LocalTable() {
    OnlineTable table;
    for (int i = 0; i < kHiscoreEntries; ++i) {
        table[i] = hiscoreTable->Entry(i);
    }
    return table;
}

}  // namespace

// Everything that workers touch. Each holds a reference, so it lives until the last has ended.
struct OnlineHiscores::Shared {
    std::recursive_mutex lock;  // the OHST lock: guards `table` and `threshold`
    OnlineTable table = DefaultTable();
    int32_t threshold = kUnknownThreshold;

    std::atomic<bool> networkReady{false};  // single scores are sent only while it is set
    std::atomic<int> workers{0};
    std::shared_ptr<Campaign> campaign;  // of the main thread; workers hold their own reference

    void Cleanup() {
        if (networkReady.exchange(false)) {
            platform::StopNetwork();
        }
    }
    void DownloadRun(Campaign& current, const OnlineTable& local);
    bool InitNetwork(Campaign& current) const;
    bool Resolve(Campaign& current) const;
    bool SendAllScores(Campaign& current, const OnlineTable& local);
    void SendScore(Campaign& current, const HiscoreEntry& entry);
    bool Connect(platform::TcpConnection& connection, Campaign& current) const;
    bool ReadResponse(platform::TcpConnection& connection, const Campaign& current);
    bool ReceiveAll(platform::TcpConnection& connection, const Campaign& current,
                    std::string& response) const;
};

namespace {

// Runs `work` in a thread that nobody waits for.
template <typename Shared>
void StartWorker(const std::shared_ptr<Shared>& shared, std::function<void()> work) {
    ++shared->workers;
    try {
        std::thread([shared, work = std::move(work)] {
            work();
            --shared->workers;
        }).detach();
    } catch (const std::system_error&) {
        --shared->workers;
        Log("WARNING: No thread for the online hiscores\n");
    }
}

}  // namespace

OnlineHiscores::OnlineHiscores() : shared(std::make_shared<Shared>()) {
    StartDownload();
}

OnlineHiscores::~OnlineHiscores() {
    Cleanup();
}

void OnlineHiscores::Cleanup() {
    if (shared->campaign != nullptr) {
        shared->campaign->cancelled = true;
        shared->campaign.reset();
    }
    shared->Cleanup();
}

void OnlineHiscores::StartDownload() {
    if (!userPrefs->GetOnlineHiscores()) {
        return;
    }
    shared->campaign = std::make_shared<Campaign>();
    shared->campaign->server = CurrentServer();
    shared->networkReady = true;
    StartWorker(shared, [state = shared.get(), current = shared->campaign, local = LocalTable()] {
        state->DownloadRun(*current, local);
    });
}

void OnlineHiscores::Restart() {
    Cleanup();
    StartDownload();
}

void OnlineHiscores::SubmitScore(const char* name, int32_t points, int32_t level, float hitRatio) {
    if (!shared->networkReady || !userPrefs->GetOnlineHiscores()) {
        shared->networkReady = false;
        return;
    }
    if (points <= GetThreshold()) {
        return;
    }
    HiscoreEntry entry;
    SetName(entry, name);
    entry.score = points;
    entry.level = level;
    entry.hitRatio = hitRatio;
    entry.version = kProgramVersion;
    entry.time = TimeNow();
    StartWorker(shared, [state = shared.get(), current = shared->campaign, entry] {
        state->SendScore(*current, entry);
    });
}

int32_t OnlineHiscores::GetThreshold() const {
    // Without online hiscores no score enters the online table, so that nobody is asked for a name
    // that would then be thrown away.
    if (!userPrefs->GetOnlineHiscores()) {
        return std::numeric_limits<int32_t>::max();
    }
    const std::lock_guard guard(shared->lock);
    return shared->threshold;
}

void OnlineHiscores::Lock() const {
    shared->lock.lock();
}

void OnlineHiscores::Unlock() const {
    shared->lock.unlock();
}

const HiscoreEntry& OnlineHiscores::Entry(int index) const {
    return shared->table[index];
}

bool OnlineHiscores::IsBusy() const {
    return shared->workers != 0;
}

// --- Worker threads ---

void OnlineHiscores::Shared::DownloadRun(Campaign& current, const OnlineTable& local) {
    if (InitNetwork(current)) {
        if (!current.cancelled) {
            networkReady = false;
        }
        return;
    }
    if (SendAllScores(current, local) && !current.cancelled) {
        Cleanup();
    }
}

bool OnlineHiscores::Shared::InitNetwork(Campaign& current) const {
    if (platform::StartNetwork()) {
        Log("WARNING: Error initialising WinSock.\n");
        return true;
    }
    const HiscoreServer& server = current.server;
    Log(server.useProxy ? "Using a proxy server\n" : "Not using a proxy server\n");
    Log("Attempting to connect to %s\n",
        (server.useProxy ? server.proxyHost : server.host).c_str());
    if (Resolve(current)) {
        Log("WARNING: Could not resolve server\n");
        return true;
    }
    Log("Winsock initialsised and server resolved ok\n");
    return false;
}

// A score may be submitted while the download is still waiting for the same answer; whoever comes
// first asks.
bool OnlineHiscores::Shared::Resolve(Campaign& current) const {
    const std::lock_guard guard(current.addressLock);
    if (!current.resolved) {
        const HiscoreServer& server = current.server;
        current.resolved = !platform::ResolveHost(server.useProxy ? server.proxyHost : server.host,
                                                  current.address, current.cancelled);
    }
    return !current.resolved;
}

bool OnlineHiscores::Shared::SendAllScores(Campaign& current, const OnlineTable& local) {
    for (int first = 0; first < kHiscoreEntries; first += kEntriesPerRequest) {
        platform::TcpConnection connection;
        if (Connect(connection, current)) {
            return true;
        }
        std::string request = TableRequestStart(current.server);
        for (int i = first; i < first + kEntriesPerRequest; ++i) {
            AppendEntry(request, local[i]);
            request += '_';
        }
        request += TableRequestTail();
        Log("Sending request:\t%s\n", request.c_str());
        if (connection.Send(request, current.cancelled)) {
            Log("WARNING: Socket error sending request\n");
            return true;
        }
        if (ReadResponse(connection, current)) {
            return true;
        }
        connection.Close();
        Log("Disconnected from server\n");
    }
    Log("Hiscores sent successfully\n\n");
    return false;
}

void OnlineHiscores::Shared::SendScore(Campaign& current, const HiscoreEntry& entry) {
    platform::TcpConnection connection;
    bool failed = Resolve(current) || Connect(connection, current);
    if (failed) {
        Log("ERROR: Failed to connect to server when sending score.\n");
    } else {
        std::string request = ScoreRequestStart(current.server);
        Log("Sending request:\t%s\n", request.c_str());
        AppendEntry(request, entry);
        request += ScoreRequestTail();
        failed = connection.Send(request, current.cancelled);
        if (failed) {
            Log("ERROR: Failed to send score to server\n");
        } else {
            failed = ReadResponse(connection, current);
        }
    }
    if (!failed) {
        connection.Close();
        Log("Disconnected from server\n");
    } else if (!current.cancelled) {
        Cleanup();
    }
}

// Every exchange has a connection of its own, so that two at once do not disturb each other.
bool OnlineHiscores::Shared::Connect(platform::TcpConnection& connection, Campaign& current) const {
    if (connection.Create()) {
        Log("WARNING: Error creating socket.\n");
        return true;
    }
    Log("Socket created successfully\n");
    const HiscoreServer& server = current.server;
    const uint16_t port = server.useProxy ? server.proxyPort : server.port;
    Log("Attempting to connect on port %d\n", port);
    if (connection.Connect(current.address, port, current.cancelled)) {
        Log("WARNING: Cannot connect to server!\n");
        return true;
    }
    Log("Connection to server successful\n");
    return false;
}

bool OnlineHiscores::Shared::ReceiveAll(platform::TcpConnection& connection,
                                        const Campaign& current, std::string& response) const {
    const auto deadline = std::chrono::steady_clock::now() + kExchangeTimeout;
    char buffer[kMaxExchange];
    while (true) {
        const int received =
            connection.Receive(buffer, kMaxExchange - response.size(), current.cancelled);
        Log("Recv result from reading online HST: %d\n", received);
        Log("Response:\n%.*s\n\n", std::clamp(received, 0, kMaxLoggedBytes), buffer);
        if (received < 0 || std::chrono::steady_clock::now() > deadline) {
            return true;
        }
        if (received == 0) {
            return false;
        }
        response.append(buffer, received);
        if (response.size() >= kMaxExchange) {
            Log("ERROR: Too much data received!\n");
            return true;
        }
        if (response.back() == '!') {
            Log("Got all response\n");
            return false;
        }
    }
}

bool OnlineHiscores::Shared::ReadResponse(platform::TcpConnection& connection,
                                          const Campaign& current) {
    Log("Attempting to read online Hiscores\n");
    std::string response;
    if (ReceiveAll(connection, current, response)) {
        return true;
    }
    if (IsUnwantedResponse(response)) {
        Log("WARNING: Full response - not wanted\n");
        response.clear();
    }
    if (response.size() <= kMinResponse) {
        Log("WARNING: Hiscores read failed - lsize <= MIN_RESP_SIZE\n");
        return true;
    }
    Log("Waiting for OHST lock...\n");
    const std::lock_guard guard(lock);
    Log("OHST locked. ");
    if (current.cancelled) {
        Log("Answer of a server no longer in use\n");
        return true;
    }
    if (ParseResponse(response, table, threshold)) {
        Log("WARNING: Hiscores read failed - the answer is no hiscore table\n");
        return true;
    }
    Log("Hiscores Received Successfully\n\n");
    return false;
}
