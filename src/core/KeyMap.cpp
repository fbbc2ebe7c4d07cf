#include "core/KeyMap.h"

#include "core/Registry.h"
#include "platform/VirtualKeys.h"
#include "scores/UserPrefs.h"

KeyMap::KeyMap() {
    Reload();
}

void KeyMap::Reload() {
    keys = userPrefs->GetKeys();
}

int KeyMap::Get(Action action) const {
    return keys[static_cast<int>(action)];
}

bool KeyMap::IsHeld(Action action) const {
    return keyDown[Get(action)] != 0;
}

void KeyMap::Consume(Action action) const {
    keyDown[Get(action)] = 0;
}

char KeyMap::Translate(int virtualKey) {
    if (virtualKey >= 'A' && virtualKey <= 'Z') {
        const bool shifted = keyDown[platform::VK_SHIFT] != 0;
        return static_cast<char>(shifted ? virtualKey : virtualKey + ('a' - 'A'));
    }
    const bool typesItsCode = (virtualKey >= '0' && virtualKey <= '9') ||
                              virtualKey == platform::VK_BACK ||
                              virtualKey == platform::VK_RETURN || virtualKey == platform::VK_SPACE;
    return typesItsCode ? static_cast<char>(virtualKey) : '\0';
}
