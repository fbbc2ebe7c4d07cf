#include "platform/Controller.h"

#include <SDL.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace platform {

namespace {

constexpr int kFullDeflection = 1000;
constexpr int kDeadZone = 80;  // a stick at rest is rarely at 0
constexpr int kAxisMaximum = 32767;
constexpr int kAutoCenter = 100;  // per cent
constexpr int kSubsystemFailed = 7;
constexpr int kDeviceFailed = 9;

struct OpenDevice {
    SDL_GameController* pad = nullptr;  // null for a plain joystick
    SDL_Joystick* joystick = nullptr;   // belongs to the pad where there is one
    SDL_Haptic* haptic = nullptr;
};
OpenDevice device;

// True = failure.
bool OpenFirst() {
    if (SDL_IsGameController(0) == SDL_TRUE) {
        device.pad = SDL_GameControllerOpen(0);
        device.joystick = SDL_GameControllerGetJoystick(device.pad);
    } else {
        device.joystick = SDL_JoystickOpen(0);
    }
    return device.joystick == nullptr;
}

void CloseDevice() {
    if (device.haptic != nullptr) {
        SDL_HapticClose(device.haptic);
        SDL_QuitSubSystem(SDL_INIT_HAPTIC);
    }
    if (device.pad != nullptr) {
        SDL_GameControllerClose(device.pad);
    } else if (device.joystick != nullptr) {
        SDL_JoystickClose(device.joystick);
    }
    device = OpenDevice{};
}

// A device with force feedback pulls its stick back to the centre. Whether it does is not worth an
// error.
void StartForceFeedback() {
    if (SDL_InitSubSystem(SDL_INIT_HAPTIC) != 0) {
        return;
    }
    if (SDL_JoystickIsHaptic(device.joystick) == 1) {
        device.haptic = SDL_HapticOpenFromJoystick(device.joystick);
    }
    if (device.haptic == nullptr) {
        SDL_QuitSubSystem(SDL_INIT_HAPTIC);
        return;
    }
    if ((SDL_HapticQuery(device.haptic) & SDL_HAPTIC_AUTOCENTER) != 0) {
        SDL_HapticSetAutocenter(device.haptic, kAutoCenter);
    }
}

void StopSubsystems() {
    SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER | SDL_INIT_JOYSTICK);
}

int32_t ScaleAxis(Sint16 value) {
    const int scaled = std::max(value * kFullDeflection / kAxisMaximum, -kFullDeflection);
    return std::abs(scaled) < kDeadZone ? 0 : scaled;
}

// A pressed direction counts as full deflection, whatever the stick says.
void ApplyDirections(ControllerState& state, bool left, bool right, bool up, bool down) {
    if (left != right) {
        state.lX = left ? -kFullDeflection : kFullDeflection;
    }
    if (up != down) {
        state.lY = up ? -kFullDeflection : kFullDeflection;
    }
}

bool PadButton(SDL_GameControllerButton button) {
    return SDL_GameControllerGetButton(device.pad, button) != 0;
}

void ReadPad(ControllerState& state) {
    state.lX = ScaleAxis(SDL_GameControllerGetAxis(device.pad, SDL_CONTROLLER_AXIS_LEFTX));
    state.lY = ScaleAxis(SDL_GameControllerGetAxis(device.pad, SDL_CONTROLLER_AXIS_LEFTY));
    for (int i = 0; i < SDL_CONTROLLER_BUTTON_MAX; ++i) {
        state.buttons[i] = PadButton(static_cast<SDL_GameControllerButton>(i));
    }
    ApplyDirections(state, PadButton(SDL_CONTROLLER_BUTTON_DPAD_LEFT),
                    PadButton(SDL_CONTROLLER_BUTTON_DPAD_RIGHT),
                    PadButton(SDL_CONTROLLER_BUTTON_DPAD_UP),
                    PadButton(SDL_CONTROLLER_BUTTON_DPAD_DOWN));
}

void ReadJoystick(ControllerState& state) {
    state.lX = ScaleAxis(SDL_JoystickGetAxis(device.joystick, 0));
    state.lY = ScaleAxis(SDL_JoystickGetAxis(device.joystick, 1));
    const int buttons = std::min<int>(SDL_JoystickNumButtons(device.joystick),
                                      static_cast<int>(std::size(state.buttons)));
    for (int i = 0; i < buttons; ++i) {
        state.buttons[i] = SDL_JoystickGetButton(device.joystick, i) != 0;
    }
    if (SDL_JoystickNumHats(device.joystick) > 0) {
        const Uint8 hat = SDL_JoystickGetHat(device.joystick, 0);
        ApplyDirections(state, (hat & SDL_HAT_LEFT) != 0, (hat & SDL_HAT_RIGHT) != 0,
                        (hat & SDL_HAT_UP) != 0, (hat & SDL_HAT_DOWN) != 0);
    }
}

}  // namespace

int OpenController(bool& found) {
    found = false;
    // Read also while the window is not in front.
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    if (SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER | SDL_INIT_JOYSTICK) != 0) {
        return kSubsystemFailed;
    }
    const bool attached = SDL_NumJoysticks() > 0;
    if (!attached || OpenFirst()) {
        CloseDevice();
        StopSubsystems();  // nothing looks for controllers during the game then
        return attached ? kDeviceFailed : 0;
    }
    StartForceFeedback();
    found = true;
    return 0;
}

void CloseController() {
    CloseDevice();
    StopSubsystems();
}

bool ControllerHasForceFeedback() {
    return device.haptic != nullptr;
}

bool ReadController(ControllerState& state) {
    SDL_GameControllerUpdate();
    if (device.joystick != nullptr && SDL_JoystickGetAttached(device.joystick) == SDL_FALSE) {
        CloseDevice();
    }
    if (device.joystick == nullptr) {
        if (SDL_NumJoysticks() == 0 || OpenFirst()) {
            CloseDevice();
            return true;
        }
        StartForceFeedback();
    }
    state = ControllerState{};
    if (device.pad != nullptr) {
        ReadPad(state);
    } else {
        ReadJoystick(state);
    }
    return false;
}

}  // namespace platform
