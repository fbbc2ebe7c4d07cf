#pragma once

// Background music: every file of the folder "Music" is a track. The list is shuffled once and
// played in a thread of its own, endlessly.

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/MusicGraph.h"

class MusicPlayer {
public:
    enum class State : uint16_t {
        Ended = 0,
        Stopped = 1,
        Paused = 2,
        Playing = 3
    };
    enum class Request : uint16_t {
        PlayNext = 0,
        Stop = 1,
        Resume = 2,
        Pause = 3,
        None = 4
    };

    static MusicPlayer* Instance();
    static void DestroyInstance();
    virtual ~MusicPlayer();

    // Lists and shuffles the tracks and starts the music thread. True = no music.
    bool Scan();
    void PlayNext();  // needs a track
    void Stop();
    void Pause();   // only while playing
    void Resume();  // only while paused
    // -1, +1, or 0 to apply the volume to a new track; only while playing.
    void ChangeVolume(int delta);
    // Stops, ends the thread and waits for it.
    void Shutdown();

    State GetState() const { return state; }
    int32_t GetVolume() const { return volume; }
    int32_t TrackCount() const { return static_cast<int32_t>(tracks.size()); }
    int32_t CurrentTrack() const { return currentTrack; }
    const std::string& TrackName(int32_t track) const { return tracks[track]; }

private:
    MusicPlayer() = default;
    void MusicThread();
    void NextTrack();
    bool OpenTrack();
    void CloseTrack();
    void SetRequest(Request newRequest);
    void WaitForRequest(int milliseconds);

    // Written by one side and read by the other, without a lock.
    std::atomic<State> state{State::Stopped};     // by the music thread
    std::atomic<Request> request{Request::None};  // by the main thread; the music thread resets it
    std::atomic<int32_t> volume{50};              // 0 to 100
    std::atomic<int32_t> currentTrack{-1};
    std::vector<std::string> tracks;  // file names; fixed once the thread runs
    platform::MusicGraph graph;
    bool graphOpen = false;  // a track has been opened; belongs to the music thread
    std::atomic<bool> ending{false};
    // Only wake the music thread; what it reads are the atomic words above.
    std::mutex wakeLock;
    std::condition_variable wake;
    std::thread thread;
};
