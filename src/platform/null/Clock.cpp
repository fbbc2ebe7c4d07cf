#include "platform/Clock.h"

#include <atomic>
#include <chrono>
#include <thread>

#include "platform/null/NullState.h"

namespace platform {

namespace {

std::atomic<int64_t> clockNanoseconds{0};
const std::thread::id kMainThread = std::this_thread::get_id();

}  // namespace

int32_t Milliseconds() {
    return static_cast<int32_t>(clockNanoseconds / 1000000);
}

int64_t PerformanceCounter() {
    return clockNanoseconds;
}

int64_t PerformanceFrequency() {
    return 1000000000;
}

void Sleep(int milliseconds) {
    if (std::this_thread::get_id() == kMainThread) {
        null::AdvanceClock(int64_t{1000000} * milliseconds);
    } else {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
}

namespace null {

int64_t VirtualNanoseconds() {
    return clockNanoseconds;
}

void AdvanceClock(int64_t nanoseconds) {
    if (nanoseconds > 0) {
        clockNanoseconds += nanoseconds;
    }
}

void ResetClock() {
    clockNanoseconds = 0;
}

}  // namespace null

}  // namespace platform
