#pragma once

// Serves a hiscore table over TCP. One thread and one poll loop; a client that is slow, silent or
// hostile costs only its own connection.

#include <atomic>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "HiscoreStore.h"

class HiscoreService {
public:
    static constexpr int kMaxConnections = 200;
    static constexpr int kIdleTimeoutMs = 10000;  // from accepting to the end of the request
    static constexpr int kSendTimeoutMs = 10000;

    explicit HiscoreService(HiscoreStore& store) : store(store) {}
    ~HiscoreService();
    HiscoreService(const HiscoreService&) = delete;
    HiscoreService& operator=(const HiscoreService&) = delete;

    // Listens on all addresses; port 0 takes any free one. True = failure, with errno set.
    bool Listen(uint16_t port);
    uint16_t Port() const;
    // Serves until Stop is called, from any thread or a signal handler.
    void Run();
    void Stop() { stopping = true; }

private:
    struct Connection {
        std::string received;
        std::string answer;  // not yet sent; the connection closes when all of it is
        int64_t deadline = 0;
    };

    void Accept();
    // False when the connection is to be closed.
    bool Receive(int socket, Connection& connection);
    static bool Send(int socket, Connection& connection);
    std::string Answer(const std::string& text);
    void CloseExpired();

    HiscoreStore& store;
    int listener = -1;
    std::map<int, Connection> connections;  // by socket
    std::atomic<bool> stopping{false};
};
