#pragma once

// Fills the registry of globals for programs that run the game without its start-up: tools and
// tests. EmptyRegistry of app/Application.h empties it.

#include <cstdint>

class GLWindow;

// Preferences with online hiscores off, keys, the window and the sound, which is
// not initialised. `prepare` is called before the window opens. True = failure.
bool FillRegistry(const char* title, int16_t width, int16_t height,
                  void (*prepare)(GLWindow& window) = nullptr);
// After that, and with the managers' models loaded: the player's ship, the level manager and empty
// hiscores. True = failure.
bool AddGameToRegistry();
