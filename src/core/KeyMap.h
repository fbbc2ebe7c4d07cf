#pragma once

// The six game actions and the keys bound to them.

#include <array>
#include <cstdint>

// In this order the preferences store the key codes and the key configuration asks for them.
enum class Action {
    Up,
    Down,
    Left,
    Right,
    Fire1,
    Fire2
};
constexpr int kActionCount = 6;

class KeyMap {
public:
    KeyMap();  // reads the preferences
    virtual ~KeyMap() = default;

    // Takes the keys from the preferences again, when the key configuration has finished.
    void Reload();

    // The virtual-key code bound to the action.
    int Get(Action action) const;
    bool IsHeld(Action action) const;
    // Clears the action's key, so that one press does one thing.
    void Consume(Action action) const;

    // The character that a key types: letters (upper case while Shift is held, whatever Caps Lock
    // says), digits, Backspace, Return and Space; 0 for any other key.
    static char Translate(int virtualKey);

private:
    std::array<uint8_t, kActionCount> keys = {};
};
