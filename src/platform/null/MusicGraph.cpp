#include "platform/MusicGraph.h"

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "platform/null/NullMedia.h"

namespace platform {

namespace {

struct Player {
    std::mutex lock;
    std::condition_variable changed;
    null::NullMusic music;
    bool deviceWorks = true;
    bool ended = false;
    bool interrupted = false;
    std::set<std::string> unplayable;
};

Player& ThePlayer() {
    static auto* player = new Player;  // outlives the music thread
    return *player;
}

}  // namespace

// One player serves every graph: only one is open at a time.
struct MusicGraph::State {};

MusicGraph::MusicGraph() : state(nullptr) {}

MusicGraph::~MusicGraph() {
    if (!null::Music().openFile.empty()) {
        Stop();
    }
}

bool MusicGraph::IsReady() const {
    const std::lock_guard guard(ThePlayer().lock);
    return ThePlayer().deviceWorks;
}

bool MusicGraph::Open(const std::string& gamePath) {
    Player& player = ThePlayer();
    const std::lock_guard guard(player.lock);
    player.music.history.push_back("Open " + gamePath);
    player.music.running = false;
    player.ended = false;
    const bool failed = player.unplayable.contains(gamePath);
    player.music.openFile = failed ? "" : gamePath;
    return failed;
}

bool MusicGraph::Run() {
    Player& player = ThePlayer();
    const std::lock_guard guard(player.lock);
    player.music.history.emplace_back("Run");
    player.music.running = !player.music.openFile.empty();
    return !player.music.running;
}

void MusicGraph::Pause() {
    const std::lock_guard guard(ThePlayer().lock);
    ThePlayer().music.history.emplace_back("Pause");
    ThePlayer().music.running = false;
}

void MusicGraph::Stop() {
    const std::lock_guard guard(ThePlayer().lock);
    ThePlayer().music.history.emplace_back("Stop");
    ThePlayer().music.running = false;
    ThePlayer().music.openFile.clear();
}

bool MusicGraph::WaitForCompletion(int milliseconds) {
    Player& player = ThePlayer();
    std::unique_lock guard(player.lock);
    player.changed.wait_for(guard, std::chrono::milliseconds(milliseconds),
                            [&player] { return player.ended || player.interrupted; });
    player.interrupted = false;
    return player.ended;
}

void MusicGraph::Interrupt() {
    const std::lock_guard guard(ThePlayer().lock);
    ThePlayer().interrupted = true;
    ThePlayer().changed.notify_all();
}

void MusicGraph::SetVolume(int hundredthsOfDecibel) {
    const std::lock_guard guard(ThePlayer().lock);
    ThePlayer().music.history.push_back("Volume " + std::to_string(hundredthsOfDecibel));
    ThePlayer().music.volume = hundredthsOfDecibel;
}

namespace null {

NullMusic Music() {
    const std::lock_guard guard(ThePlayer().lock);
    return ThePlayer().music;
}

void SetMusic(bool deviceWorks, const std::set<std::string>& unplayable) {
    Player& player = ThePlayer();
    const std::lock_guard guard(player.lock);
    player.music = NullMusic{};
    player.deviceWorks = deviceWorks;
    player.unplayable = unplayable;
    player.ended = false;
    player.interrupted = false;
}

void EndMusicTrack() {
    Player& player = ThePlayer();
    const std::lock_guard guard(player.lock);
    player.music.running = false;
    player.ended = true;
    player.changed.notify_all();
}

}  // namespace null

}  // namespace platform
