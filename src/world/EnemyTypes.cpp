#include "world/EnemyTypes.h"

#include <algorithm>

namespace {

constexpr std::array<EnemyType, 8> kEnemyTypes = {{
    // type, model, score, hull, shields, speed, weapon, shield colour
    {0, "objects\\Dravek.aob", 100, 1, 0, 0.75F, 1, {0.0F, 0.0F, 1.0F, 0.5F}},
    {1, "objects\\jalka.aob", 150, 1, 1, 0.5F, 1, {0.0F, 1.0F, 0.0F, 0.5F}},
    {2, "objects\\Dravek2Shot.aob", 175, 2, 0, 0.8F, 2, {1.0F, 1.0F, 0.0F, 0.5F}},
    {3, "objects\\Dravek2Shot.aob", 225, 1, 1, 0.6F, 1, {1.0F, 0.0F, 1.0F, 0.5F}},
    {4, "objects\\Dravek2Shot.aob", 250, 2, 2, 0.8F, 1, {1.0F, 1.0F, 1.0F, 0.5F}},
    {5, "objects\\Fryjahn.aob", 350, 3, 3, 0.6F, 4, {1.0F, 0.0F, 0.0F, 0.5F}},
    {500, "objects\\boss1.aob", 100000, 30, 10, 0.2F, 2, {1.0F, 0.5F, 0.2F, 1.0F}},
    {501, "objects\\boss2.aob", 200000, 60, 20, 0.3F, 5, {0.0F, 0.5F, 1.0F, 1.0F}},
}};

}  // namespace

const EnemyType* FindEnemyType(int32_t type) {
    const auto found =
        std::find_if(kEnemyTypes.begin(), kEnemyTypes.end(),
                     [type](const EnemyType& candidate) { return candidate.type == type; });
    return found != kEnemyTypes.end() ? &*found : nullptr;
}
