#pragma once

// The game's window, the display mode of full screen and the OpenGL context. One window exists at
// a time. All calls belong to the main thread. Results of type bool: true means failure.

namespace platform {

struct Window;
struct Surface;
struct RenderContext;
using WindowHandle = Window*;          // the window
using SurfaceHandle = Surface*;        // what is drawn to and swapped
using ContextHandle = RenderContext*;  // the OpenGL context

struct WindowOptions {
    const char* title = "";
    int width = 0;  // pixels of the client area
    int height = 0;
    bool fullscreen = false;  // undecorated and on top, in the mode of the last ChangeDisplayMode
    int samples = 0;          // multisample buffers as found by FindMultisampleFormat; 0 for none
};

// Opens the connection to the display. True when there is none; a line says why.
bool OpenDisplay();
void CloseDisplay();

// Asks for a full-screen mode of exactly this size and depth. True when the display has no such
// mode. The mode takes effect with the next full-screen window.
bool ChangeDisplayMode(int width, int height, int bits);
// Back to the desktop's own mode. Runs by itself when the program ends, also on a fatal signal.
void RestoreDisplayMode();

// Whether the display offers a double-buffered format with so many samples to a pixel.
bool FindMultisampleFormat(int samples);

// Creates the window, still hidden. Null when it cannot be created.
WindowHandle CreateGameWindow(const WindowOptions& options);
bool DestroyGameWindow(WindowHandle window);
// Shows the window, brings it to the front and gives it the keyboard.
void ShowGameWindow(WindowHandle window);
// Hides the window while a dialog is open, and brings it back.
void SetWindowVisible(WindowHandle window, bool visible);
void ShowCursor(bool visible);

SurfaceHandle GetSurface(WindowHandle window);
bool ReleaseSurface(WindowHandle window, SurfaceHandle surface);
void SwapBuffers(SurfaceHandle surface);

ContextHandle CreateContext(WindowHandle window);
// A null context makes none current.
bool MakeCurrent(SurfaceHandle surface, ContextHandle context);
bool DeleteContext(ContextHandle context);

// Entry point of an OpenGL extension; null when the driver lacks it.
void* GetProcAddress(const char* name);
// Waits for so many display refreshes at each swap. True when the driver cannot.
bool SetSwapInterval(int refreshes);

}  // namespace platform
