#include "platform/desktop/ModeGuard.h"

#include <SDL.h>
#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

namespace platform {

namespace {

// Request codes of the RandR extension.
constexpr uint8_t kSetScreenSize = 7;
constexpr uint8_t kSetCrtcConfig = 21;

// Signals that ask the game to end are the message queue's business.
constexpr std::array kFatalSignals = {SIGSEGV, SIGBUS, SIGFPE,  SIGILL,
                                      SIGABRT, SIGSYS, SIGTRAP, SIGQUIT};

// Everything that the signal handler reads.
struct Guard {
    volatile std::sig_atomic_t watching = 0;
    int connection = -1;
    std::array<uint8_t, 4096> requests = {};
    size_t size = 0;
    std::array<struct sigaction, kFatalSignals.size()> previous = {};
};
Guard guard;

Display* display = nullptr;  // the guard's own connection; open until the program ends

struct ResourcesFree {
    void operator()(XRRScreenResources* resources) const { XRRFreeScreenResources(resources); }
};
struct CrtcFree {
    void operator()(XRRCrtcInfo* crtc) const { XRRFreeCrtcInfo(crtc); }
};

// Appends to the prepared requests, in the byte order of this machine as the connection has it.
class RequestWriter {
public:
    template <typename Number>
    void Put(Number number) {
        if (guard.size + sizeof number > guard.requests.size()) {
            overflow = true;
            return;
        }
        std::memcpy(guard.requests.data() + guard.size, &number, sizeof number);
        guard.size += sizeof number;
    }
    void Header(int majorCode, uint8_t minorCode, int words) {
        Put(static_cast<uint8_t>(majorCode));
        Put(minorCode);
        Put(static_cast<uint16_t>(words));
    }
    bool Overflow() const { return overflow; }

private:
    bool overflow = false;
};

// The settings of one display controller; null for switching it off.
void PutCrtc(RequestWriter& writer, int majorCode, RRCrtc id, Time configTime,
             const XRRCrtcInfo* crtc) {
    const int outputs = crtc != nullptr ? crtc->noutput : 0;
    writer.Header(majorCode, kSetCrtcConfig, 7 + outputs);
    writer.Put(static_cast<uint32_t>(id));
    writer.Put(uint32_t{CurrentTime});
    writer.Put(static_cast<uint32_t>(configTime));
    writer.Put(static_cast<int16_t>(crtc != nullptr ? crtc->x : 0));
    writer.Put(static_cast<int16_t>(crtc != nullptr ? crtc->y : 0));
    writer.Put(static_cast<uint32_t>(crtc != nullptr ? crtc->mode : None));
    writer.Put(static_cast<uint16_t>(crtc != nullptr ? crtc->rotation : RR_Rotate_0));
    writer.Put(uint16_t{0});
    for (int i = 0; i < outputs; ++i) {
        writer.Put(static_cast<uint32_t>(crtc->outputs[i]));
    }
}

void PutScreenSize(RequestWriter& writer, int majorCode) {
    const int screen = DefaultScreen(display);
    // What Xlib keeps of the screen's size follows the changes only of programs that ask for them,
    // so the size is asked of the root window.
    ::Window root = 0;
    int x = 0;
    int y = 0;
    unsigned width = 0;
    unsigned height = 0;
    unsigned border = 0;
    unsigned depth = 0;
    XGetGeometry(display, RootWindow(display, screen), &root, &x, &y, &width, &height, &border,
                 &depth);
    writer.Header(majorCode, kSetScreenSize, 5);
    writer.Put(static_cast<uint32_t>(RootWindow(display, screen)));
    writer.Put(static_cast<uint16_t>(width));
    writer.Put(static_cast<uint16_t>(height));
    // Millimetres, at the pixel size with which the connection was opened.
    writer.Put(static_cast<uint32_t>(DisplayWidthMM(display, screen) * width /
                                     static_cast<unsigned>(DisplayWidth(display, screen))));
    writer.Put(static_cast<uint32_t>(DisplayHeightMM(display, screen) * height /
                                     static_cast<unsigned>(DisplayHeight(display, screen))));
}

// All controllers off, the size of the whole screen, all controllers as they are now: a controller
// must never show more than the screen has. True = failure.
bool PrepareRequests() {
    guard.size = 0;
    int majorCode = 0;
    int firstEvent = 0;
    int firstError = 0;
    if (XQueryExtension(display, "RANDR", &majorCode, &firstEvent, &firstError) == False) {
        return true;
    }
    const std::unique_ptr<XRRScreenResources, ResourcesFree> resources(
        XRRGetScreenResourcesCurrent(display, DefaultRootWindow(display)));
    if (!resources) {
        return true;
    }
    RequestWriter writer;
    for (int i = 0; i < resources->ncrtc; ++i) {
        PutCrtc(writer, majorCode, resources->crtcs[i], resources->configTimestamp, nullptr);
    }
    PutScreenSize(writer, majorCode);
    for (int i = 0; i < resources->ncrtc; ++i) {
        const std::unique_ptr<XRRCrtcInfo, CrtcFree> crtc(
            XRRGetCrtcInfo(display, resources.get(), resources->crtcs[i]));
        if (crtc && crtc->mode != None) {
            PutCrtc(writer, majorCode, resources->crtcs[i], resources->configTimestamp, crtc.get());
        }
    }
    return writer.Overflow();
}

// Only what POSIX allows in a signal handler from here to OnFatalSignal.
void SendPreparedRequests() {
    if (guard.watching == 0) {
        return;
    }
    guard.watching = 0;
    size_t sent = 0;
    while (sent < guard.size) {
        const ssize_t written =
            write(guard.connection, guard.requests.data() + sent, guard.size - sent);
        if (written <= 0) {
            return;
        }
        sent += static_cast<size_t>(written);
    }
}

extern "C" void OnFatalSignal(int signal, siginfo_t* info, void* /*context*/) {
    const int savedErrno = errno;
    SendPreparedRequests();
    for (size_t i = 0; i < kFatalSignals.size(); ++i) {
        if (kFatalSignals[i] == signal) {
            sigaction(signal, &guard.previous[i], nullptr);
        }
    }
    errno = savedErrno;
    // Returning repeats what the processor could not do, now with the handler that was there
    // before; a signal that somebody sent has to be sent again.
    if (info == nullptr || info->si_code <= 0) {
        raise(signal);
    }
}

// A handler needs a stack of its own where the fault is that the stack is full.
void GiveHandlersAStack() {
    static std::array<uint8_t, 16384> memory;
    stack_t now = {};
    if (sigaltstack(nullptr, &now) == 0 && (now.ss_flags & SS_DISABLE) != 0) {
        const stack_t own = {memory.data(), 0, memory.size()};
        sigaltstack(&own, nullptr);
    }
}

void WatchSignals() {
    struct sigaction action = {};
    action.sa_sigaction = OnFatalSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    GiveHandlersAStack();
    for (size_t i = 0; i < kFatalSignals.size(); ++i) {
        sigaction(kFatalSignals[i], &action, &guard.previous[i]);
    }
}

void UnwatchSignals() {
    for (size_t i = 0; i < kFatalSignals.size(); ++i) {
        struct sigaction now = {};
        sigaction(kFatalSignals[i], nullptr, &now);
        if ((now.sa_flags & SA_SIGINFO) != 0 && now.sa_sigaction == OnFatalSignal) {
            sigaction(kFatalSignals[i], &guard.previous[i], nullptr);
        }
    }
}

}  // namespace

void GuardDisplayMode() {
    const char* driver = SDL_GetCurrentVideoDriver();
    if (guard.watching != 0 || driver == nullptr || std::string_view(driver) != "x11") {
        return;
    }
    if (display == nullptr) {
        display = XOpenDisplay(nullptr);
    }
    if (display == nullptr || PrepareRequests()) {
        return;
    }
    XSync(display, False);
    guard.connection = ConnectionNumber(display);
    WatchSignals();
    guard.watching = 1;
}

void EndDisplayModeGuard() {
    if (guard.watching != 0) {
        guard.watching = 0;
        UnwatchSignals();
    }
}

void RestoreGuardedMode() {
    SendPreparedRequests();
}

}  // namespace platform
