#pragma once

// The virtual-key codes that the game polls and that the preferences file stores. Letters and
// digits are their upper-case ASCII codes. The platform maps the keyboard to them by the meaning
// of a key in the player's layout, not by its place.

namespace platform {

constexpr int VK_BACK = 0x08;
constexpr int VK_TAB = 0x09;
constexpr int VK_RETURN = 0x0D;
constexpr int VK_SHIFT = 0x10;
constexpr int VK_CONTROL = 0x11;
constexpr int VK_MENU = 0x12;  // Alt
constexpr int VK_PAUSE = 0x13;
constexpr int VK_CAPITAL = 0x14;
constexpr int VK_ESCAPE = 0x1B;
constexpr int VK_SPACE = 0x20;
constexpr int VK_PRIOR = 0x21;  // Page Up
constexpr int VK_NEXT = 0x22;   // Page Down
constexpr int VK_END = 0x23;
constexpr int VK_HOME = 0x24;
constexpr int VK_LEFT = 0x25;
constexpr int VK_UP = 0x26;
constexpr int VK_RIGHT = 0x27;
constexpr int VK_DOWN = 0x28;
constexpr int VK_INSERT = 0x2D;
constexpr int VK_DELETE = 0x2E;
constexpr int VK_NUMPAD0 = 0x60;  // 0 to 9 follow one another
constexpr int VK_MULTIPLY = 0x6A;
constexpr int VK_ADD = 0x6B;
constexpr int VK_SUBTRACT = 0x6D;
constexpr int VK_DECIMAL = 0x6E;
constexpr int VK_DIVIDE = 0x6F;
constexpr int VK_F1 = 0x70;  // F1 to F24 follow one another
constexpr int VK_NUMLOCK = 0x90;
constexpr int VK_SCROLL = 0x91;
constexpr int VK_OEM_1 = 0xBA;       // ;
constexpr int VK_OEM_PLUS = 0xBB;    // =
constexpr int VK_OEM_COMMA = 0xBC;   // ,
constexpr int VK_OEM_MINUS = 0xBD;   // -
constexpr int VK_OEM_PERIOD = 0xBE;  // .
constexpr int VK_OEM_2 = 0xBF;       // /
constexpr int VK_OEM_3 = 0xC0;       // `
constexpr int VK_OEM_4 = 0xDB;       // [
constexpr int VK_OEM_5 = 0xDC;       // backslash
constexpr int VK_OEM_6 = 0xDD;       // ]
constexpr int VK_OEM_7 = 0xDE;       // '
constexpr int VK_OEM_102 = 0xE2;     // the key beside the left Shift of European keyboards

constexpr int kVirtualKeyCount = 256;

}  // namespace platform
