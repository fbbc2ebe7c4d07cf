#pragma once

// Every long-lived object of the program, reached through one global each. StartUp fills them in
// this order and ShutDown (app/Application.h) empties them; a null pointer means that the object
// does not exist now.

#include <cstdint>
#include <cstdio>

#include "platform/Window.h"

class UserPrefs;
class GLExtensions;
class GLWindow;
class Joystick;
class KeyMap;
class SoundManager;
class MusicPlayer;
class PlayerShip;
class LevelManager;
class HiscoreTable;
class OnlineHiscores;

extern std::FILE* debugLog;          // the debug log; written through Log (core/DebugLog.h)
extern platform::WindowHandle hWnd;  // the main window
extern platform::SurfaceHandle hDC;  // what its frames are drawn to and swapped on
extern UserPrefs* userPrefs;         // every setting that survives between runs
extern GLExtensions* glExtensions;   // multitexture and multisample support of the driver
extern GLWindow* glWindow;           // window, context, camera view, text output
extern Joystick* joystick;           // the game controller; null when none is attached
extern KeyMap* keyMap;               // the keys of the six game actions
extern SoundManager* soundManager;   // sound effects
extern MusicPlayer* musicPlayer;     // background music
extern PlayerShip* playerShip;       // the player's ship; owned by the LevelManager once it exists
extern LevelManager* levelManager;   // the game
extern HiscoreTable* hiscoreTable;   // the local hiscores
extern OnlineHiscores* hiscoreClient;  // the online hiscore client

extern uint8_t keyDown[256];  // 1 while the key with that virtual-key code is held; readers may
                              // clear an entry to consume the press
extern char lastChar;         // character of the last key pressed, for text entry; 0 when consumed
extern int32_t score;         // points of the game being played
extern int32_t money;         // money of the game being played
