#include "core/DebugLog.h"
#include "game/LevelManager.h"
#include "platform/Files.h"
#include "player/WeaponManager.h"
#include "world/LevelText.h"

// The level file: title, author, view, the paths, the waves. Whatever stands before a field's colon
// is a label for people. A file that cannot be played as written is refused as a whole.

namespace {

constexpr size_t kMaxLevelFile = 4 << 20;  // bytes
constexpr int32_t kMaxPaths = 256;
constexpr int32_t kMaxWaves = 64;

}  // namespace

bool LevelManager::ReadLevel(const std::string& fileName) {
    std::string text;
    if (platform::ReadWholeText(fileName, text, kMaxLevelFile)) {
        Log("ERROR: Level: %s not found\n", fileName.c_str());
        return true;
    }
    LevelText file(std::move(text));
    levelTitle = file.ReadLine();
    levelAuthor = file.ReadLine();
    levelView = file.ReadInt("view", 1, 4);

    const int32_t pathCount = file.ReadInt("number of paths", 0, kMaxPaths);
    for (int32_t i = 0; i < pathCount && !file.HasFailed(); ++i) {
        paths.push_back(std::make_unique<Path>());
        paths.back()->Read(file);
    }
    const int32_t waveCount = file.ReadInt("number of waves", 0, kMaxWaves);
    for (int32_t i = 0; i < waveCount && !file.HasFailed(); ++i) {
        waves.push_back(std::make_unique<AttackWave>());
        waves.back()->Read(file, paths);
    }
    if (file.HasFailed()) {
        Log("ERROR: Level: %s: %s\n", fileName.c_str(), file.Fault().c_str());
        return true;
    }
    return false;
}
