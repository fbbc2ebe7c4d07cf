#pragma once

// The message queue of the main thread. There is no frame timer: whenever nothing else waits, the
// queue delivers a paint message, and each paint message is one frame of the game. The queue also
// sets the pace: see FramePacer.h.

#include "platform/Window.h"

namespace platform {

enum class MessageKind {
    Paint,       // draw and update one frame
    Size,        // width, height: the new client size in pixels
    KeyDown,     // code: virtual key; sent again while the key repeats
    KeyUp,       // code: virtual key; also sent for every held key when the window loses the focus
    SysKeyDown,  // code: virtual key pressed while Alt is held
    MouseMove,
    Close,    // the player or the desktop asks the window to close
    Tray,     // code: kTrayLeftButton or kTrayRightButton
    Command,  // code: the command id of a menu item
};

constexpr int kTrayLeftButton = 1;
constexpr int kTrayRightButton = 2;

struct Message {
    MessageKind kind = MessageKind::Paint;
    WindowHandle window = nullptr;
    int code = 0;
    int width = 0;   // Size only
    int height = 0;  // Size only
};

using WindowProcedure = void (*)(const Message& message);

// The one procedure that DispatchMessage and SendMessage call. Null drops every message.
void SetWindowProcedure(WindowProcedure procedure);

// Waits for the next message. Returns false once PostQuit has been called and the messages that
// were posted before it have been delivered. Paint messages come only while a window is visible.
bool GetMessage(Message& message);
// Takes a waiting message other than a paint message; false when there is none. Never waits.
bool PeekMessage(Message& message);
void DispatchMessage(const Message& message);

// Calls the window procedure at once, from inside this call.
void SendMessage(const Message& message);
// Appends the message to the queue; it is delivered after what already waits.
void PostMessage(const Message& message);
void PostQuit(int exitCode);
// What PostQuit was given; 0 before.
int ExitCode();

// Stops the game for so long while the desktop still gets its answers, so that the window never
// looks hung. Input that arrives meanwhile waits in the queue.
void Pause(int milliseconds);

// A function that GetMessage, PeekMessage and Pause call in each of their rounds, so that a toolkit
// with an event loop of its own gets its turn beside the game. Null for none.
void SetIdlePump(void (*pump)());

}  // namespace platform
