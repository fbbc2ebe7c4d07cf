// The online client against real sockets: our own server, and servers without manners.

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include "HiscoreRequest.h"
#include "HiscoreService.h"
#include "HiscoreStore.h"
#include "core/DebugLog.h"
#include "core/Registry.h"
#include "scores/HiscoreTable.h"
#include "scores/OnlineHiscores.h"
#include "scores/UserPrefs.h"
#include "support/GameFixture.h"

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Our server in a thread.
class RunningService {
public:
    explicit RunningService(const std::string& file) : service(store) {
        EXPECT_FALSE(store.Open(file)) << store.Error();
        EXPECT_FALSE(service.Listen(0));
        thread = std::thread([this] { service.Run(); });
    }
    ~RunningService() {
        service.Stop();
        thread.join();
    }
    uint16_t Port() const { return service.Port(); }

private:
    HiscoreStore store;
    HiscoreService service;
    std::thread thread;
};

// A server that treats each connection as `manners` says.
class RudeServer {
public:
    explicit RudeServer(std::function<void(int)> manners) {
        listener = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        EXPECT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(listen(listener, 8), 0);
        socklen_t size = sizeof address;
        getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
        port = ntohs(address.sin_port);
        thread = std::thread([this, manners = std::move(manners)] {
            int client = -1;
            while ((client = accept(listener, nullptr, nullptr)) >= 0) {
                manners(client);
                close(client);
            }
        });
    }
    ~RudeServer() {
        shutdown(listener, SHUT_RDWR);
        close(listener);
        thread.join();
    }
    uint16_t port = 0;

private:
    int listener = -1;
    std::thread thread;
};

void ReadRequest(int client) {
    std::string request;
    char buffer[4096];
    ssize_t count = 0;
    while (request.find("\r\n\r\n") == std::string::npos &&
           (count = recv(client, buffer, sizeof buffer, 0)) > 0) {
        request.append(buffer, static_cast<size_t>(count));
    }
}

void SendText(int client, const std::string& text) {
    send(client, text.data(), text.size(), MSG_NOSIGNAL);
}

class OnlineTest : public RoomFixture {
protected:
    void SetUp() override {
        RoomFixture::SetUp();
        hiscoreTable = new HiscoreTable;
        userPrefs->ToggleOnlineHiscores();  // the fixture has switched them off
    }
    void TearDown() override {
        delete hiscoreClient;
        hiscoreClient = nullptr;
        delete hiscoreTable;
        hiscoreTable = nullptr;
        RoomFixture::TearDown();
    }
    static void Connect(uint16_t port) {
        ASSERT_FALSE(userPrefs->AddServer("127.0.0.1", "/servlet/NebulorixHST", port));
        userPrefs->SetServerIndex(userPrefs->GetServerCount() - 1);
        hiscoreClient = new OnlineHiscores;
    }
    static bool WaitUntilIdle(std::chrono::seconds patience = 20s) {
        const auto end = Clock::now() + patience;
        while (hiscoreClient->IsBusy() && Clock::now() < end) {
            std::this_thread::sleep_for(10ms);
        }
        return !hiscoreClient->IsBusy();
    }
    static int32_t TopScore() {
        hiscoreClient->Lock();
        const int32_t top = hiscoreClient->Entry(0).score;
        hiscoreClient->Unlock();
        return top;
    }
    // The log while workers write it too.
    std::string TakeLog() {
        CaptureLog(nullptr);
        return log;
    }
};

TEST_F(OnlineTest, TheLocalTableTravelsToOurServerAndComesBack) {
    const RunningService service("scores.db");
    hiscoreTable->Insert(50000, "Ann Lee", 12, 33.5F);
    Connect(service.Port());
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(TopScore(), 50000);
    hiscoreClient->Lock();
    EXPECT_STREQ(hiscoreClient->Entry(0).name, "Ann Lee.............");
    EXPECT_EQ(hiscoreClient->Entry(0).level, 12);
    EXPECT_EQ(hiscoreClient->Entry(1).score, 0) << "nobody's default entries stay at home";
    hiscoreClient->Unlock();
    EXPECT_EQ(hiscoreClient->GetThreshold(), 0);

    hiscoreClient->SubmitScore("Bob", 60000, 3, 10.0F);
    hiscoreClient->SubmitScore("nobody", 0, 1, 0.0F);  // equal to the threshold: not sent
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(TopScore(), 60000);

    // An upload and a submission at the same time.
    hiscoreClient->Restart();
    hiscoreClient->SubmitScore("Cid", 70000, 3, 10.0F);
    ASSERT_TRUE(WaitUntilIdle());
    hiscoreClient->Restart();
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(TopScore(), 70000);
    const std::string text = TakeLog();
    EXPECT_NE(text.find("Hiscores sent successfully\n\n"), std::string::npos);
    EXPECT_NE(text.find("Hiscores Received Successfully\n\n"), std::string::npos);
    EXPECT_EQ(text.find("WARNING"), std::string::npos) << text;
    EXPECT_EQ(text.find("ERROR"), std::string::npos) << text;
}

TEST_F(OnlineTest, AnswersInPiecesAreReadWhole) {
    const RudeServer server([](int client) {
        ReadRequest(client);
        const std::string answer = AnswerBody({});
        for (const char c : answer) {
            SendText(client, std::string(1, c));
        }
        std::this_thread::sleep_for(50ms);
    });
    Connect(server.port);
    ASSERT_TRUE(WaitUntilIdle());
    EXPECT_EQ(TopScore(), 0);
    EXPECT_NE(TakeLog().find("Got all response\n"), std::string::npos);
}

TEST_F(OnlineTest, ServersWithoutMannersCostNothing) {
    struct Case {
        const char* answer;
        const char* logged;
    };
    const std::string flood(3000, 'x');
    for (const Case& rude : {Case{"", "WARNING: Hiscores read failed - lsize <= MIN_RESP_SIZE\n"},
                             Case{"a!", "WARNING: Hiscores read failed - lsize <= MIN_RESP_SIZE\n"},
                             Case{"HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n",
                                  "WARNING: Full response - not wanted\n"},
                             Case{"<html>no</html>", "WARNING: Full response - not wanted\n"},
                             Case{"one_two_three!", "the answer is no hiscore table\n"},
                             Case{flood.c_str(), "ERROR: Too much data received!\n"}}) {
        log.clear();
        CaptureLog(&log);
        const RudeServer server([&rude](int client) {
            ReadRequest(client);
            SendText(client, rude.answer);
            shutdown(client, SHUT_WR);
            std::this_thread::sleep_for(20ms);
        });
        Connect(server.port);
        ASSERT_TRUE(WaitUntilIdle()) << rude.logged;
        EXPECT_EQ(TopScore(), 200000) << "the table keeps what it had";
        EXPECT_NE(TakeLog().find(rude.logged), std::string::npos) << rude.logged;
        hiscoreClient->SubmitScore("Ann", 300000, 1, 0.0F);
        EXPECT_FALSE(hiscoreClient->IsBusy()) << "no submission after a failed upload";
        delete hiscoreClient;
        hiscoreClient = nullptr;
    }
}

TEST_F(OnlineTest, QuittingNeverWaitsForTheNetwork) {
    std::atomic<bool> done{false};
    const RudeServer silent([&done](int client) {
        ReadRequest(client);
        while (!done) {
            std::this_thread::sleep_for(5ms);
        }
    });
    Connect(silent.port);
    std::this_thread::sleep_for(100ms);
    const auto start = Clock::now();
    hiscoreClient->Restart();
    delete hiscoreClient;
    hiscoreClient = nullptr;
    EXPECT_LT(Clock::now() - start, 500ms);
    done = true;
    std::this_thread::sleep_for(300ms);  // the workers end with nobody left to tell
}

TEST_F(OnlineTest, SwitchedOffNothingIsSentAndNobodyIsAsked) {
    userPrefs->ToggleOnlineHiscores();
    hiscoreClient = new OnlineHiscores;
    EXPECT_FALSE(hiscoreClient->IsBusy());
    EXPECT_EQ(TopScore(), 200000);
    EXPECT_EQ(hiscoreClient->GetThreshold(), std::numeric_limits<int32_t>::max());
    hiscoreClient->SubmitScore("Ann", 300000, 1, 0.0F);
    EXPECT_FALSE(hiscoreClient->IsBusy());
}

TEST(HiscoreServer, BelievesOnlyWhatCanBeBelieved) {
    const auto parse = [](const std::string& results) {
        return ParseRequest("GET /x?Op=SetScores&V=" + results + " HTTP/1.1\r\n\r\n");
    };
    EXPECT_EQ(parse("Ann:Lee_12345_3_0.500000_100_1100000000_").entries.size(), 1U);
    EXPECT_STREQ(parse("Ann%20Lee_12345_3_0.5_100_11").entries[0].name, "Ann Lee");
    for (const char* bad :
         {"VEXO_2000_0_0.000000_100_1", "_1_1_1_100_1", "A_-5_1_1_100_1", "A_1_1_nan_100_1",
          "A_1_1_101_100_1", "A_1_1_1_10_1", "A_99999999999_1_1_100_1", "A_1_1_1_100_x",
          "ABCDEFGHIJKLMNOPQRSTU_1_1_1_100_1", "<b>_1_1_1_100_1", "A_1_1_1_100"}) {
        EXPECT_TRUE(parse(bad).valid);
        EXPECT_TRUE(parse(bad).entries.empty()) << bad;
    }
    for (const char* other : {"", "POST /x?Op=SetScores HTTP/1.1", "GET /", "GET /x?Op=Other&V="}) {
        EXPECT_FALSE(ParseRequest(other).valid) << other;
    }
}

TEST_F(OnlineTest, TheStoreKeepsTheBestTwentyOnce) {
    HiscoreStore store;
    ASSERT_FALSE(store.Open("scores.db"));
    std::vector<HiscoreEntry> entries(30);
    for (int i = 0; i < 30; ++i) {
        SetName(entries[i], "Ann");
        entries[i].score = 100 + i;
        entries[i].level = 1;
    }
    ASSERT_FALSE(store.Add(entries));
    ASSERT_FALSE(store.Add(entries));
    HiscoreStore again;
    ASSERT_FALSE(again.Open("scores.db"));
    std::vector<HiscoreEntry> best;
    ASSERT_FALSE(again.Best(best));
    ASSERT_EQ(best.size(), 20U);
    EXPECT_EQ(best.front().score, 129);
    EXPECT_EQ(best.back().score, 110);
    EXPECT_TRUE(store.Open("/nowhere/scores.db"));
}

}  // namespace
