#pragma once

namespace platform {

// The virtual key of a key by what it means in the player's layout (`keycode`, an SDL_Keycode); by
// its place (`scancode`, an SDL_Scancode) where its meaning is no virtual key, as with the letters
// of other scripts. The keypad means digits while `numLock` is on, else what is printed below them.
// 0 for a key that the game does not know.
int VirtualKeyOf(int keycode, int scancode, bool numLock);

}  // namespace platform
