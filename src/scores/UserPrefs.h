#pragma once

// Every setting that survives between runs, and the list of online hiscore servers.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

struct ServerEntry {
    std::string host;  // at most 255 characters, no blanks
    std::string path;  // the same
    uint16_t port = 80;
};

class UserPrefs {
public:
    using Keys = std::array<uint8_t, 6>;

    UserPrefs();  // loads both files; what cannot be loaded takes its defaults
    virtual ~UserPrefs() = default;

    // Writes "Data\UserPrefs.bin". True = failure.
    bool Save() const;

    bool GetTransparency() const { return transparency; }
    bool GetAntialiasing() const { return antialiasing; }
    bool GetFog() const { return fog; }
    bool GetOnlineHiscores() const { return onlineHiscores; }
    int16_t GetScreenWidth() const { return screenWidth; }
    int16_t GetScreenHeight() const { return screenHeight; }
    uint8_t GetColourBits() const { return colourBits; }
    bool GetDefaultsApplied() const { return defaultsApplied; }
    int32_t GetServerIndex() const { return serverIndex; }
    int32_t GetServerCount() const { return static_cast<int32_t>(servers.size()); }
    const std::string& GetServerHost(int32_t server) const { return servers[server].host; }
    const std::string& GetServerPath(int32_t server) const { return servers[server].path; }
    uint16_t GetServerPort(int32_t server) const { return servers[server].port; }
    const std::string& GetCurrentServerHost() const { return CurrentServer().host; }
    const std::string& GetCurrentServerPath() const { return CurrentServer().path; }
    uint16_t GetCurrentServerPort() const { return CurrentServer().port; }
    const std::string& GetProxyHost() const { return proxyHost; }
    int32_t GetProxyPort() const { return proxyPort; }
    bool UseProxy() const { return useProxy > 0; }
    static bool UseMipmaps() { return true; }
    const Keys& GetKeys() const { return keys; }

    // Take effect at once: these also switch GL blending, multisampling or fog.
    void SetTransparency(bool on);
    void ToggleTransparency();
    void ToggleAntialiasing();
    void ToggleFog();
    void ToggleOnlineHiscores();

    void SetServerIndex(int32_t server);
    void SetScreenWidth(int16_t pixels) { screenWidth = pixels; }
    void SetScreenHeight(int16_t pixels) { screenHeight = pixels; }
    void SetColourBits(uint8_t bits) { colourBits = bits; }
    // One for each action.
    void SetKeyUp(uint8_t virtualKey) { keys[0] = virtualKey; }
    void SetKeyDown(uint8_t virtualKey) { keys[1] = virtualKey; }
    void SetKeyLeft(uint8_t virtualKey) { keys[2] = virtualKey; }
    void SetKeyRight(uint8_t virtualKey) { keys[3] = virtualKey; }
    void SetKeyFire1(uint8_t virtualKey) { keys[4] = virtualKey; }
    void SetKeyFire2(uint8_t virtualKey) { keys[5] = virtualKey; }
    void SetKey(int action, uint8_t virtualKey) { keys[action] = virtualKey; }

    // Save at once; the result is Save's.
    bool SetProxyHost(const char* host);
    bool SetProxyPort(int32_t port);
    bool SetUseProxy(bool use);

    // Adds a server to the list and its file. True = failure.
    bool AddServer(const char* host, const char* path, int32_t port);

private:
    bool Load();
    bool LoadServers();
    bool ReadServerList(const char* fileName, std::vector<ServerEntry>& list) const;
    void ApplyDefaults();
    const ServerEntry& CurrentServer() const;

    bool transparency = true;
    bool antialiasing = false;
    bool fog = true;
    bool onlineHiscores = true;
    int32_t serverIndex = 0;
    bool defaultsApplied = false;  // no preferences file was read
    int16_t screenWidth = 800;     // pixels
    int16_t screenHeight = 600;
    uint8_t colourBits = 32;           // colour depth
    std::vector<ServerEntry> servers;  // never empty
    std::string proxyHost;             // one word, at most 259 characters
    int32_t proxyPort = 8080;
    int32_t useProxy = 0;                        // used when above 0
    Keys keys = {'I', 'K', 'J', 'L', ' ', 'B'};  // virtual-key codes in action order
};
