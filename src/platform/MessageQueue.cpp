#include "platform/MessageQueue.h"

#include <algorithm>

namespace platform {

namespace {

// Of these, one that waits already says all that a second one would.
bool SaysTheSame(const Message& waiting, const Message& message) {
    return waiting.kind == message.kind && waiting.window == message.window &&
           (message.kind == MessageKind::MouseMove || message.kind == MessageKind::Close);
}

}  // namespace

void MessageQueue::Post(const Message& message) {
    if (count > 0 && SaysTheSame(At(count - 1), message)) {
        return;
    }
    if (count == ring.size()) {
        std::rotate(ring.begin(), ring.begin() + static_cast<std::ptrdiff_t>(first), ring.end());
        first = 0;
        ring.resize(ring.size() * 2);
    }
    At(count) = message;
    ++count;
}

bool MessageQueue::Take(Message& message) {
    if (count == 0 || QuitDue()) {
        return false;
    }
    message = ring[first];
    first = (first + 1) % ring.size();
    --count;
    if (untilQuit > 0) {
        --untilQuit;
    }
    return true;
}

void MessageQueue::Forget(WindowHandle window) {
    size_t kept = 0;
    size_t keptUntilQuit = 0;
    for (size_t i = 0; i < count; ++i) {
        const Message message = At(i);
        const bool ofTheWindow =
            message.window == window &&
            (message.kind == MessageKind::Size || message.kind == MessageKind::MouseMove);
        if (!ofTheWindow) {
            At(kept++) = message;
            keptUntilQuit += i < untilQuit ? 1 : 0;
        }
    }
    count = kept;
    untilQuit = keptUntilQuit;
}

void MessageQueue::RequestQuit(int code) {
    exitCode = code;
    if (!quitRequested) {
        quitRequested = true;
        untilQuit = count;
    }
}

void MessageQueue::Clear() {
    first = 0;
    count = 0;
    quitRequested = false;
    untilQuit = 0;
    exitCode = 0;
}

}  // namespace platform
