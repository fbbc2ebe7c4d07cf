#pragma once

// The platform without a display, for unit tests, the autopilot and the asset checker: what such a
// program may set beforehand and read afterwards. Time is virtual and moves only when the main
// thread waits; the window is a record of what was asked of it; messages come from the program
// itself. What OpenGL was asked to do is in NullGl.h.

#include <cstdint>
#include <string>

#include "platform/Window.h"

namespace platform::null {

// What the imaginary system grants and refuses. Set the fields of TheSystem() at any time.
struct System {
    bool displayMissing = false;
    // Whether a full-screen mode is refused; null refuses none.
    bool (*modeRefused)(int width, int height, int bits) = nullptr;
    int largestSampleCount = 4;  // of the multisample formats on offer; 0 for none
    bool swapIntervalRefused = false;

    // Steps of creating and destroying a window that fail as long as these are set.
    bool windowFails = false;
    bool surfaceFails = false;
    bool contextFails = false;
    bool makeCurrentFails = false;     // making a context current
    bool releaseCurrentFails = false;  // making none current
    bool deleteContextFails = false;
    bool releaseSurfaceFails = false;
    bool destroyWindowFails = false;

    bool fontMissing = false;
};
System& TheSystem();

// What has become of the window. Sizes in pixels.
struct WindowRecord {
    bool exists = false;
    bool visible = false;
    bool cursorVisible = true;
    bool hasContext = false;
    bool contextCurrent = false;
    WindowOptions options;  // of the last window created; its title lives in `title`
    std::string title;
    int windowsCreated = 0;
    int contextsCreated = 0;
    int64_t swaps = 0;
    int swapInterval = 0;
    bool modeChanged = false;  // a full-screen mode is asked for and not restored yet
    int modeWidth = 0;
    int modeHeight = 0;
    int modeBits = 0;
};
const WindowRecord& TheWindow();

// Everything as at the start of the program: system, window, messages, clock, OpenGL, random
// seed 1. Call it at the start of a test.
void Reset();

// The virtual clock. Milliseconds and PerformanceCounter read it; Pause, Sleep on the main thread
// and each paint message (1/60 s) move it. Sleep on any other thread really sleeps and moves
// nothing.
int64_t VirtualNanoseconds();
void AdvanceClock(int64_t nanoseconds);

// Called just before each paint message is delivered, with the number of those delivered before:
// the place to press keys, look at the game and ask it to end. Null for none.
void SetFrameHook(void (*hook)(int64_t frame));
int64_t PaintsDelivered();

// Shorthand for posting a key message to the window.
void PressKey(int virtualKey);
void ReleaseKey(int virtualKey);

// Without a window to paint nothing could ever arrive any more, so GetMessage then returns false
// instead of waiting for ever.

}  // namespace platform::null
