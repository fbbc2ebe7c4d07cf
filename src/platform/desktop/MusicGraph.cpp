#include "platform/MusicGraph.h"

#include <SDL_mixer.h>

#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <utility>

#include "platform/Files.h"
#include "platform/desktop/AudioDevice.h"

namespace platform {

namespace {

// What the mixing thread tells the music thread. Never held while a mixer function is called: the
// mixer calls OnMusicFinished with a lock of its own.
struct TrackEnd {
    std::mutex lock;
    std::condition_variable changed;
    bool running = false;  // between Run and Stop: a halt that we asked for is no end
    bool ended = false;
    bool interrupted = false;
};
TrackEnd trackEnd;

void OnMusicFinished() {
    const std::lock_guard guard(trackEnd.lock);
    if (trackEnd.running) {
        trackEnd.running = false;
        trackEnd.ended = true;
        trackEnd.changed.notify_all();
    }
}

void SetRunning(bool running) {
    const std::lock_guard guard(trackEnd.lock);
    trackEnd.running = running;
    trackEnd.ended = false;
}

}  // namespace

struct MusicGraph::State {
    bool device = false;
    Mix_Music* music = nullptr;
    bool paused = false;
};

MusicGraph::MusicGraph() : state(new State) {
    state->device = !AcquireAudioDevice();
    if (state->device) {
        Mix_HookMusicFinished(OnMusicFinished);
    }
}

MusicGraph::~MusicGraph() {
    Stop();
    if (state->device) {
        Mix_HookMusicFinished(nullptr);
        ReleaseAudioDevice();
    }
    delete state;
}

bool MusicGraph::IsReady() const {
    return state->device;
}

bool MusicGraph::Open(const std::string& gamePath) {
    Stop();
    const std::string path = ResolvePath(gamePath);
    std::error_code error;
    // A pipe would keep the reader waiting for ever.
    if (!state->device || !std::filesystem::is_regular_file(path, error)) {
        return true;
    }
    state->music = Mix_LoadMUS(path.c_str());
    return state->music == nullptr;
}

bool MusicGraph::Run() {
    if (state->music == nullptr) {
        return true;
    }
    if (std::exchange(state->paused, false)) {
        Mix_ResumeMusic();
        return false;
    }
    SetRunning(true);
    const bool failed = Mix_PlayMusic(state->music, 1) != 0;
    if (failed) {
        SetRunning(false);
    }
    return failed;
}

void MusicGraph::Pause() {
    if (state->music != nullptr) {
        Mix_PauseMusic();
        state->paused = true;
    }
}

void MusicGraph::Stop() {
    if (state->music == nullptr) {
        return;
    }
    SetRunning(false);
    Mix_HaltMusic();
    Mix_FreeMusic(state->music);
    state->music = nullptr;
    state->paused = false;
}

bool MusicGraph::WaitForCompletion(int milliseconds) {
    std::unique_lock guard(trackEnd.lock);
    trackEnd.changed.wait_for(guard, std::chrono::milliseconds(milliseconds),
                              [] { return trackEnd.ended || trackEnd.interrupted; });
    trackEnd.interrupted = false;
    return trackEnd.ended;
}

void MusicGraph::Interrupt() {
    const std::lock_guard guard(trackEnd.lock);
    trackEnd.interrupted = true;
    trackEnd.changed.notify_all();
}

void MusicGraph::SetVolume(int hundredthsOfDecibel) {
    if (state->device) {
        Mix_VolumeMusic(MixerVolume(hundredthsOfDecibel));
    }
}

}  // namespace platform
