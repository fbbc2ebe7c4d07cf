#pragma once

// The first attached game controller, read once a frame by whoever needs it.

#include "platform/Controller.h"

class Joystick {
public:
    Joystick() = default;
    ~Joystick();
    Joystick(const Joystick&) = delete;
    Joystick& operator=(const Joystick&) = delete;

    // Opens the controller; `found` tells whether there is one. Returns 0, or the code of the step
    // that failed, with which the program then ends.
    int Init(bool& found);

    // The state now; null when it cannot be read, which means no input.
    const platform::ControllerState* GetState();

private:
    platform::ControllerState state;
    bool open = false;
};
