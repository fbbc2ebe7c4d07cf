#include "platform/Window.h"

#include <cstring>

#include "platform/Messages.h"
#include "platform/null/NullState.h"

namespace platform {

struct Window {};
struct Surface {};
struct RenderContext {};

namespace {

// The handles point at these: there is one of each at a time.
Window theWindow;
Surface theSurface;
RenderContext theContext;

null::System& Granted() {
    return null::TheSystem();
}

null::WindowRecord& Record() {
    static null::WindowRecord record;
    return record;
}

void PostSize() {
    Message message;
    message.kind = MessageKind::Size;
    message.window = &theWindow;
    message.width = Record().options.width;
    message.height = Record().options.height;
    PostMessage(message);
}

}  // namespace

bool OpenDisplay() {
    return Granted().displayMissing;
}

void CloseDisplay() {}

bool ChangeDisplayMode(int width, int height, int bits) {
    if (Granted().modeRefused != nullptr && Granted().modeRefused(width, height, bits)) {
        return true;
    }
    Record().modeChanged = true;
    Record().modeWidth = width;
    Record().modeHeight = height;
    Record().modeBits = bits;
    return false;
}

void RestoreDisplayMode() {
    Record().modeChanged = false;
}

bool FindMultisampleFormat(int samples) {
    return samples > 0 && samples <= Granted().largestSampleCount;
}

WindowHandle CreateGameWindow(const WindowOptions& options) {
    if (Granted().windowFails || Granted().displayMissing || Record().exists ||
        options.samples > Granted().largestSampleCount) {
        return nullptr;
    }
    Record().exists = true;
    Record().visible = false;
    Record().options = options;
    Record().title = options.title;
    Record().options.title = Record().title.c_str();
    ++Record().windowsCreated;
    PostSize();
    return &theWindow;
}

bool DestroyGameWindow(WindowHandle window) {
    if (window == nullptr || !Record().exists) {
        return true;
    }
    Record().exists = false;
    Record().visible = false;
    null::ForgetWindowMessages(window);
    return Granted().destroyWindowFails;
}

void ShowGameWindow(WindowHandle window) {
    Record().visible = window != nullptr && Record().exists;
}

void SetWindowVisible(WindowHandle window, bool visible) {
    Record().visible = visible && window != nullptr && Record().exists;
}

void ShowCursor(bool visible) {
    Record().cursorVisible = visible;
}

SurfaceHandle GetSurface(WindowHandle window) {
    return window == nullptr || Granted().surfaceFails ? nullptr : &theSurface;
}

bool ReleaseSurface(WindowHandle window, SurfaceHandle surface) {
    return window == nullptr || surface == nullptr || Granted().releaseSurfaceFails;
}

void SwapBuffers(SurfaceHandle surface) {
    Record().swaps += surface != nullptr ? 1 : 0;
}

ContextHandle CreateContext(WindowHandle window) {
    if (window == nullptr || Granted().contextFails || Record().hasContext) {
        return nullptr;
    }
    Record().hasContext = true;
    ++Record().contextsCreated;
    return &theContext;
}

bool MakeCurrent(SurfaceHandle surface, ContextHandle context) {
    if (context == nullptr) {
        if (Granted().releaseCurrentFails) {
            return true;
        }
    } else if (surface == nullptr || Granted().makeCurrentFails) {
        return true;
    }
    Record().contextCurrent = context != nullptr;
    null::ContextIsCurrent(Record().contextCurrent);
    return false;
}

bool DeleteContext(ContextHandle context) {
    if (context == nullptr || !Record().hasContext) {
        return true;
    }
    Record().hasContext = false;
    Record().contextCurrent = false;
    null::ContextIsCurrent(false);
    null::DropGlObjects();
    return Granted().deleteContextFails;
}

bool SetSwapInterval(int refreshes) {
    if (Granted().swapIntervalRefused) {
        return true;
    }
    Record().swapInterval = refreshes;
    return false;
}

namespace null {

System& TheSystem() {
    static System system;
    return system;
}

const WindowRecord& TheWindow() {
    return Record();
}

WindowHandle GameWindow() {
    return Record().exists ? &theWindow : nullptr;
}

void ResetWindow() {
    Record() = WindowRecord{};
}

}  // namespace null

}  // namespace platform
