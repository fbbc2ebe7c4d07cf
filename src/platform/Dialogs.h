#pragma once

// The two dialogs. The platform shows the fields and their buttons; what is acceptable is decided
// by the caller, whose `accept` runs at each OK and returns true to close the dialog. The caller
// hides and shows the game's window around the call. Without a display they return at once.

#include <functional>
#include <string>

namespace platform {

struct ProxyFields {
    bool useProxy = false;
    std::string address;
    std::string port;
};
void RunProxyDialog(const ProxyFields& initial,
                    const std::function<bool(const ProxyFields&)>& accept);

struct ServerFields {
    std::string url;
    std::string port;
};
void RunServerDialog(const ServerFields& initial,
                     const std::function<bool(const ServerFields&)>& accept);

}  // namespace platform
