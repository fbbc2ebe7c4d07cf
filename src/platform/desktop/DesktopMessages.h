#pragma once

// What the desktop files know of the message queue beyond Messages.h.

#include "platform/Window.h"

namespace platform {

// Fresh queue and signal handling, when the display is opened.
void StartMessages();
// Reports every key that the game believes held as released: the keyboard goes elsewhere.
void ReleaseHeldKeys();
// Whether a signal has asked the game to end. An open dialog has to close for that.
bool CloseRequestedBySignal();
// Drops the waiting messages that only this window could have cared about.
void ForgetMessagesOf(WindowHandle window);

}  // namespace platform
