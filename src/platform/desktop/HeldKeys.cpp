#include "platform/desktop/HeldKeys.h"

#include <algorithm>
#include <utility>

namespace platform {

int HeldKeys::Press(int scancode, int virtualKey) {
    if (scancode < 0 || scancode >= kPlaces) {
        return 0;
    }
    uint8_t& key = held[static_cast<size_t>(scancode)];
    if (key == 0) {
        key = static_cast<uint8_t>(virtualKey);
    }
    return key;
}

int HeldKeys::Release(int scancode) {
    if (scancode < 0 || scancode >= kPlaces) {
        return 0;
    }
    const int released = std::exchange(held[static_cast<size_t>(scancode)], uint8_t{0});
    return IsHeld(released) ? 0 : released;
}

int HeldKeys::TakeAny() {
    auto* const first =
        std::find_if(held.begin(), held.end(), [](uint8_t key) { return key != 0; });
    if (first == held.end()) {
        return 0;
    }
    const uint8_t virtualKey = *first;
    std::replace(held.begin(), held.end(), virtualKey, uint8_t{0});
    return virtualKey;
}

bool HeldKeys::IsHeld(int virtualKey) const {
    return virtualKey != 0 &&
           std::find(held.begin(), held.end(), static_cast<uint8_t>(virtualKey)) != held.end();
}

}  // namespace platform
