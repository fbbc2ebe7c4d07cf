#include "world/AttackWave.h"

#include "core/Registry.h"
#include "platform/Random.h"

namespace {

constexpr int kGroupPickTries = 10;

}  // namespace

bool AttackWave::Read(LevelText& file, const PathTable& paths) {
    bonus = file.ReadInt("bonus of a wave", -EnemyGroup::kMaxBonus, EnemyGroup::kMaxBonus);
    const int32_t count = file.ReadInt("number of groups of a wave", 1, kMaxGroups);
    for (int32_t row = 0; row < count && !file.HasFailed(); ++row) {
        groups.push_back(std::make_unique<EnemyGroup>(row));
        groups.back()->Read(file, paths);
    }
    return file.HasFailed();
}

bool AttackWave::Update() {
    ++frame;
    EnemyShip::UpdateFormationSway();
    int finished = 0;
    for (const auto& group : groups) {
        if (!group->IsLaunching() && !group->IsCleared() && frame >= group->StartFrame()) {
            group->Start();
        }
        if (group->IsLaunching() ? group->Update() : group->IsCleared()) {
            ++finished;
        }
    }
    if (finished < GroupCount()) {
        return false;
    }
    score += bonus;
    return true;
}

void AttackWave::Draw() {
    for (const auto& group : groups) {
        if (group->IsLaunching()) {
            group->Draw();
        }
    }
}

EnemyShip* AttackWave::PickRandomShip() {
    for (int i = 0; i < kGroupPickTries && !groups.empty(); ++i) {
        EnemyGroup& group = *groups[platform::Random() % GroupCount()];
        if (group.IsLaunching() && !group.IsCleared()) {
            return group.PickRandomShip();
        }
    }
    return nullptr;
}
