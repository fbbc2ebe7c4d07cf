#include "scores/UserPrefs.h"

#include <GL/gl.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "core/DebugLog.h"
#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "platform/Files.h"
#include "scores/Bytes.h"
#include "scores/HiscoreEntry.h"

namespace {

constexpr const char* kPrefsFile = "Data\\UserPrefs.bin";
constexpr const char* kServersFile = "Data\\HSTServers.dat";
constexpr const char* kServersScratchFile = "Data\\tmpSrvrs.dat";

constexpr size_t kMaxPrefsFile = 4096;  // bytes; a record is under 300
constexpr size_t kMaxServersFile = 1 << 20;
constexpr int32_t kMaxServers = 1000;
constexpr size_t kMaxServerText = 255;  // characters of a host or a path
constexpr size_t kMaxProxyHost = 259;   // characters

// The proxy fields came with version 1.0.0 of the record.
constexpr int32_t kFirstVersionWithProxy = 10000;

// Reserved names that no resolver knows: nobody's machine is called until a player adds a server.
constexpr const char* kDefaultProxyHost = "hst.example";

std::vector<ServerEntry> BuiltInServers() {
    return {{"hst.example", "/examples/servlet/NebulorixHST", 8080},
            {"hst2.example", "/servlet/NebulorixHST", 80}};
}

void SetCapability(GLenum capability, bool on) {
    if (on) {
        glEnable(capability);
    } else {
        glDisable(capability);
    }
}

bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// A display size or depth from the file, or its default with a line in the log.
template <typename Value>
Value InRange(Value value, Value minimum, Value maximum, Value fallback, const char* what) {
    if (value >= minimum && value <= maximum) {
        return value;
    }
    Log("WARNING: %s: %s %d is out of range, using %d\n", kPrefsFile, what, static_cast<int>(value),
        static_cast<int>(fallback));
    return fallback;
}

std::string ServerLine(const std::string& host, const std::string& path, int32_t port) {
    return "Server: " + host + "\t Path: " + path + "\t Port: " + std::to_string(port) + "\n";
}

}  // namespace

UserPrefs::UserPrefs() {
    if (Load()) {
        ApplyDefaults();
    }
}

bool UserPrefs::Load() {
    defaultsApplied = false;
    proxyHost = kDefaultProxyHost;
    if (LoadServers()) {
        return true;
    }
    std::vector<uint8_t> bytes;
    if (platform::ReadWholeFile(kPrefsFile, bytes, kMaxPrefsFile)) {
        return true;
    }
    ByteReader file(bytes);
    const int32_t major = file.Get<int16_t>();
    const int32_t minor = file.Get<int16_t>();
    const int32_t build = file.Get<int16_t>();
    const auto fileWidth = file.Get<int16_t>();
    const auto fileHeight = file.Get<int16_t>();
    const auto fileBits = file.Get<uint8_t>();
    transparency = file.Get<uint8_t>() != 0;
    antialiasing = file.Get<uint8_t>() != 0;
    fog = file.Get<uint8_t>() != 0;
    onlineHiscores = file.Get<uint8_t>() != 0;
    serverIndex = file.Get<int32_t>();
    for (uint8_t& key : keys) {
        key = file.Get<uint8_t>();
    }
    if (file.IsCutShort()) {
        Log("WARNING: %s is cut short at %zu bytes, using the defaults\n", kPrefsFile,
            bytes.size());
        return true;
    }
    screenWidth = InRange<int16_t>(fileWidth, 320, 4096, 800, "width");
    screenHeight = InRange<int16_t>(fileHeight, 200, 4096, 600, "height");
    colourBits = InRange<uint8_t>(fileBits, 8, 32, 32, "colour depth");
    serverIndex = InRange<int32_t>(serverIndex, 0, GetServerCount() - 1, 0, "server");

    if (major * 10000 + minor * 100 + build < kFirstVersionWithProxy) {
        return false;
    }
    const auto fileUseProxy = file.Get<int32_t>();
    const auto fileProxyPort = file.Get<int32_t>();
    std::string host;
    while (!file.AtEnd() && host.size() < kMaxProxyHost) {
        const char c = static_cast<char>(file.NextByte());
        if (IsBlank(c) || c == '\0') {
            break;
        }
        host += c;
    }
    if (file.IsCutShort() || host.empty()) {
        Log("WARNING: %s has no valid proxy, using the default\n", kPrefsFile);
        return false;
    }
    useProxy = fileUseProxy;
    proxyPort = InRange<int32_t>(fileProxyPort, 0, 65535, 8080, "proxy port");
    proxyHost = host;
    return false;
}

void UserPrefs::ApplyDefaults() {
    transparency = true;
    antialiasing = false;
    fog = true;
    onlineHiscores = true;
    serverIndex = 0;
    screenWidth = 800;
    screenHeight = 600;
    colourBits = 32;
    proxyHost = kDefaultProxyHost;
    proxyPort = 8080;
    useProxy = 0;
    keys = {'I', 'K', 'J', 'L', ' ', 'B'};
    defaultsApplied = true;
}

bool UserPrefs::LoadServers() {
    servers = BuiltInServers();
    std::FILE* file = platform::OpenFile(kServersFile, "r");
    if (file == nullptr) {
        return false;
    }
    std::fclose(file);
    std::vector<ServerEntry> list;
    if (ReadServerList(kServersFile, list)) {
        return true;
    }
    servers = std::move(list);
    return false;
}

bool UserPrefs::ReadServerList(const char* fileName, std::vector<ServerEntry>& list) const {
    std::string text;
    if (platform::ReadWholeText(fileName, text, kMaxServersFile)) {
        Log("WARNING: %s cannot be read\n", fileName);
        return true;
    }
    std::istringstream words(text);
    std::string label;
    int32_t count = 0;
    words >> label >> count;
    if (!words || count <= 0 || count > kMaxServers) {
        Log("Failed to allocate memory for online servers\n");
        return true;
    }
    list.clear();
    for (int32_t i = 0; i < count; ++i) {
        ServerEntry server;
        int32_t port = 0;
        words >> label >> server.host >> label >> server.path >> label >> port;
        if (!words || port < 0 || port > 65535 || server.host.size() > kMaxServerText ||
            server.path.size() > kMaxServerText) {
            Log("WARNING: %s: server %d of %d cannot be read\n", fileName, i + 1, count);
            return true;
        }
        server.port = static_cast<uint16_t>(port);
        list.push_back(server);
    }
    return false;
}

bool UserPrefs::AddServer(const char* host, const char* path, int32_t port) {
    std::string text = "NumServers: " + std::to_string(GetServerCount() + 1) + "\n";
    for (const ServerEntry& server : servers) {
        text += ServerLine(server.host, server.path, server.port);
    }
    text += ServerLine(host, path, port);
    if (platform::WriteWholeFile(kServersScratchFile, text.data(), text.size())) {
        Log("Failed to open/create file %s\n", kServersScratchFile);
        return true;
    }
    // The scratch copy is read back before it replaces the list, so that a name that the list
    // cannot hold never costs the player the servers that it has.
    std::vector<ServerEntry> list;
    if (ReadServerList(kServersScratchFile, list)) {
        return true;
    }
    if (platform::WriteWholeFile(kServersFile, text.data(), text.size())) {
        Log("Failed to copy servers file\n");
        return true;
    }
    servers = std::move(list);
    return false;
}

bool UserPrefs::Save() const {
    ByteWriter file;
    for (const int8_t number : kProgramVersion) {
        file.Put<int16_t>(number);
    }
    file.Put<int16_t>(screenWidth);
    file.Put<int16_t>(screenHeight);
    file.Put<uint8_t>(colourBits);
    for (const bool option : {transparency, antialiasing, fog, onlineHiscores}) {
        file.Put<uint8_t>(option ? 1 : 0);
    }
    file.Put<int32_t>(serverIndex);
    file.PutBytes(keys.data(), keys.size());
    file.Put<int32_t>(useProxy);
    file.Put<int32_t>(proxyPort);
    file.PutBytes(proxyHost.data(), proxyHost.size());
    file.Put<char>('\r');
    return platform::WriteWholeFile(kPrefsFile, file.Bytes().data(), file.Bytes().size());
}

const ServerEntry& UserPrefs::CurrentServer() const {
    return servers[serverIndex < GetServerCount() ? serverIndex : 0];
}

void UserPrefs::SetTransparency(bool on) {
    transparency = on;
    SetCapability(GL_BLEND, transparency);
}

void UserPrefs::ToggleTransparency() {
    SetTransparency(!transparency);
}

void UserPrefs::ToggleAntialiasing() {
    antialiasing = !antialiasing;
    glWindow->ToggleMultisample();
}

void UserPrefs::ToggleFog() {
    fog = !fog;
    SetCapability(GL_FOG, fog);
}

void UserPrefs::ToggleOnlineHiscores() {
    onlineHiscores = !onlineHiscores;
}

void UserPrefs::SetServerIndex(int32_t server) {
    serverIndex = std::clamp(server, 0, GetServerCount() - 1);
}

bool UserPrefs::SetProxyHost(const char* host) {
    proxyHost.assign(host,
                     std::find_if(host, host + std::char_traits<char>::length(host), IsBlank));
    proxyHost.resize(std::min(proxyHost.size(), kMaxProxyHost));
    return Save();
}

bool UserPrefs::SetProxyPort(int32_t port) {
    proxyPort = port;
    return Save();
}

bool UserPrefs::SetUseProxy(bool use) {
    useProxy = use ? 1 : 0;
    return Save();
}
