#include "LevelCheck.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <set>

#include "Picture.h"
#include "game/LevelManager.h"
#include "platform/Files.h"
#include "world/AttackWave.h"
#include "world/EnemyTypes.h"
#include "world/LevelText.h"

namespace {

namespace fs = std::filesystem;

constexpr size_t kMaxFile = 4U << 20U;  // bytes
constexpr int32_t kMaxPaths = 256;
constexpr int32_t kMaxWaves = 64;

// Where the formation is, as the enemies reckon it.
constexpr float kSlot = 5.0F;     // units between rows and between columns
constexpr float kSwayed = 7.5F;   // units to either side
constexpr float kDeepZ = -34.0F;  // of the formation seen from behind the ship

// Where the player's ship can be.
struct Reach {
    float across;  // to either side
    float down;    // the nearest to the player's edge that the ship gets
};
constexpr Reach kReach[] = {{}, {35.0F, 26.0F}, {27.0F, 34.0F}, {27.0F, 34.0F}, {35.0F, 10.0F}};
constexpr float kReachUp = 27.0F;  // seen from behind, to either side
constexpr float kHalfShip = 2.0F;
constexpr float kGunsAhead = 4.0F;  // of the middle of the player's ship

constexpr int32_t kFirstBoss = 500;
constexpr float kBossLength = 14.0F;  // along the field
constexpr float kBossHeight = 9.0F;

constexpr int32_t kLatestLaunch = 2 * 60 * 60;   // frames of a wave until all its ships are there
constexpr float kLongestFlight = 60.0F * 60.0F;  // frames on a path
constexpr int32_t kRestless = 30;                // a dive chance that leaves no time in formation

// How far from the middle the last ship of a row stands when the formation has swayed its way.
float Outermost(int32_t rowLength) {
    return (static_cast<float>(rowLength) - 1.0F) / 2.0F * kSlot + kSwayed;
}

Vec3 Slot(int32_t view, int32_t row, float across) {
    const float down = static_cast<float>(row) * kSlot + 10.0F;
    if (view == 1) {
        return {across, 0.0F, down - 24.0F};
    }
    if (view == 4) {
        return {across, 23.0F - down, kDeepZ};
    }
    return {0.0F, across, down - 32.0F};
}

std::string Number(float value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", static_cast<double>(value));
    return text;
}

class Check {
public:
    std::vector<std::string> Run(const std::string& path);

private:
    void Say(const std::string& fault) { faults.push_back(where + fault); }
    void CheckText(const char* what, const std::string& text);
    void CheckWave(AttackWave& wave);
    void CheckGroup(EnemyGroup& group);
    void CheckPath(const EnemyOrders& orders);
    void CheckSlots(const EnemyOrders& orders);
    void CheckLaunch(const EnemyGroup& group);
    void CheckDives(const EnemyOrders& orders);
    void CheckBosses(AttackWave& wave);

    int32_t view = 1;
    std::string where;  // in front of a fault
    std::vector<std::string> faults;
};

std::vector<std::string> Check::Run(const std::string& path) {
    std::string text;
    if (platform::ReadWholeText(path, text, kMaxFile)) {
        return {"cannot be read"};
    }
    LevelText file(std::move(text));
    CheckText("title", file.ReadLine());
    CheckText("author", file.ReadLine());
    view = file.ReadInt("view", 1, 4);
    PathTable paths;
    const int32_t pathCount = file.ReadInt("number of paths", 0, kMaxPaths);
    for (int32_t i = 0; i < pathCount && !file.HasFailed(); ++i) {
        paths.push_back(std::make_unique<Path>());
        paths.back()->Read(file);
    }
    const int32_t waveCount = file.ReadInt("number of waves", 0, kMaxWaves);
    for (int32_t i = 0; i < waveCount && !file.HasFailed(); ++i) {
        AttackWave wave;
        if (!wave.Read(file, paths)) {
            where = "wave " + std::to_string(i + 1) + ": ";
            CheckWave(wave);
        }
    }
    where.clear();
    if (file.HasFailed()) {
        Say(file.Fault());
    } else if (waveCount == 0) {
        Say("a level without a wave is over at once");
    }
    return faults;
}

void Check::CheckText(const char* what, const std::string& text) {
    const bool printable = std::all_of(text.begin(), text.end(),
                                       [](char letter) { return letter >= ' ' && letter <= '~'; });
    if (text.find_first_not_of(' ') == std::string::npos) {
        Say(std::string("the ") + what + " is empty");
    } else if (!printable) {
        Say(std::string("the ") + what + " has letters that the game's font lacks");
    }
}

void Check::CheckWave(AttackWave& wave) {
    const std::string whereWave = where;
    for (int g = 0; g < wave.GroupCount(); ++g) {
        where =
            whereWave.substr(0, whereWave.size() - 2) + ", group " + std::to_string(g + 1) + ": ";
        CheckGroup(wave.GetGroup(g));
    }
    where = whereWave;
    CheckBosses(wave);
}

void Check::CheckGroup(EnemyGroup& group) {
    CheckPath(group.GetOrders());
    CheckSlots(group.GetOrders());
    CheckLaunch(group);
    CheckDives(group.GetOrders());
}

void Check::CheckPath(const EnemyOrders& orders) {
    const Path& path = *orders.path;
    const Vec3 start = path.GetStart();
    if (IsInPicture(view, start)) {
        Say("its path begins inside the picture, at " + Number(start.x) + " " + Number(start.y) +
            " " + Number(start.z));
    }
    float length = 0.0F;
    for (int i = 1; i < path.PointCount(); ++i) {
        length += Length(path.GetPoint(i) - path.GetPoint(i - 1));
    }
    const float frames = length / FindEnemyType(orders.type)->speed;
    if (frames > kLongestFlight) {
        Say("a ship of its kind needs " + Number(frames / 60.0F) + " seconds for its path");
    }
}

void Check::CheckSlots(const EnemyOrders& orders) {
    const float outermost = Outermost(orders.rowLength);
    const Vec3 slot = Slot(view, orders.row, outermost);
    if (!IsInPicture(view, slot) || !IsInPicture(view, Slot(view, orders.row, -outermost))) {
        Say("the ends of its row sway out of the picture");
    }
    const Reach& reach = kReach[view];
    const bool beside = outermost - 2.0F * kSwayed > reach.across + kHalfShip;
    const bool behind = slot.z > reach.down - kGunsAhead - kHalfShip;
    const bool above = view == 4 && std::abs(slot.y) > kReachUp + kHalfShip;
    if (beside || behind || above) {
        Say("the player's guns never point at the end of its row");
    }
}

void Check::CheckLaunch(const EnemyGroup& group) {
    const auto last = static_cast<int64_t>(group.StartFrame()) +
                      static_cast<int64_t>(group.LaunchInterval()) * group.ShipCount();
    if (last > kLatestLaunch) {
        Say("its last ship would come " + std::to_string(last / 60) + " seconds into the wave");
    }
}

// Who dives again at once is never seen in the formation: its way must lead past the guns. The near
// corners lie beside and behind the player, and so does the place where the player was.
void Check::CheckDives(const EnemyOrders& orders) {
    const bool restless = orders.diveChance > 0 && orders.diveChance <= kRestless;
    const bool ahead =
        std::any_of(orders.diveKinds.begin(), orders.diveKinds.end(),
                    [](int32_t kind) { return kind == 3 || kind == 4 || kind < 0 || kind > 5; });
    if (restless && !ahead) {
        Say("it dives without a rest and stays where the player's guns do not point");
    }
}

void Check::CheckBosses(AttackWave& wave) {
    const EnemyGroup* before = nullptr;
    for (int g = 0; g < wave.GroupCount(); ++g) {
        const EnemyGroup& group = wave.GetGroup(g);
        if (group.GetOrders().type < kFirstBoss) {
            continue;
        }
        const float room = view == 4 ? kBossHeight : kBossLength;
        if (group.ShipCount() > 1) {
            Say("bosses in one row stand inside one another");
        } else if (before != nullptr &&
                   static_cast<float>(group.GetOrders().row - before->GetOrders().row) * kSlot <
                       room) {
            Say("two bosses stand inside one another: their groups need " + Number(room / kSlot) +
                " rows between them");
        }
        before = &group;
    }
}

}  // namespace

std::vector<std::string> LevelFaults(const std::string& path) {
    return Check().Run(path);
}

std::set<std::string> LevelFiles(const std::string& assetsFolder) {
    std::set<std::string> names;
    for (int32_t level = 1; level <= LevelManager::kLevels; ++level) {
        names.insert("Level" + std::to_string(level) + ".lvl");
    }
    std::error_code noFolder;
    for (const auto& entry : fs::directory_iterator(fs::path(assetsFolder) / "levels", noFolder)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}
