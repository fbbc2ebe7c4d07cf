#pragma once

struct SDL_Window;

namespace platform {

// Gives the window the picture of the resource "Icon"; without one it keeps the system's.
void SetIcon(SDL_Window* window);

}  // namespace platform
