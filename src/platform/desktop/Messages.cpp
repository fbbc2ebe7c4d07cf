#include "platform/Messages.h"

#include <SDL.h>
#include <time.h>

#include <algorithm>
#include <csignal>

#include "platform/Clock.h"
#include "platform/FramePacer.h"
#include "platform/MessageQueue.h"
#include "platform/VirtualKeys.h"
#include "platform/desktop/DesktopMessages.h"
#include "platform/desktop/DesktopWindow.h"
#include "platform/desktop/HeldKeys.h"
#include "platform/desktop/ModeGuard.h"
#include "platform/desktop/VirtualKeyMap.h"

namespace platform {

namespace {

constexpr int64_t kMillisecond = 1000000;
// How long the queue sleeps at most before it looks after toolkits and signals again.
constexpr int64_t kLongestNap = 16 * kMillisecond;
constexpr int64_t kLongestNapUnseen = 50 * kMillisecond;  // while no frame is wanted

struct State {
    HeldKeys held;
    bool closeBySignal = false;  // a signal has asked for it, and Close has been posted
    // A frame is due: so many of the messages that waited then still come before it.
    bool frameAnnounced = false;
    size_t messagesBeforeFrame = 0;
};

State& TheState() {
    static State state;
    return state;
}

// Set by the handlers of SIGINT, SIGTERM and SIGHUP.
volatile std::sig_atomic_t closeRequests = 0;

// The first request closes the game in good order. Whoever asks a second time finds a game that
// does not answer; the signal then does what it does without a handler.
extern "C" void OnCloseSignal(int signal) {
    if (closeRequests == 0) {
        closeRequests = 1;
        return;
    }
    RestoreGuardedMode();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

int64_t Now() {
    return PerformanceCounter();
}

void Post(MessageKind kind, int code) {
    Message message;
    message.kind = kind;
    message.window = GameWindow();
    message.code = code;
    PostMessage(message);
}

void KeyPressed(const SDL_KeyboardEvent& event) {
    const SDL_Keysym& key = event.keysym;
    const int pressed = VirtualKeyOf(key.sym, key.scancode, (key.mod & KMOD_NUM) != 0);
    const int virtualKey = TheState().held.Press(key.scancode, pressed);
    if (virtualKey == 0) {
        return;
    }
    const bool system = virtualKey == VK_MENU || (key.mod & KMOD_ALT) != 0;
    Post(system ? MessageKind::SysKeyDown : MessageKind::KeyDown, virtualKey);
    // Window managers take this key for themselves; where none runs it is ours to keep the promise.
    if (system && virtualKey == VK_F1 + 3 && event.repeat == 0) {
        Post(MessageKind::Close, 0);
    }
}

void KeyReleased(const SDL_KeyboardEvent& event) {
    const int virtualKey = TheState().held.Release(event.keysym.scancode);
    if (virtualKey != 0) {
        Post(MessageKind::KeyUp, virtualKey);
    }
}

void WindowChanged(const SDL_WindowEvent& event) {
    if (DesktopWindow() == nullptr || event.windowID != SDL_GetWindowID(DesktopWindow())) {
        return;  // of a window that is gone
    }
    switch (event.event) {
        case SDL_WINDOWEVENT_CLOSE:
            Post(MessageKind::Close, 0);
            break;
        case SDL_WINDOWEVENT_FOCUS_LOST:
            ReleaseHeldKeys();
            break;
        case SDL_WINDOWEVENT_DISPLAY_CHANGED:
            DisplayOfWindowChanged();
            break;
        default:
            break;
    }
}

void Translate(const SDL_Event& event) {
    switch (event.type) {
        case SDL_KEYDOWN:
            KeyPressed(event.key);
            break;
        case SDL_KEYUP:
            KeyReleased(event.key);
            break;
        case SDL_MOUSEMOTION:
            Post(MessageKind::MouseMove, 0);
            break;
        case SDL_WINDOWEVENT:
            WindowChanged(event.window);
            break;
        case SDL_QUIT:
            Post(MessageKind::Close, 0);
            break;
        default:
            break;
    }
}

// One round: takes in everything that the system has for the game now.
void TakeIn() {
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        Translate(event);
    }
    if (closeRequests != 0 && !TheState().closeBySignal) {
        TheState().closeBySignal = true;
        Post(MessageKind::Close, 0);
    }
    RunIdlePump();
    PostSizeChange();
}

// Sleeps for so long, or until something comes in. SDL counts in milliseconds; what is left of one
// is too short for a player to notice that a key waits.
void Nap(int64_t nanoseconds) {
    if (nanoseconds < kMillisecond) {
        const timespec rest = {0, static_cast<long>(nanoseconds)};
        clock_nanosleep(CLOCK_MONOTONIC, 0, &rest, nullptr);
        return;
    }
    SDL_Event event;
    if (SDL_WaitEventTimeout(&event, static_cast<int>(nanoseconds / kMillisecond)) != 0) {
        Translate(event);
    }
}

// Whether the next message is the paint message. What waits when a frame falls due comes first;
// what comes in meanwhile has to wait for the frame, so that no flood of input stops the game.
bool FrameComesNext(bool due) {
    State& state = TheState();
    if (!due) {
        return false;
    }
    if (!state.frameAnnounced) {
        state.frameAnnounced = true;
        state.messagesBeforeFrame = TheMessages().queue.Count();
    }
    state.messagesBeforeFrame = std::min(state.messagesBeforeFrame, TheMessages().queue.Count());
    return state.messagesBeforeFrame == 0;
}

bool TakeMessage(Message& message) {
    State& state = TheState();
    if (!TheMessages().queue.Take(message)) {
        return false;
    }
    if (state.messagesBeforeFrame > 0) {
        --state.messagesBeforeFrame;
    }
    return true;
}

void BeginFrame(Message& message) {
    TheState().frameAnnounced = false;
    ThePacer().FrameBegins(Now());
    message = Message{};
    message.kind = MessageKind::Paint;
    message.window = GameWindow();
}

}  // namespace

bool GetMessage(Message& message) {
    MessageQueue& queue = TheMessages().queue;
    for (;;) {
        TakeIn();
        const bool wanted = IsGameWindowPaintable() && !queue.QuitRequested();
        const int64_t wait = wanted ? ThePacer().TimeToNextFrame(Now()) : kLongestNapUnseen;
        if (FrameComesNext(wanted && wait == 0)) {
            BeginFrame(message);
            return true;
        }
        if (TakeMessage(message)) {
            return true;
        }
        if (queue.QuitDue()) {
            return false;
        }
        if (wait > 0) {
            Nap(wait);
        }
    }
}

bool PeekMessage(Message& message) {
    TakeIn();
    return TakeMessage(message);
}

void Pause(int milliseconds) {
    const int64_t end = Now() + milliseconds * kMillisecond;
    for (int64_t rest = end - Now(); rest > 0; rest = end - Now()) {
        TakeIn();
        Nap(std::min(rest, kLongestNap));
    }
    TakeIn();
}

void StartMessages() {
    TheMessages().queue.Clear();
    TheState().held = HeldKeys{};
    TheState().closeBySignal = false;
    closeRequests = 0;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        std::signal(signal, OnCloseSignal);
    }
}

void ReleaseHeldKeys() {
    for (int key = TheState().held.TakeAny(); key != 0; key = TheState().held.TakeAny()) {
        Post(MessageKind::KeyUp, key);
    }
}

bool CloseRequestedBySignal() {
    return closeRequests != 0;
}

void ForgetMessagesOf(WindowHandle window) {
    TheMessages().queue.Forget(window);
}

}  // namespace platform
