#include "platform/Controller.h"

#include "platform/null/NullMedia.h"

namespace platform {

int OpenController(bool& found) {
    null::NullMedia& media = null::Media();
    found = media.controllerError == 0 && media.controllerAttached;
    media.controllerOpen = found;
    return media.controllerError;
}

void CloseController() {
    null::Media().controllerOpen = false;
}

bool ControllerHasForceFeedback() {
    return null::Media().controllerOpen && null::Media().controllerForceFeedback;
}

bool ReadController(ControllerState& state) {
    const null::NullMedia& media = null::Media();
    if (!media.controllerOpen || !media.controllerAttached) {
        return true;
    }
    state = media.controller;
    return false;
}

}  // namespace platform
