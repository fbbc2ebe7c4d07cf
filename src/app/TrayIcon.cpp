#include "app/TrayIcon.h"

#include "platform/Tray.h"

bool SetTrayIcon(bool show) {
    return show ? platform::AddTrayIcon("Icon", "Nebulorix running") : platform::RemoveTrayIcon();
}

void ShowTrayMenu() {
    using Kind = platform::TrayMenuItem::Kind;
    platform::PopupTrayMenu({
        {Kind::Picture, "TrayMenu", 0},
        {Kind::Text, "Toggle Fullscreen", kToggleFullscreenCommand},
        {Kind::Separator, "", 0},
        {Kind::Text, "Exit", kExitCommand},
    });
}
