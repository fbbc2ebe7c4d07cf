#include "platform/desktop/VirtualKeyMap.h"

#include <SDL.h>

#include <algorithm>
#include <iterator>

#include "platform/VirtualKeys.h"

namespace platform {

namespace {

struct KeyRow {
    int keycode;
    int virtualKey;
};

constexpr KeyRow kKeys[] = {
    {SDLK_BACKSPACE, VK_BACK},
    {SDLK_TAB, VK_TAB},
    {SDLK_RETURN, VK_RETURN},
    {SDLK_RETURN2, VK_RETURN},
    {SDLK_KP_ENTER, VK_RETURN},
    {SDLK_LSHIFT, VK_SHIFT},
    {SDLK_RSHIFT, VK_SHIFT},
    {SDLK_LCTRL, VK_CONTROL},
    {SDLK_RCTRL, VK_CONTROL},
    {SDLK_LALT, VK_MENU},
    {SDLK_RALT, VK_MENU},
    {SDLK_MODE, VK_MENU},
    {SDLK_PAUSE, VK_PAUSE},
    {SDLK_CAPSLOCK, VK_CAPITAL},
    {SDLK_ESCAPE, VK_ESCAPE},
    {SDLK_SPACE, VK_SPACE},
    {SDLK_PAGEUP, VK_PRIOR},
    {SDLK_PAGEDOWN, VK_NEXT},
    {SDLK_END, VK_END},
    {SDLK_HOME, VK_HOME},
    {SDLK_LEFT, VK_LEFT},
    {SDLK_UP, VK_UP},
    {SDLK_RIGHT, VK_RIGHT},
    {SDLK_DOWN, VK_DOWN},
    {SDLK_INSERT, VK_INSERT},
    {SDLK_DELETE, VK_DELETE},
    {SDLK_KP_MULTIPLY, VK_MULTIPLY},
    {SDLK_KP_PLUS, VK_ADD},
    {SDLK_KP_MINUS, VK_SUBTRACT},
    {SDLK_KP_DIVIDE, VK_DIVIDE},
    {SDLK_KP_EQUALS, VK_OEM_PLUS},
    {SDLK_NUMLOCKCLEAR, VK_NUMLOCK},
    {SDLK_SCROLLLOCK, VK_SCROLL},
    {SDLK_SEMICOLON, VK_OEM_1},
    {SDLK_EQUALS, VK_OEM_PLUS},
    {SDLK_PLUS, VK_OEM_PLUS},
    {SDLK_COMMA, VK_OEM_COMMA},
    {SDLK_MINUS, VK_OEM_MINUS},
    {SDLK_PERIOD, VK_OEM_PERIOD},
    {SDLK_SLASH, VK_OEM_2},
    {SDLK_HASH, VK_OEM_2},
    {SDLK_BACKQUOTE, VK_OEM_3},
    {SDLK_LEFTBRACKET, VK_OEM_4},
    {SDLK_BACKSLASH, VK_OEM_5},
    {SDLK_CARET, VK_OEM_5},
    {SDLK_RIGHTBRACKET, VK_OEM_6},
    {SDLK_QUOTE, VK_OEM_7},
    {SDLK_LESS, VK_OEM_102},
    // German keyboards have these where others have brackets, semicolon, quote and back-quote.
    {0xFC, VK_OEM_1},  // u with diaeresis
    {0xF6, VK_OEM_3},  // o with diaeresis
    {0xE4, VK_OEM_7},  // a with diaeresis
    {0xDF, VK_OEM_4},  // sharp s
    {0xB4, VK_OEM_6},  // acute accent
};

// The keypad: what a key means with the digits on and off.
struct KeypadRow {
    int keycode;
    int digits;
    int cursor;
};

constexpr KeypadRow kKeypad[] = {
    {SDLK_KP_0, VK_NUMPAD0, VK_INSERT},      {SDLK_KP_1, VK_NUMPAD0 + 1, VK_END},
    {SDLK_KP_2, VK_NUMPAD0 + 2, VK_DOWN},    {SDLK_KP_3, VK_NUMPAD0 + 3, VK_NEXT},
    {SDLK_KP_4, VK_NUMPAD0 + 4, VK_LEFT},    {SDLK_KP_5, VK_NUMPAD0 + 5, VK_NUMPAD0 + 5},
    {SDLK_KP_6, VK_NUMPAD0 + 6, VK_RIGHT},   {SDLK_KP_7, VK_NUMPAD0 + 7, VK_HOME},
    {SDLK_KP_8, VK_NUMPAD0 + 8, VK_UP},      {SDLK_KP_9, VK_NUMPAD0 + 9, VK_PRIOR},
    {SDLK_KP_PERIOD, VK_DECIMAL, VK_DELETE}, {SDLK_KP_COMMA, VK_DECIMAL, VK_DELETE},
};

// Where the keys stand on the keyboard that most others derive from.
constexpr KeyRow kPlaces[] = {
    {SDL_SCANCODE_MINUS, VK_OEM_MINUS},
    {SDL_SCANCODE_EQUALS, VK_OEM_PLUS},
    {SDL_SCANCODE_LEFTBRACKET, VK_OEM_4},
    {SDL_SCANCODE_RIGHTBRACKET, VK_OEM_6},
    {SDL_SCANCODE_BACKSLASH, VK_OEM_5},
    {SDL_SCANCODE_NONUSHASH, VK_OEM_5},
    {SDL_SCANCODE_SEMICOLON, VK_OEM_1},
    {SDL_SCANCODE_APOSTROPHE, VK_OEM_7},
    {SDL_SCANCODE_GRAVE, VK_OEM_3},
    {SDL_SCANCODE_COMMA, VK_OEM_COMMA},
    {SDL_SCANCODE_PERIOD, VK_OEM_PERIOD},
    {SDL_SCANCODE_SLASH, VK_OEM_2},
    {SDL_SCANCODE_NONUSBACKSLASH, VK_OEM_102},
};

template <typename Row, size_t size>
const Row* Find(const Row (&rows)[size], int code) {
    const Row* found = std::find_if(std::begin(rows), std::end(rows),
                                    [&](const Row& row) { return row.keycode == code; });
    return found != std::end(rows) ? found : nullptr;
}

int ByMeaning(int keycode, bool numLock) {
    if (keycode >= 'a' && keycode <= 'z') {
        return keycode - 'a' + 'A';
    }
    if (keycode >= '0' && keycode <= '9') {
        return keycode;
    }
    if (keycode >= SDLK_F1 && keycode <= SDLK_F12) {
        return VK_F1 + (keycode - SDLK_F1);
    }
    if (keycode >= SDLK_F13 && keycode <= SDLK_F24) {
        return VK_F1 + 12 + (keycode - SDLK_F13);
    }
    if (const KeypadRow* row = Find(kKeypad, keycode)) {
        return numLock ? row->digits : row->cursor;
    }
    const KeyRow* row = Find(kKeys, keycode);
    return row != nullptr ? row->virtualKey : 0;
}

int ByPlace(int scancode) {
    if (scancode >= SDL_SCANCODE_A && scancode <= SDL_SCANCODE_Z) {
        return 'A' + (scancode - SDL_SCANCODE_A);
    }
    if (scancode >= SDL_SCANCODE_1 && scancode <= SDL_SCANCODE_9) {
        return '1' + (scancode - SDL_SCANCODE_1);
    }
    if (scancode == SDL_SCANCODE_0) {
        return '0';
    }
    const KeyRow* row = Find(kPlaces, scancode);
    return row != nullptr ? row->virtualKey : 0;
}

}  // namespace

int VirtualKeyOf(int keycode, int scancode, bool numLock) {
    const int meaning = ByMeaning(keycode, numLock);
    return meaning != 0 ? meaning : ByPlace(scancode);
}

}  // namespace platform
