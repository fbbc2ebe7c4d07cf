#pragma once

// The notification icon and its popup menu: a classic tray where the desktop has one, else
// StatusNotifierItem; where there is neither, nothing. A click arrives as a Tray message and the
// chosen item as a Command message.

#include <vector>

namespace platform {

struct TrayMenuItem {
    enum class Kind {
        Picture,
        Text,
        Separator
    };
    Kind kind = Kind::Text;
    const char* text = "";  // the label; for a picture the name of its resource
    int command = 0;        // id of the Command message; pictures cannot be chosen
};

// True = failure: no tray to show it in (now: a tray that starts later gets the icon then).
bool AddTrayIcon(const char* iconResource, const char* tip);
bool RemoveTrayIcon();
// Pops the menu up at the pointer.
void PopupTrayMenu(const std::vector<TrayMenuItem>& items);

}  // namespace platform
