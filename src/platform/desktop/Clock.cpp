#include "platform/Clock.h"

#include <chrono>
#include <thread>

namespace platform {

namespace {

using SteadyClock = std::chrono::steady_clock;
const SteadyClock::time_point kStart = SteadyClock::now();

}  // namespace

int32_t Milliseconds() {
    const auto elapsed = SteadyClock::now() - kStart;
    return static_cast<int32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count());
}

int64_t PerformanceCounter() {
    return SteadyClock::now().time_since_epoch().count();
}

int64_t PerformanceFrequency() {
    return SteadyClock::period::den / SteadyClock::period::num;
}

void Sleep(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace platform
