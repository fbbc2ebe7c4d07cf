#include "platform/Messages.h"

#include "platform/MessageQueue.h"

namespace platform {

MessageCentre& TheMessages() {
    static MessageCentre centre;
    return centre;
}

void SetWindowProcedure(WindowProcedure procedure) {
    TheMessages().procedure = procedure;
}

void DispatchMessage(const Message& message) {
    SendMessage(message);
}

void SendMessage(const Message& message) {
    if (TheMessages().procedure != nullptr) {
        TheMessages().procedure(message);
    }
}

void PostMessage(const Message& message) {
    TheMessages().queue.Post(message);
}

void PostQuit(int exitCode) {
    TheMessages().queue.RequestQuit(exitCode);
}

int ExitCode() {
    return TheMessages().queue.ExitCode();
}

void SetIdlePump(void (*pump)()) {
    TheMessages().idlePump = pump;
}

void RunIdlePump() {
    MessageCentre& centre = TheMessages();
    // A callback of the toolkit may itself wait for messages.
    if (centre.idlePump != nullptr && !centre.pumping) {
        centre.pumping = true;
        centre.idlePump();
        centre.pumping = false;
    }
}

}  // namespace platform
