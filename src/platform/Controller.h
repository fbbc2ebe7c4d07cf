#pragma once

// The first attached game controller.

#include <cstdint>

namespace platform {

struct ControllerState {
    int32_t lX = 0;  // -1000 left to 1000 right
    int32_t lY = 0;  // -1000 up to 1000 down
    bool buttons[128] = {};
};

// Opens the first controller; `found` tells whether there is one. Returns 0, or the code of the
// step that failed (7 to 14).
int OpenController(bool& found);
void CloseController();
bool ControllerHasForceFeedback();
// True = failure: unplugged or unreadable. A controller that comes back is picked up again.
bool ReadController(ControllerState& state);

}  // namespace platform
