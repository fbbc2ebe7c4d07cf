#include "platform/Tray.h"

#include "platform/null/NullMedia.h"

namespace platform {

bool AddTrayIcon(const char* iconResource, const char* tip) {
    NullMedia& media = Media();
    ++media.trayAdds;
    media.trayIcon = iconResource;
    media.trayTip = tip;
    media.trayIconShown = media.trayAvailable;
    return !media.trayIconShown;
}

bool RemoveTrayIcon() {
    NullMedia& media = Media();
    ++media.trayRemovals;
    const bool wasShown = media.trayIconShown;
    media.trayIconShown = false;
    return !wasShown;
}

void PopupTrayMenu(const std::vector<TrayMenuItem>& items) {
    std::vector<ShownMenuItem> shown;
    shown.reserve(items.size());
    for (const TrayMenuItem& item : items) {
        shown.push_back({item.kind, item.text, item.command});
    }
    Media().trayMenus.push_back(shown);
}

}  // namespace platform
