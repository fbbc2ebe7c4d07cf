#include "platform/FramePacer.h"

namespace platform {

namespace {

constexpr int64_t kSecond = 1000000000;
// Displays whose own pace is close enough to the game's.
constexpr int kSlowestOwnPace = 50;
constexpr int kFastestOwnPace = 75;
// A frame that is later than this is not caught up with.
constexpr int64_t kLongestLag = 4 * kSecond / FramePacer::kFramesPerSecond;
// Drivers take a few frames ahead before a swap waits for the first time, and clocks differ a
// little; a swap that really does not wait is far faster than a quarter above the display.
constexpr int kToleratedPercent = 125;

constexpr int64_t DueTime(int64_t epoch, int64_t index) {
    return epoch + index * kSecond / FramePacer::kFramesPerSecond;
}

}  // namespace

void FramePacer::Configure(bool swapWaits, int displayRefreshRate) {
    swapPaces =
        swapWaits && displayRefreshRate >= kSlowestOwnPace && displayRefreshRate <= kFastestOwnPace;
    refreshRate = displayRefreshRate;
    started = false;
    watchedFrames = 0;
}

int64_t FramePacer::TimeToNextFrame(int64_t now) const {
    if (swapPaces || !started) {
        return 0;
    }
    const int64_t due = DueTime(epoch, frameIndex);
    return due > now ? due - now : 0;
}

void FramePacer::FrameBegins(int64_t now) {
    if (swapPaces) {
        WatchSwap(now);
        return;
    }
    if (!started || now - DueTime(epoch, frameIndex) > kLongestLag) {
        started = true;
        epoch = now;
        frameIndex = 0;
    }
    ++frameIndex;
}

void FramePacer::WatchSwap(int64_t now) {
    if (watchedFrames == 0) {
        watchStart = now;
    }
    const int64_t elapsed = now - watchStart;
    if (elapsed >= kSecond) {
        watchStart = now;
        watchedFrames = 0;
    }
    // The whole second's allowance may be used up long before the second is over.
    if (++watchedFrames * 100 > refreshRate * kToleratedPercent) {
        swapPaces = false;
        started = false;
        FrameBegins(now);
    }
}

}  // namespace platform
