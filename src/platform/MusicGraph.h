#pragma once

// Plays one music file at a time. Open, Run, Pause, Stop and WaitForCompletion are called from one
// thread (the music thread); SetVolume from any. Several graphs may not be open at once.

#include <string>

namespace platform {

class MusicGraph {
public:
    MusicGraph();
    ~MusicGraph();  // stops and closes
    MusicGraph(const MusicGraph&) = delete;
    MusicGraph& operator=(const MusicGraph&) = delete;

    bool IsReady() const;                    // the sound device takes music
    bool Open(const std::string& gamePath);  // true = not a file that can be played
    bool Run();                              // true = failure; also continues after Pause
    void Pause();
    void Stop();
    // Waits until the track has ended (true) or the time is over (false).
    bool WaitForCompletion(int milliseconds);
    // Ends a wait that another thread is in or, where none is, the next one.
    void Interrupt();
    // Hundredths of a decibel, 0 (full) down to -10000 (silent); kept for the next track too.
    void SetVolume(int hundredthsOfDecibel);

private:
    struct State;
    State* state;
};

}  // namespace platform
