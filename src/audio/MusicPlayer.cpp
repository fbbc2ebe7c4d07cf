#include "audio/MusicPlayer.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "core/DebugLog.h"
#include "platform/Files.h"
#include "platform/Random.h"

namespace {

constexpr int kWaitMs = 500;      // for the end of the track, before the thread looks up
constexpr int kSilenceMs = 1000;  // after a track that was closed
constexpr int32_t kMaxVolume = 100;
constexpr int kMusicVolumeStep = 50;  // hundredths of a decibel
constexpr int kLowestVolume = -5000;

MusicPlayer* thePlayer = nullptr;

}  // namespace

MusicPlayer* MusicPlayer::Instance() {
    if (thePlayer == nullptr) {
        thePlayer = new MusicPlayer;
    }
    return thePlayer;
}

void MusicPlayer::DestroyInstance() {
    delete thePlayer;
    thePlayer = nullptr;
}

MusicPlayer::~MusicPlayer() {
    Shutdown();
}

bool MusicPlayer::Scan() {
    if (thread.joinable()) {
        return false;
    }
    tracks = platform::ListFolder("Music");
    if (tracks.empty()) {
        return true;
    }
    for (int32_t i = 0; i < TrackCount(); ++i) {
        const int32_t j = platform::Random() % TrackCount();
        if (j != i) {
            std::swap(tracks[i], tracks[j]);
        }
    }
    thread = std::thread([this] { MusicThread(); });
    return false;
}

void MusicPlayer::PlayNext() {
    if (TrackCount() > 0) {
        SetRequest(Request::PlayNext);
    }
}

void MusicPlayer::Stop() {
    SetRequest(Request::Stop);
}

void MusicPlayer::Pause() {
    if (state == State::Playing) {
        SetRequest(Request::Pause);
    }
}

void MusicPlayer::Resume() {
    if (state == State::Paused) {
        SetRequest(Request::Resume);
    }
}

void MusicPlayer::ChangeVolume(int delta) {
    if (state != State::Playing) {
        return;
    }
    if (delta != 0) {  // the music thread passes 0 and leaves the number to the keys
        volume = std::clamp(volume + delta, 0, kMaxVolume);
    }
    graph.SetVolume(volume * kMusicVolumeStep + kLowestVolume);
}

void MusicPlayer::Shutdown() {
    if (thread.joinable()) {
        {
            const std::lock_guard guard(wakeLock);
            ending = true;
        }
        SetRequest(Request::Stop);
        thread.join();
    }
    tracks.clear();
}

// A key takes effect at once: it wakes the music thread from whatever it is waiting for.
void MusicPlayer::SetRequest(Request newRequest) {
    {
        const std::lock_guard guard(wakeLock);
        request = newRequest;
    }
    wake.notify_one();
    graph.Interrupt();
}

void MusicPlayer::MusicThread() {
    while (!ending) {
        // Taken and cleared in one step, so that a key pressed while a track opens is not lost.
        switch (request.exchange(Request::None)) {
            case Request::PlayNext:
                NextTrack();
                break;
            case Request::Stop:
                CloseTrack();
                break;
            case Request::Pause:
                if (state == State::Playing) {  // the track may have ended since the key
                    graph.Pause();
                    state = State::Paused;
                }
                break;
            case Request::Resume:
                if (state == State::Paused) {
                    graph.Run();
                    state = State::Playing;
                }
                break;
            case Request::None:
                break;
        }
        if (state == State::Playing) {
            if (graph.WaitForCompletion(kWaitMs)) {
                NextTrack();
            }
        } else {
            WaitForRequest(kWaitMs);
        }
    }
    CloseTrack();
    state = State::Ended;
}

// Waits until a key asks for something or the time is over.
void MusicPlayer::WaitForRequest(int milliseconds) {
    std::unique_lock lock(wakeLock);
    wake.wait_for(lock, std::chrono::milliseconds(milliseconds),
                  [this] { return request != Request::None || ending; });
}

void MusicPlayer::NextTrack() {
    CloseTrack();
    currentTrack = (currentTrack + 1) % TrackCount();
    const Request waiting = request;
    if (waiting == Request::PlayNext || waiting == Request::Stop || ending) {
        return;  // pressed meanwhile: this track would only be a click
    }
    if (OpenTrack()) {
        CloseTrack();
    }
    ChangeVolume(0);
}

bool MusicPlayer::OpenTrack() {
    if (!graph.IsReady()) {
        Log("ERROR - Could not create the Filter Graph Manager.");
        return true;
    }
    const std::string& name = tracks[currentTrack];
    graphOpen = true;
    if (graph.Open("Music\\" + name) || graph.Run()) {
        // A folder or a text file among the music ends the playing until the player asks for the
        // next track; the log says which file it was.
        Log("WARNING: Cannot play music file: %s\n", name.c_str());
        state = State::Stopped;
        graphOpen = false;
        return true;
    }
    state = State::Playing;
    return false;
}

void MusicPlayer::CloseTrack() {
    graph.Stop();
    state = State::Stopped;
    if (std::exchange(graphOpen, false) && !ending) {
        WaitForRequest(kSilenceMs);
    }
}
