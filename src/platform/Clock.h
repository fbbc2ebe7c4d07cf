#pragma once

// Time. Frames and milliseconds never mix: what counts frames does not come here.

#include <cstdint>

namespace platform {

// Milliseconds since the program started.
int32_t Milliseconds();
// A monotonic counter and its ticks in a second.
int64_t PerformanceCounter();
int64_t PerformanceFrequency();
// Sleeps the calling thread; for worker threads. The main thread uses Pause (Messages.h).
void Sleep(int milliseconds);

}  // namespace platform
