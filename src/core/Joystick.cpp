#include "core/Joystick.h"

Joystick::~Joystick() {
    if (open) {
        platform::CloseController();
    }
}

int Joystick::Init(bool& found) {
    const int code = platform::OpenController(found);
    open = code == 0 && found;
    return code;
}

const platform::ControllerState* Joystick::GetState() {
    if (!open || platform::ReadController(state)) {
        return nullptr;
    }
    return &state;
}
