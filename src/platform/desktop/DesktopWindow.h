#pragma once

// What the desktop files know of the game's window beyond Window.h.

#include <cstdint>

#include "platform/Window.h"

struct SDL_Window;

namespace platform {

class FramePacer;

// The game's window for toolkits that need a parent; null while there is none.
SDL_Window* DesktopWindow();

// The same as the handle that messages carry; null while there is none.
WindowHandle GameWindow();
// On the screen and not minimised: only then frames are wanted.
bool IsGameWindowPaintable();
// Posts a Size message when the client size is no longer the one last told.
void PostSizeChange();
// The window is on another display, or its display's mode has changed.
void DisplayOfWindowChanged();

FramePacer& ThePacer();

}  // namespace platform
