#pragma once

// Gives the desktop its display mode back when the program dies in full screen. A server keeps the
// mode of a program that has crashed, and the player would be left with a desktop of 640 x 480.
//
// Hardly anything may be called in a program that has just crashed: its locks may be held and its
// heap torn, and a library call could hang it with the mode still changed. So the guard prepares
// the requests beforehand, on a connection of its own, and the handler of a fatal signal only
// writes the finished bytes to that connection. Where display modes are not the server's (Wayland)
// there is nothing to guard.

namespace platform {

// Remembers the desktop as it is now and watches from now on; before the mode is changed.
void GuardDisplayMode();
// The mode is back: stops watching.
void EndDisplayModeGuard();
// Sends the desktop's mode now, if the guard still watches. May be called in a signal handler.
void RestoreGuardedMode();

}  // namespace platform
