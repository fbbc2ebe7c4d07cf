#include "HiscoreService.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>

#include "HiscoreRequest.h"

namespace {

constexpr int kPollMs = 200;  // how soon a stop or a time-out is noticed

int64_t NowMs() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

// No length is announced: the game takes an answer without one.
std::string Response(const char* status, const std::string& body) {
    return std::string("HTTP/1.0 ") + status +
           "\r\nContent-Type: text/plain\r\nCache-Control: no-store\r\nConnection: close\r\n\r\n" +
           body;
}

}  // namespace

HiscoreService::~HiscoreService() {
    for (const auto& [socket, connection] : connections) {
        close(socket);
    }
    if (listener >= 0) {
        close(listener);
    }
}

bool HiscoreService::Listen(uint16_t port) {
    listener = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    const int on = 1;
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    return listener < 0 || setsockopt(listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on) != 0 ||
           bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0 ||
           listen(listener, SOMAXCONN) != 0;
}

uint16_t HiscoreService::Port() const {
    sockaddr_in address = {};
    socklen_t size = sizeof address;
    getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

void HiscoreService::Run() {
    std::vector<pollfd> sockets;
    while (!stopping) {
        sockets.clear();
        // While all places are taken newcomers wait in the system's queue.
        const bool full = connections.size() >= kMaxConnections;
        sockets.push_back({listener, static_cast<short>(full ? 0 : POLLIN), 0});
        for (const auto& [socket, connection] : connections) {
            const short events = connection.answer.empty() ? POLLIN : POLLOUT;
            sockets.push_back({socket, events, 0});
        }
        if (poll(sockets.data(), sockets.size(), kPollMs) < 0 && errno != EINTR) {
            std::perror("hiscore-server: poll");
            return;
        }
        for (size_t i = 1; i < sockets.size(); ++i) {
            if (sockets[i].revents == 0) {
                continue;
            }
            const int socket = sockets[i].fd;
            Connection& connection = connections[socket];
            const bool open =
                connection.answer.empty() ? Receive(socket, connection) : Send(socket, connection);
            if (!open) {
                close(socket);
                connections.erase(socket);
            }
        }
        if ((sockets[0].revents & POLLIN) != 0) {
            Accept();
        }
        CloseExpired();
    }
}

void HiscoreService::Accept() {
    while (connections.size() < kMaxConnections) {
        const int socket = accept4(listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
        if (socket < 0) {
            return;
        }
        connections[socket].deadline = NowMs() + kIdleTimeoutMs;
    }
}

bool HiscoreService::Receive(int socket, Connection& connection) {
    char buffer[kMaxRequest];
    const ssize_t count = recv(socket, buffer, sizeof buffer, 0);
    if (count <= 0) {
        return count < 0 && (errno == EAGAIN || errno == EINTR);
    }
    connection.received.append(buffer, static_cast<size_t>(count));
    if (connection.received.size() > kMaxRequest) {
        connection.answer = Response("413 Too Large", "");
    } else if (IsComplete(connection.received)) {
        connection.answer = Answer(connection.received);
    } else {
        return true;
    }
    connection.deadline = NowMs() + kSendTimeoutMs;
    return Send(socket, connection);
}

bool HiscoreService::Send(int socket, Connection& connection) {
    const ssize_t count =
        send(socket, connection.answer.data(), connection.answer.size(), MSG_NOSIGNAL);
    if (count < 0) {
        return errno == EAGAIN || errno == EINTR;
    }
    connection.answer.erase(0, static_cast<size_t>(count));
    if (!connection.answer.empty()) {
        return true;
    }
    shutdown(socket, SHUT_WR);
    return false;
}

std::string HiscoreService::Answer(const std::string& text) {
    const HiscoreRequest request = ParseRequest(text);
    if (!request.valid) {
        return Response("400 Bad Request", "");
    }
    std::vector<HiscoreEntry> best;
    if (store.Add(request.entries) || store.Best(best)) {
        std::fprintf(stderr, "hiscore-server: %s\n", store.Error().c_str());
        return Response("500 Internal Server Error", "");
    }
    return Response("200 OK", AnswerBody(best));
}

void HiscoreService::CloseExpired() {
    const int64_t now = NowMs();
    std::erase_if(connections, [now](const auto& item) {
        const auto& [socket, connection] = item;
        const bool expired = connection.deadline <= now;
        if (expired) {
            close(socket);
        }
        return expired;
    });
}
