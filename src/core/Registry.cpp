#include "core/Registry.h"

std::FILE* debugLog = nullptr;
platform::WindowHandle hWnd = nullptr;
platform::SurfaceHandle hDC = nullptr;
UserPrefs* userPrefs = nullptr;
GLExtensions* glExtensions = nullptr;
GLWindow* glWindow = nullptr;
Joystick* joystick = nullptr;
KeyMap* keyMap = nullptr;
SoundManager* soundManager = nullptr;
MusicPlayer* musicPlayer = nullptr;
PlayerShip* playerShip = nullptr;
LevelManager* levelManager = nullptr;
HiscoreTable* hiscoreTable = nullptr;
OnlineHiscores* hiscoreClient = nullptr;

uint8_t keyDown[256] = {};
char lastChar = 0;
int32_t score = 0;
int32_t money = 0;
