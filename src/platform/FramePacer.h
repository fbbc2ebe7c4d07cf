#pragma once

// Decides when the next frame is due. The game counts time in frames and is tuned for 60 a second:
// where the buffer swap already gives about that (swap control works and the display refreshes at
// 50 to 75 Hz) the pacer adds nothing; on any other display it spaces frames at 1/60 s without
// drifting. It reads no clock: the caller passes the time, so that a test can set it.

#include <cstdint>

namespace platform {

class FramePacer {
public:
    static constexpr int kFramesPerSecond = 60;

    // Called when a window and its context exist. refreshRate in Hz, 0 when unknown.
    void Configure(bool swapWaits, int refreshRate);
    // Nanoseconds to wait before the frame that would begin at `now` may begin; 0 when it is due.
    // `now` is a monotonic time in nanoseconds.
    int64_t TimeToNextFrame(int64_t now);
    // The frame begins. After a pause longer than a few frames the pacer starts afresh instead of
    // catching up.
    void FrameBegins(int64_t now);

private:
    bool swapPaces = false;   // the buffer swap alone gives the pace
    int64_t nextFrame = 0;    // time at which the next frame is due; 0 before the first
    int64_t frameIndex = 0;   // frames since `epoch`, so that rounding never adds up
    int64_t epoch = 0;
};

}  // namespace platform
