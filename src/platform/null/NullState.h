#pragma once

// What the files of this folder know of one another.

#include "platform/null/NullGl.h"
#include "platform/null/NullPlatform.h"

namespace platform::null {

void ResetClock();
void ResetMessages();
void ResetWindow();
WindowHandle GameWindow();  // null while there is none
// The window is gone: drops the messages that only it could have cared about.
void ForgetWindowMessages(WindowHandle window);

// Tells OpenGL which context its calls belong to.
void ContextIsCurrent(bool current);
// The context is gone, and with it every list, texture and all state.
void DropGlObjects();

}  // namespace platform::null
