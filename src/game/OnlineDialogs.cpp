#include "game/OnlineDialogs.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "core/Registry.h"
#include "platform/Dialogs.h"
#include "platform/MessageBox.h"
#include "platform/Window.h"
#include "scores/UserPrefs.h"

namespace {

constexpr const char* kScheme = "http://";

// Hides the game's window for as long as it lives.
class WindowHidden {
public:
    WindowHidden() {
        platform::SetWindowVisible(hWnd, false);
        platform::ShowCursor(true);
    }
    ~WindowHidden() {
        platform::ShowCursor(false);
        platform::SetWindowVisible(hWnd, true);
    }
    WindowHidden(const WindowHidden&) = delete;
    WindowHidden& operator=(const WindowHidden&) = delete;
};

void Refuse(const char* text, const char* caption) {
    platform::MessageBox(text, caption, platform::BoxButtons::Ok, platform::BoxIcon::Stop);
}

// Digits at the start are enough: "8080/tcp" is 8080. True = not a TCP port.
bool ParsePort(const std::string& text, int& port) {
    if (std::sscanf(text.c_str(), "%d", &port) == 1 && port >= 0 && port <= 65535) {
        return false;
    }
    Refuse("Please enter a number for the port", "Invalid port number");
    return true;
}

bool AcceptProxy(const platform::ProxyFields& fields) {
    int port = 0;
    if (ParsePort(fields.port, port)) {
        return false;
    }
    // An address of nothing could not be told from a missing one in the preferences file.
    const std::string address = fields.address.empty() ? "NULL" : fields.address;
    userPrefs->SetUseProxy(fields.useProxy);
    userPrefs->SetProxyPort(port);
    userPrefs->SetProxyHost(address.c_str());
    return true;
}

bool AcceptServer(const platform::ServerFields& fields) {
    std::string url = fields.url;
    if (url.starts_with(kScheme)) {
        url.erase(0, std::strlen(kScheme));
    }
    const size_t slash = url.find('/');
    if (slash == std::string::npos) {
        Refuse(
            "Please provide full URL of server - e.g.\n"
            "http://hst.example/servlet/NebulorixHST",
            "Invalid server URL");
        return false;
    }
    const std::string host = url.substr(0, slash);
    const std::string path = url.substr(slash, url.find_first_of(" \t\r\n", slash) - slash);
    if (host.empty() || path.empty() || host.find_first_of(" \t\r\n") != std::string::npos) {
        Refuse("Please provide full URL of server", "Invalid server URL");
        return false;
    }
    int port = 0;
    if (ParsePort(fields.port, port)) {
        return false;
    }
    userPrefs->AddServer(host.c_str(), path.c_str(), port);
    return true;
}

}  // namespace

void ShowProxyDialog() {
    const WindowHidden hidden;
    platform::RunProxyDialog({.useProxy = userPrefs->UseProxy(),
                              .address = userPrefs->GetProxyHost(),
                              .port = std::to_string(userPrefs->GetProxyPort())},
                             AcceptProxy);
}

void ShowAddServerDialog() {
    const WindowHidden hidden;
    platform::RunServerDialog({.url = "Type server URL here", .port = "Type server port here"},
                              AcceptServer);
}
