#pragma once

// Changes of the window during the game. Each destroys the window with its context, makes both anew
// and rebuilds every GL object. When that fails there is nothing left to play in, so the program is
// asked to close.

#include <cstdint>

void FlipFullscreen();
// The window again, of this size in pixels and colour depth.
void RecreateWindow(int16_t width, int16_t height, uint8_t bits);
