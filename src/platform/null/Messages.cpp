#include "platform/Messages.h"

#include "platform/FramePacer.h"
#include "platform/MessageQueue.h"
#include "platform/Random.h"
#include "platform/null/NullState.h"

namespace platform {

namespace {

constexpr int64_t kSecond = 1000000000;

struct State {
    void (*frameHook)(int64_t) = nullptr;
    int64_t paints = 0;
};

State& TheState() {
    static State state;
    return state;
}

// The clock stands at a whole number of frames since its start when nothing else moves it.
void AdvanceOneFrame(int64_t frame) {
    const int64_t before = frame * kSecond / FramePacer::kFramesPerSecond;
    const int64_t after = (frame + 1) * kSecond / FramePacer::kFramesPerSecond;
    null::AdvanceClock(after - before);
}

}  // namespace

bool GetMessage(Message& message) {
    State& state = TheState();
    MessageQueue& queue = TheMessages().queue;
    RunIdlePump();
    const bool canPaint = null::TheWindow().exists && null::TheWindow().visible;
    if (queue.Count() == 0 && canPaint && !queue.QuitRequested() && state.frameHook != nullptr) {
        state.frameHook(state.paints);  // may post messages, which then come first
    }
    if (queue.Take(message)) {
        return true;
    }
    if (queue.QuitRequested() || !canPaint) {
        return false;
    }
    AdvanceOneFrame(state.paints);
    ++state.paints;
    message = Message{};
    message.kind = MessageKind::Paint;
    message.window = null::GameWindow();
    return true;
}

bool PeekMessage(Message& message) {
    RunIdlePump();
    return TheMessages().queue.Take(message);
}

void Pause(int milliseconds) {
    RunIdlePump();
    null::AdvanceClock(int64_t{1000000} * milliseconds);
}

namespace null {

void SetFrameHook(void (*hook)(int64_t frame)) {
    TheState().frameHook = hook;
}

int64_t PaintsDelivered() {
    return TheState().paints;
}

void PressKey(int virtualKey) {
    PostMessage({MessageKind::KeyDown, null::GameWindow(), virtualKey, 0, 0});
}

void ReleaseKey(int virtualKey) {
    PostMessage({MessageKind::KeyUp, null::GameWindow(), virtualKey, 0, 0});
}

void ForgetWindowMessages(WindowHandle window) {
    TheMessages().queue.Forget(window);
}

void ResetMessages() {
    TheMessages().queue.Clear();
    TheMessages().procedure = nullptr;
    TheMessages().idlePump = nullptr;
    TheState() = State{};
}

void Reset() {
    TheSystem() = System{};
    ResetWindow();
    ResetMessages();
    ResetClock();
    ResetGl();
    SeedRandom(1);
}

}  // namespace null

}  // namespace platform
