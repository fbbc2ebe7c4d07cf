#include "platform/Controller.h"

#include "platform/null/NullMedia.h"

namespace platform {

int OpenController(bool& found) {
    NullMedia& media = Media();
    found = media.controllerError == 0 && media.controllerAttached;
    media.controllerOpen = found;
    return media.controllerError;
}

void CloseController() {
    Media().controllerOpen = false;
}

bool ControllerHasForceFeedback() {
    return Media().controllerOpen && Media().controllerForceFeedback;
}

bool ReadController(ControllerState& state) {
    const NullMedia& media = Media();
    if (!media.controllerOpen || !media.controllerAttached) {
        return true;
    }
    state = media.controller;
    return false;
}

}  // namespace platform
