#pragma once

// Decides when the next frame is due. The game counts time in frames and is tuned for 60 a second:
// where the buffer swap already gives about that (swap control works and the display refreshes at
// 50 to 75 Hz) the pacer adds nothing; on any other display it spaces frames at 1/60 s without
// drifting. A driver that accepts swap control but does not wait is found out within a second. It
// reads no clock: the caller passes the time, so that a test can set it.

#include <cstdint>

namespace platform {

class FramePacer {
public:
    static constexpr int kFramesPerSecond = 60;

    // Called when a window and its context exist. refreshRate in Hz, 0 when unknown.
    void Configure(bool swapWaits, int refreshRate);
    // Nanoseconds to wait before the frame that would begin at `now` may begin; 0 when it is due.
    // `now` is a monotonic time in nanoseconds.
    int64_t TimeToNextFrame(int64_t now) const;
    // The frame begins. After a pause longer than a few frames the pacer starts afresh instead of
    // catching up.
    void FrameBegins(int64_t now);

private:
    void WatchSwap(int64_t now);

    bool swapPaces = false;  // the buffer swap alone gives the pace
    int refreshRate = 0;     // Hz, while swapPaces

    // While the pacer paces: frame `frameIndex` is due at epoch + frameIndex / 60 s, computed from
    // the epoch each time so that rounding never adds up.
    bool started = false;
    int64_t epoch = 0;
    int64_t frameIndex = 0;

    // While the swap paces: what its frames take.
    int64_t watchStart = 0;  // time at which the current second of watching began
    int watchedFrames = 0;   // frames begun since; 0 before the first
};

}  // namespace platform
