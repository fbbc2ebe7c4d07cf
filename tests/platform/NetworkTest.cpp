// Against servers on this machine that refuse, keep silent, drip or break off.

#include "platform/Network.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <thread>

namespace {

using platform::CancelFlag;
using platform::IPv4Address;
using platform::TcpConnection;

constexpr IPv4Address kThisMachine = {127, 0, 0, 1};

// A listening socket, and a thread that serves one connection with `serve`.
class Server {
public:
    explicit Server(const std::function<void(int)>& serve, int backlog = 4)
        : listener(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(listener, backlog), 0);
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
        port = ntohs(address.sin_port);
        if (serve) {
            thread = std::thread([this, serve] {
                const int peer = accept(listener, nullptr, nullptr);
                serve(peer);
                close(peer);
            });
        }
    }
    ~Server() {
        if (thread.joinable()) {
            thread.join();
        }
        close(listener);
    }

    int listener;
    uint16_t port = 0;

private:
    std::thread thread;
};

int64_t MillisecondsOf(const std::function<void()>& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 start)
        .count();
}

// Raises the flag 150 ms after it was made.
class LateCancel {
public:
    CancelFlag flag = false;
    ~LateCancel() { thread.join(); }

private:
    std::thread thread{[this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        flag = true;
    }};
};

void ExpectPromptCancel(int64_t elapsed) {
    EXPECT_GE(elapsed, 100) << "the step ended before the flag was raised";
    EXPECT_LT(elapsed, 250) << "a raised flag must end the step within 100 ms";
}

TEST(Network, ExchangesBytesWithAServerThatDripsThem) {
    const Server server([](int peer) {
        char request[16];
        const ssize_t count = read(peer, request, sizeof request);
        for (ssize_t i = 0; i < count; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            EXPECT_EQ(write(peer, request + i, 1), 1);
        }
    });
    const CancelFlag never = false;
    TcpConnection connection;
    ASSERT_FALSE(connection.Create());
    ASSERT_FALSE(connection.Connect(kThisMachine, server.port, never));
    ASSERT_FALSE(connection.Send("Hello!", never));
    std::string answer;
    char buffer[8];
    int count = 0;
    while ((count = connection.Receive(buffer, sizeof buffer, never)) > 0) {
        answer.append(buffer, static_cast<size_t>(count));
    }
    EXPECT_EQ(count, 0) << "the end of the connection is no error";
    EXPECT_EQ(answer, "Hello!");
}

TEST(Network, FailsAtARefusedConnectionAndAfterAReset) {
    const CancelFlag never = false;
    uint16_t freePort = 0;
    {
        const Server gone(nullptr);
        freePort = gone.port;
    }
    TcpConnection refused;
    ASSERT_FALSE(refused.Create());
    EXPECT_TRUE(refused.Connect(kThisMachine, freePort, never));
    EXPECT_TRUE(refused.Send("x", never)) << "nothing can be sent where nothing is connected";

    const Server server([](int peer) {
        char request = 0;
        EXPECT_EQ(read(peer, &request, 1), 1);
        const linger atOnce = {1, 0};
        setsockopt(peer, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    });
    TcpConnection reset;
    ASSERT_FALSE(reset.Create());
    ASSERT_FALSE(reset.Connect(kThisMachine, server.port, never));
    ASSERT_FALSE(reset.Send("x", never));
    char buffer[8];
    EXPECT_EQ(reset.Receive(buffer, sizeof buffer, never), -1);
    // Without precautions the second write to a broken connection ends the program by a signal.
    EXPECT_TRUE(reset.Send("x", never) || reset.Send("x", never));
}

TEST(Network, ARaisedFlagEndsEveryStepAtOnce) {
    const Server silent([](int peer) {
        std::this_thread::sleep_for(std::chrono::milliseconds(900));
        close(peer);
    });
    const CancelFlag never = false;
    TcpConnection connection;
    ASSERT_FALSE(connection.Create());
    ASSERT_FALSE(connection.Connect(kThisMachine, silent.port, never));
    char buffer[8];
    ExpectPromptCancel(MillisecondsOf([&] {
        LateCancel cancel;
        EXPECT_EQ(connection.Receive(buffer, sizeof buffer, cancel.flag), -1);
    }));
    const std::string flood(64 << 20, 'x');
    ExpectPromptCancel(MillisecondsOf([&] {
        LateCancel cancel;
        EXPECT_TRUE(connection.Send(flood, cancel.flag)) << "nobody reads what is sent";
    }));
}

TEST(Network, ARaisedFlagEndsAConnectThatNobodyAnswers) {
    const Server full(nullptr, 0);
    TcpConnection waiting[3];  // fill the queue of a server that accepts nobody
    for (TcpConnection& connection : waiting) {
        ASSERT_FALSE(connection.Create());
        LateCancel cancel;
        connection.Connect(kThisMachine, full.port, cancel.flag);
    }
    TcpConnection connection;
    ASSERT_FALSE(connection.Create());
    ExpectPromptCancel(MillisecondsOf([&] {
        LateCancel cancel;
        EXPECT_TRUE(connection.Connect(kThisMachine, full.port, cancel.flag));
    }));
}

TEST(Network, ResolvesNamesAndNumbers) {
    const CancelFlag never = false;
    IPv4Address address = {};
    EXPECT_FALSE(platform::ResolveHost("localhost", address, never));
    EXPECT_EQ(address, kThisMachine);
    EXPECT_FALSE(platform::ResolveHost("192.0.2.7", address, never));
    EXPECT_EQ(address, (IPv4Address{192, 0, 2, 7}));
    EXPECT_TRUE(platform::ResolveHost("", address, never));
    const CancelFlag raised = true;
    EXPECT_LT(MillisecondsOf(
                  [&] { EXPECT_TRUE(platform::ResolveHost("host.invalid", address, raised)); }),
              100);
}

}  // namespace
