#pragma once

// The icon for desktops without a classic tray, offered over the session bus as a
// org.kde.StatusNotifierItem. Main thread only; runs within GTK's main loop.

#include <gdk-pixbuf/gdk-pixbuf.h>

namespace platform {

// Starts to look for a host of such icons, now and whenever one starts. Clicks report whether it
// was the main action (the left button), and the place on the screen that the host tells.
void StartStatusNotifier(GdkPixbuf* picture, const char* tip,
                         void (*clicked)(bool mainAction, int x, int y));
// Whether hosts shall show it.
void ShowStatusNotifier(bool visible);
bool StatusNotifierHasHost();

}  // namespace platform
