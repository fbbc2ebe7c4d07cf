#pragma once

// The program's spine: creates every long-lived object in a fixed order, turns messages into frames
// and key states, and releases everything in a fixed order.

#include "platform/Messages.h"

class GLWindow;

// Fills the registry. When a step fails, or the player refuses the window, the shut-down has
// already run and the quit message waits in the queue: entering the message loop then ends the
// program at once.
void StartUp();

// Saves the preferences, empties the registry, closes the log and posts the quit message with that
// exit code. Does nothing the second time.
void ShutDown(int exitCode);

// Releases every object of the registry that is there, in the order of the shut-down. Called by it,
// and by programs that fill the registry themselves.
void EmptyRegistry();

// Registers the parts of the game that keep GL objects of their own with the window, in the order
// in which they want them created. Called by StartUp, and by tools that draw the game themselves.
void AddGameTenants(GLWindow& window);

// Registered as the window procedure by StartUp.
void HandleMessage(const platform::Message& message);

// The message loop: until the quit message. Returns the exit code.
int RunMessageLoop();
