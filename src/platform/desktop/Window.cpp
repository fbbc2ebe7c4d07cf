#include "platform/Window.h"

#include <SDL.h>
#include <X11/Xlib.h>
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>

#include "platform/FramePacer.h"
#include "platform/Messages.h"
#include "platform/desktop/DesktopMessages.h"
#include "platform/desktop/DesktopWindow.h"
#include "platform/desktop/ModeGuard.h"
#include "platform/desktop/WindowIcon.h"

namespace platform {

// Both stand for the one window: SDL draws to windows directly.
struct Window {
    SDL_Window* sdl = nullptr;
    bool fullscreen = false;
    bool fullscreenEntered = false;
    int toldWidth = 0;  // client size of the last Size message
    int toldHeight = 0;
};
struct Surface {};

namespace {

// Refresh rates at which the display itself can give the game its pace.
constexpr int kWantedRefreshRate = 60;
// Below this, waiting for each refresh would slow the game down.
constexpr int kSlowestWaitedRate = 50;
// Depth of the depth buffer in bits: drivers that lack the best have one of the others.
constexpr int kDepthBits[] = {32, 24, 16};

struct DisplayState {
    bool displayOpen = false;
    bool exists = false;
    Window window;
    Surface surface;
    SDL_DisplayMode mode = {};  // of full screen; its width is 0 while none is asked for
    bool swapWaits = false;
    size_t depthChoice = 0;                    // index into kDepthBits of what the last window got
    XErrorHandler nextErrorHandler = nullptr;  // set while the display is open
};

DisplayState& TheDisplay() {
    static DisplayState state;
    return state;
}

SDL_Window* Sdl(WindowHandle window) {
    return window != nullptr ? window->sdl : nullptr;
}

// Refresh rate in Hz of the display that the window is on; 0 when unknown.
int RefreshRate() {
    SDL_DisplayMode mode = {};
    const int display = SDL_GetWindowDisplayIndex(TheDisplay().window.sdl);
    return display >= 0 && SDL_GetCurrentDisplayMode(display, &mode) == 0 ? mode.refresh_rate : 0;
}

void ConfigurePacer() {
    ThePacer().Configure(TheDisplay().swapWaits, RefreshRate());
}

void SetFormatAttributes(int depthBits, int samples) {
    SDL_GL_ResetAttributes();
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 2);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MINOR_VERSION, 1);
    SDL_GL_SetAttribute(SDL_GL_DOUBLEBUFFER, 1);
    // At least these; drivers give the most that the display has.
    SDL_GL_SetAttribute(SDL_GL_RED_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_GREEN_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_BLUE_SIZE, 5);
    SDL_GL_SetAttribute(SDL_GL_DEPTH_SIZE, depthBits);
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLEBUFFERS, samples > 0 ? 1 : 0);
    SDL_GL_SetAttribute(SDL_GL_MULTISAMPLESAMPLES, samples);
}

// A hidden window with the deepest depth buffer that the driver gives; null when it has none.
SDL_Window* CreateHidden(const WindowOptions& options, SDL_Point position, uint32_t flags) {
    DisplayState& state = TheDisplay();
    for (size_t i = state.depthChoice; i < std::size(kDepthBits); ++i) {
        SetFormatAttributes(kDepthBits[i], options.samples);
        SDL_Window* window =
            SDL_CreateWindow(options.title, position.x, position.y, options.width, options.height,
                             SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN | flags);
        if (window != nullptr) {
            state.depthChoice = i;
            return window;
        }
    }
    return nullptr;
}

// The corner in which the window appears: that of the display, or of what panels leave of it.
SDL_Point TopLeftCorner(bool fullscreen) {
    SDL_Rect area = {};
    if (fullscreen) {
        SDL_GetDisplayBounds(0, &area);
    } else {
        SDL_GetDisplayUsableBounds(0, &area);
    }
    return {area.x, area.y};
}

// How far a refresh rate is from what suits the game; unknown rates are taken last.
int Unsuitability(const SDL_DisplayMode& mode) {
    return mode.refresh_rate == 0 ? kWantedRefreshRate
                                  : std::abs(mode.refresh_rate - kWantedRefreshRate);
}

// SDL takes the next larger mode where the asked one is missing, so the modes are compared here. A
// desktop of 32 bits a pixel may count 24 of them as colour. True = the display has no such mode.
bool FindMode(int width, int height, int bits, SDL_DisplayMode& best) {
    bool found = false;
    for (int i = 0; i < SDL_GetNumDisplayModes(0); ++i) {
        SDL_DisplayMode mode = {};
        if (SDL_GetDisplayMode(0, i, &mode) != 0 || mode.w != width || mode.h != height ||
            static_cast<int>(SDL_BITSPERPIXEL(mode.format)) < std::min(bits, 24)) {
            continue;
        }
        if (!found || Unsuitability(mode) < Unsuitability(best)) {
            best = mode;
            found = true;
        }
    }
    return !found;
}

// Where nobody names a display SDL draws to memory, and a game that nobody sees goes on for ever.
// Only the displays that the environment names are tried; false when it names none.
bool ChooseDisplays() {
    if (SDL_GetHint(SDL_HINT_VIDEODRIVER) != nullptr) {
        return true;  // asked for
    }
    std::string drivers;
    if (SDL_getenv("DISPLAY") != nullptr) {
        drivers = "x11";
    }
    if (SDL_getenv("WAYLAND_DISPLAY") != nullptr) {
        drivers += drivers.empty() ? "wayland" : ",wayland";
    }
    SDL_SetHint(SDL_HINT_VIDEODRIVER, drivers.c_str());
    return !drivers.empty();
}

void Show(Window& window) {
    const bool entersFullscreen = window.fullscreen && TheDisplay().mode.w > 0;
    if (entersFullscreen) {
        GuardDisplayMode();
    }
    SDL_ShowWindow(window.sdl);
    if (entersFullscreen) {
        SDL_SetWindowDisplayMode(window.sdl, &TheDisplay().mode);
        SDL_SetWindowFullscreen(window.sdl, SDL_WINDOW_FULLSCREEN);
        window.fullscreenEntered = true;
    }
    SDL_RaiseWindow(window.sdl);
}

void Hide(Window& window) {
    ReleaseHeldKeys();
    // Hiding gives the desktop its mode back by itself.
    SDL_HideWindow(window.sdl);
    window.fullscreenEntered = false;
    EndDisplayModeGuard();
}

// SDL asks where the window manager's frame stands when a window is hidden; the frame may be gone
// by then. Without a handler that answer would end the program.
int OnXError(Display* display, XErrorEvent* error) {
    return error->error_code == BadWindow ? 0 : TheDisplay().nextErrorHandler(display, error);
}

}  // namespace

// Mesa's software renderer takes a block of memory for every drawing and frees it after the frame.
// Given back to the system each time, the pages cost several times what the drawing costs; kept,
// the frame is up to eight times cheaper. The bound is more than any frame needs.
static void KeepFreedMemory() {
    constexpr int kKeptBytes = 256 << 20;
    mallopt(M_TRIM_THRESHOLD, kKeptBytes);
}

bool OpenDisplay() {
    DisplayState& state = TheDisplay();
    if (state.displayOpen) {
        return false;
    }
    KeepFreedMemory();
    // The message queue has handlers of its own; and a window that is created anew is not the end.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_QUIT_ON_LAST_WINDOW_CLOSE, "0");
    if (!ChooseDisplays()) {
        std::fprintf(stderr, "No display: neither DISPLAY nor WAYLAND_DISPLAY is set\n");
        return true;
    }
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0) {
        std::fprintf(stderr, "No display: %s\n", SDL_GetError());
        return true;
    }
    state.nextErrorHandler = XSetErrorHandler(OnXError);
    // While SDL listens for text, input methods take keys for themselves.
    SDL_StopTextInput();
    static const bool kRegistered = std::atexit(RestoreGuardedMode) == 0;
    (void)kRegistered;
    StartMessages();
    state.displayOpen = true;
    return false;
}

void CloseDisplay() {
    DisplayState& state = TheDisplay();
    if (!state.displayOpen) {
        return;
    }
    if (state.exists) {
        DestroyGameWindow(&state.window);
    }
    SDL_QuitSubSystem(SDL_INIT_VIDEO);
    XSetErrorHandler(state.nextErrorHandler);
    state.displayOpen = false;
}

bool ChangeDisplayMode(int width, int height, int bits) {
    SDL_DisplayMode mode = {};
    if (!TheDisplay().displayOpen || FindMode(width, height, bits, mode)) {
        return true;
    }
    TheDisplay().mode = mode;
    return false;
}

void RestoreDisplayMode() {
    DisplayState& state = TheDisplay();
    state.mode = {};
    if (state.exists && state.window.fullscreenEntered) {
        Hide(state.window);
    }
}

bool FindMultisampleFormat(int samples) {
    if (!TheDisplay().displayOpen || samples <= 0) {
        return false;
    }
    WindowOptions options;
    options.width = 16;
    options.height = 16;
    options.samples = samples;
    // Some display servers choose the format with the window, others with the context.
    const size_t depthChoice = TheDisplay().depthChoice;
    SDL_Window* const currentWindow = SDL_GL_GetCurrentWindow();
    const SDL_GLContext currentContext = SDL_GL_GetCurrentContext();
    SDL_Window* probe = CreateHidden(options, {0, 0}, 0);
    const SDL_GLContext context = probe != nullptr ? SDL_GL_CreateContext(probe) : nullptr;
    int offered = 0;
    if (context != nullptr) {
        SDL_GL_GetAttribute(SDL_GL_MULTISAMPLESAMPLES, &offered);
        SDL_GL_MakeCurrent(currentWindow, currentContext);
        SDL_GL_DeleteContext(context);
    }
    if (probe != nullptr) {
        SDL_DestroyWindow(probe);
    }
    TheDisplay().depthChoice = depthChoice;
    return offered >= samples;
}

WindowHandle CreateGameWindow(const WindowOptions& options) {
    DisplayState& state = TheDisplay();
    if (!state.displayOpen || state.exists || options.width <= 0 || options.height <= 0) {
        return nullptr;
    }
    const uint32_t flags =
        options.fullscreen ? SDL_WINDOW_BORDERLESS | SDL_WINDOW_ALWAYS_ON_TOP : 0;
    SDL_Window* sdl = CreateHidden(options, TopLeftCorner(options.fullscreen), flags);
    if (sdl == nullptr) {
        // What multisampling allowed may differ from what it leaves without.
        state.depthChoice = 0;
        sdl = CreateHidden(options, TopLeftCorner(options.fullscreen), flags);
    }
    if (sdl == nullptr) {
        std::fprintf(stderr, "No window: %s\n", SDL_GetError());
        return nullptr;
    }
    SetIcon(sdl);
    SDL_DisableScreenSaver();
    state.window = Window{};
    state.window.sdl = sdl;
    state.window.fullscreen = options.fullscreen;
    state.exists = true;
    state.swapWaits = false;
    ConfigurePacer();
    return &state.window;
}

bool DestroyGameWindow(WindowHandle window) {
    DisplayState& state = TheDisplay();
    if (window != &state.window || !state.exists) {
        return true;
    }
    ReleaseHeldKeys();
    SDL_DestroyWindow(state.window.sdl);
    EndDisplayModeGuard();
    SDL_EnableScreenSaver();
    state.exists = false;
    state.window = Window{};
    ForgetMessagesOf(window);
    return false;
}

void ShowGameWindow(WindowHandle window) {
    if (Sdl(window) == nullptr) {
        return;
    }
    Show(*window);
    ConfigurePacer();
    PostSizeChange();
}

void SetWindowVisible(WindowHandle window, bool visible) {
    if (Sdl(window) == nullptr) {
        return;
    }
    if (visible) {
        Show(*window);
    } else {
        Hide(*window);
    }
}

void ShowCursor(bool visible) {
    SDL_ShowCursor(visible ? SDL_ENABLE : SDL_DISABLE);
}

SurfaceHandle GetSurface(WindowHandle window) {
    return Sdl(window) != nullptr ? &TheDisplay().surface : nullptr;
}

bool ReleaseSurface(WindowHandle window, SurfaceHandle surface) {
    return Sdl(window) == nullptr || surface == nullptr;
}

void SwapBuffers(SurfaceHandle surface) {
    if (surface != nullptr && TheDisplay().exists) {
        SDL_GL_SwapWindow(TheDisplay().window.sdl);
    }
}

ContextHandle CreateContext(WindowHandle window) {
    if (Sdl(window) == nullptr) {
        return nullptr;
    }
    return static_cast<ContextHandle>(SDL_GL_CreateContext(window->sdl));
}

bool MakeCurrent(SurfaceHandle surface, ContextHandle context) {
    if (context == nullptr) {
        return SDL_GL_MakeCurrent(nullptr, nullptr) != 0;
    }
    if (surface == nullptr || !TheDisplay().exists) {
        return true;
    }
    return SDL_GL_MakeCurrent(TheDisplay().window.sdl, context) != 0;
}

bool DeleteContext(ContextHandle context) {
    if (context == nullptr) {
        return true;
    }
    SDL_GL_DeleteContext(context);
    return false;
}

void* GetProcAddress(const char* name) {
    return SDL_GL_GetCurrentContext() != nullptr ? SDL_GL_GetProcAddress(name) : nullptr;
}

bool SetSwapInterval(int refreshes) {
    const bool refused = SDL_GL_SetSwapInterval(refreshes) != 0;
    DisplayState& state = TheDisplay();
    if (!state.exists) {
        return true;
    }
    state.swapWaits = !refused && refreshes == 1;
    // A display that refreshes less often than the game has frames would slow it down: there the
    // frames are shown as they come.
    const int rate = RefreshRate();
    if (state.swapWaits && rate > 0 && rate < kSlowestWaitedRate) {
        SDL_GL_SetSwapInterval(0);
        state.swapWaits = false;
    }
    ConfigurePacer();
    return refused;
}

SDL_Window* DesktopWindow() {
    return TheDisplay().exists ? TheDisplay().window.sdl : nullptr;
}

WindowHandle GameWindow() {
    return TheDisplay().exists ? &TheDisplay().window : nullptr;
}

bool IsGameWindowPaintable() {
    if (!TheDisplay().exists) {
        return false;
    }
    const uint32_t flags = SDL_GetWindowFlags(TheDisplay().window.sdl);
    return (flags & SDL_WINDOW_SHOWN) != 0 && (flags & SDL_WINDOW_MINIMIZED) == 0;
}

void PostSizeChange() {
    if (!IsGameWindowPaintable()) {
        return;  // while it is hidden or on its way, a size means nothing
    }
    Window& window = TheDisplay().window;
    int width = 0;
    int height = 0;
    SDL_GL_GetDrawableSize(window.sdl, &width, &height);
    if (width == window.toldWidth && height == window.toldHeight) {
        return;
    }
    window.toldWidth = width;
    window.toldHeight = height;
    Message message;
    message.kind = MessageKind::Size;
    message.window = &window;
    message.width = width;
    message.height = height;
    PostMessage(message);
}

void DisplayOfWindowChanged() {
    ConfigurePacer();
}

FramePacer& ThePacer() {
    static FramePacer pacer;
    return pacer;
}

}  // namespace platform
