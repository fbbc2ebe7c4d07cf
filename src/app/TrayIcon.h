#pragma once

// The notification icon that the program shows while its window exists, and its popup menu.

constexpr int kExitCommand = 55555;
constexpr int kToggleFullscreenCommand = 55556;

// Returns true = failure: the desktop has no tray to show it in.
bool SetTrayIcon(bool show);
void ShowTrayMenu();
