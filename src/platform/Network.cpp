#include "platform/Network.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

namespace platform {

namespace {

using SteadyClock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int kSliceMs = 50;  // how late a raised flag may be noticed

// Waits until the socket is ready for `events` (or broken). True = failure: time-out or raised
// flag.
bool WaitForSocket(int socket, short events, int timeoutMs, const CancelFlag& cancelled) {
    const SteadyClock::time_point deadline = SteadyClock::now() + milliseconds(timeoutMs);
    while (!cancelled) {
        const auto left =
            std::chrono::duration_cast<milliseconds>(deadline - SteadyClock::now()).count();
        if (left <= 0) {
            return true;
        }
        pollfd wait = {socket, events, 0};
        const int ready = poll(&wait, 1, static_cast<int>(std::min<int64_t>(left, kSliceMs)));
        if (ready > 0) {
            return cancelled;
        }
        if (ready < 0 && errno != EINTR) {
            return true;
        }
    }
    return true;
}

// What a look-up and whoever waits for it share; the last of the two frees it.
struct Lookup {
    std::mutex lock;
    std::condition_variable finished;
    bool done = false;
    bool found = false;
    IPv4Address address = {};
};

IPv4Address Bytes(const in_addr& address) {
    IPv4Address bytes;
    std::memcpy(bytes.data(), &address, bytes.size());
    return bytes;
}

void RunLookup(const std::string& host, Lookup& lookup) {
    addrinfo wanted = {};
    wanted.ai_family = AF_INET;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    const bool failed = getaddrinfo(host.c_str(), nullptr, &wanted, &found) != 0;
    const std::lock_guard guard(lookup.lock);
    if (!failed && found != nullptr) {
        sockaddr_in first = {};
        std::memcpy(&first, found->ai_addr, sizeof first);
        lookup.address = Bytes(first.sin_addr);
        lookup.found = true;
    }
    if (found != nullptr) {
        freeaddrinfo(found);
    }
    lookup.done = true;
    lookup.finished.notify_all();
}

// The system's look-up cannot be interrupted, so it runs in a thread that is left to itself when
// nobody wants its answer any more.
bool StartLookup(const std::string& host, const std::shared_ptr<Lookup>& lookup) {
    try {
        std::thread([host, lookup] { RunLookup(host, *lookup); }).detach();
    } catch (const std::system_error&) {
        return true;
    }
    return false;
}

}  // namespace

// Nothing to start here: sockets are always there.
bool StartNetwork() {
    return false;
}
void StopNetwork() {}

bool ResolveHost(const std::string& host, IPv4Address& address, const CancelFlag& cancelled) {
    in_addr number = {};
    if (inet_pton(AF_INET, host.c_str(), &number) == 1) {
        address = Bytes(number);
        return cancelled;
    }
    const auto lookup = std::make_shared<Lookup>();
    if (cancelled || StartLookup(host, lookup)) {
        return true;
    }
    const SteadyClock::time_point deadline = SteadyClock::now() + milliseconds(kConnectTimeoutMs);
    std::unique_lock guard(lookup->lock);
    while (!lookup->done && !cancelled && SteadyClock::now() < deadline) {
        lookup->finished.wait_for(guard, milliseconds(kSliceMs));
    }
    if (!lookup->found || cancelled) {
        return true;
    }
    address = lookup->address;
    return false;
}

bool TcpConnection::Create() {
    Close();
    socket = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    return socket < 0;
}

bool TcpConnection::Connect(const IPv4Address& address, uint16_t port,
                            const CancelFlag& cancelled) {
    sockaddr_in peer = {};
    peer.sin_family = AF_INET;
    peer.sin_port = htons(port);
    std::memcpy(&peer.sin_addr, address.data(), address.size());
    if (socket < 0 || cancelled) {
        return true;
    }
    if (connect(socket, reinterpret_cast<const sockaddr*>(&peer), sizeof peer) == 0) {
        return false;
    }
    if (errno != EINPROGRESS && errno != EINTR) {
        return true;
    }
    if (WaitForSocket(socket, POLLOUT, kConnectTimeoutMs, cancelled)) {
        return true;
    }
    int error = 0;
    socklen_t size = sizeof error;
    return getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size) != 0 || error != 0;
}

bool TcpConnection::Send(const std::string& bytes, const CancelFlag& cancelled) {
    size_t sent = 0;
    while (sent < bytes.size()) {
        if (WaitForSocket(socket, POLLOUT, kReceiveTimeoutMs, cancelled)) {
            return true;
        }
        // A peer that has gone is an error here and no signal.
        const ssize_t count = send(socket, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
        if (count > 0) {
            sent += static_cast<size_t>(count);
        } else if (errno != EAGAIN && errno != EINTR) {
            return true;
        }
    }
    return false;
}

int TcpConnection::Receive(char* buffer, size_t size, const CancelFlag& cancelled) {
    while (!WaitForSocket(socket, POLLIN, kReceiveTimeoutMs, cancelled)) {
        const ssize_t count = recv(socket, buffer, size, 0);
        if (count >= 0) {
            return static_cast<int>(count);
        }
        if (errno != EAGAIN && errno != EINTR) {
            return -1;
        }
    }
    return -1;
}

void TcpConnection::Close() {
    if (socket >= 0) {
        close(socket);
        socket = -1;
    }
}

}  // namespace platform
