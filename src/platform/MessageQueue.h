#pragma once

// The waiting messages, the quit request and who is told of them, shared by every platform's
// Messages.cpp. The program does not use it directly: see Messages.h.

#include <cstddef>
#include <vector>

#include "platform/Messages.h"

namespace platform {

class MessageQueue {
public:
    MessageQueue() : ring(64) {}

    void Post(const Message& message);
    // Takes the oldest message; false when there is none, or none from before the quit request.
    bool Take(Message& message);
    size_t Count() const { return count; }
    // Drops what speaks of the size and the pointer of a window that is about to go. Key messages
    // and the wish to close outlive their window.
    void Forget(WindowHandle window);

    void RequestQuit(int code);
    // Quit was requested and everything posted before has been taken.
    bool QuitDue() const { return quitRequested && untilQuit == 0; }
    bool QuitRequested() const { return quitRequested; }
    int ExitCode() const { return exitCode; }
    void Clear();

private:
    Message& At(size_t index) { return ring[(first + index) % ring.size()]; }

    std::vector<Message> ring;  // grows when it is full, never shrinks
    size_t first = 0;
    size_t count = 0;
    bool quitRequested = false;
    size_t untilQuit = 0;  // messages that still come before the quit
    int exitCode = 0;
};

// What every platform's messages have in common.
struct MessageCentre {
    MessageQueue queue;
    WindowProcedure procedure = nullptr;
    void (*idlePump)() = nullptr;
    bool pumping = false;  // inside idlePump
};
MessageCentre& TheMessages();
// Calls the idle pump, unless it is from inside of it that somebody waits for messages.
void RunIdlePump();

}  // namespace platform
