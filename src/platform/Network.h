#pragma once

// TCP over IPv4 for worker threads. Every step has a time-out and gives up at once when its
// CancelFlag is raised, so that quitting never waits for the network. Results: true = failure.

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

namespace platform {

using IPv4Address = std::array<uint8_t, 4>;  // network order
using CancelFlag = std::atomic<bool>;

bool StartNetwork();
void StopNetwork();

bool ResolveHost(const std::string& host, IPv4Address& address, const CancelFlag& cancelled);

class TcpConnection {
public:
    TcpConnection() = default;
    ~TcpConnection() { Close(); }
    TcpConnection(const TcpConnection&) = delete;
    TcpConnection& operator=(const TcpConnection&) = delete;

    bool Create();  // the socket itself
    bool Connect(const IPv4Address& address, uint16_t port, const CancelFlag& cancelled);
    bool Send(const std::string& bytes, const CancelFlag& cancelled);
    // Bytes received (at most `size`), 0 when the peer has closed, -1 on an error, a time-out or a
    // raised flag.
    int Receive(char* buffer, size_t size, const CancelFlag& cancelled);
    void Close();

private:
    int socket = -1;
};

constexpr int kConnectTimeoutMs = 10000;
constexpr int kReceiveTimeoutMs =
    10000;  // of silence; an exchange as a whole is bounded by its caller

}  // namespace platform
