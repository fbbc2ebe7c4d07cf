#include "platform/Tray.h"

#include "platform/null/NullMedia.h"

namespace platform {

bool AddTrayIcon(const char* iconResource, const char* tip) {
    null::NullMedia& media = null::Media();
    ++media.trayAdds;
    media.trayIcon = iconResource;
    media.trayTip = tip;
    media.trayIconShown = media.trayAvailable;
    return !media.trayIconShown;
}

bool RemoveTrayIcon() {
    null::NullMedia& media = null::Media();
    ++media.trayRemovals;
    const bool wasShown = media.trayIconShown;
    media.trayIconShown = false;
    return !wasShown;
}

void PopupTrayMenu(const std::vector<TrayMenuItem>& items) {
    std::vector<null::ShownMenuItem> shown;
    shown.reserve(items.size());
    for (const TrayMenuItem& item : items) {
        shown.push_back({item.kind, item.text, item.command});
    }
    null::Media().trayMenus.push_back(shown);
}

}  // namespace platform
