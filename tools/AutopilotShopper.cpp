#include "AutopilotShopper.h"

#include <array>

#include "core/KeyMap.h"
#include "core/Registry.h"
#include "game/LevelManager.h"
#include "player/PlayerShip.h"
#include "player/PowerupManager.h"

namespace {

// What a sensible player buys, the most wanted first, and until when.
struct Wish {
    int32_t code;
    bool (*wanted)(const PlayerShip& ship);
};
constexpr std::array kWishes = {
    Wish{kEngineUpgrade, [](const PlayerShip& ship) { return ship.GetEngineLevel() < 1; }},
    Wish{kDoubleLaser, [](const PlayerShip& ship) { return ship.GetWeapon() < 2; }},
    Wish{kShield, [](const PlayerShip& ship) { return ship.GetShields() < 2; }},
    Wish{kExtraBullet, [](const PlayerShip& ship) { return ship.GetBullets() < 8; }},
    Wish{kEngineUpgrade, [](const PlayerShip& ship) { return ship.GetEngineLevel() < 2; }},
    Wish{kExtraLife, [](const PlayerShip& ship) { return ship.GetHitPoints() < 2; }},
    Wish{kShield, [](const PlayerShip& ship) { return ship.GetShields() < 4; }},
    Wish{kQuadLaser, [](const PlayerShip& ship) { return ship.GetWeapon() < 4; }},
    Wish{kEngineUpgrade, [](const PlayerShip& ship) { return ship.GetEngineLevel() < 3; }},
    Wish{kShield, [](const PlayerShip&) { return true; }},
    Wish{kAutofire, [](const PlayerShip& ship) { return !ship.GetAutofire(); }},
    Wish{kExtraLife, [](const PlayerShip&) { return true; }},
    Wish{kHomingMissile, [](const PlayerShip& ship) { return ship.GetHomingMissiles() < 1; }},
    Wish{kExtraBullet, [](const PlayerShip&) { return true; }},
};

int32_t FindOnRing(const Shop& shop, int32_t item) {
    for (int32_t i = 0; i < shop.ItemCount(); ++i) {
        if (shop.Item(i) == item) {
            return i;
        }
    }
    return 0;
}

int32_t DearestPosition(const Shop& shop) {
    int32_t dearest = FindOnRing(shop, Shop::kExitItem);
    int32_t price = 0;
    for (int32_t i = 0; i < shop.ItemCount(); ++i) {
        const int32_t item = shop.Item(i);
        if (item >= 0 && shop.IsBuyable(i) && kPowerups[item].value > price) {
            price = kPowerups[item].value;
            dearest = i;
        }
    }
    return dearest;
}

}  // namespace

int32_t Shopper::WantedPosition() const {
    const Shop& shop = levelManager->GetPowerups().GetShop();
    if (!hasPlan) {
        return DearestPosition(shop);
    }
    for (const Wish& wish : kWishes) {
        if (wish.wanted(levelManager->GetPlayer())) {
            const int32_t position = FindOnRing(shop, FindPowerupEntry(wish.code));
            if (position != 0 && shop.IsBuyable(position)) {
                return position;
            }
        }
    }
    return FindOnRing(shop, Shop::kExitItem);
}

void Shopper::PressKeys() {
    const Shop& shop = levelManager->GetPowerups().GetShop();
    for (int action = 0; action < kActionCount; ++action) {
        keyDown[keyMap->Get(static_cast<Action>(action))] = 0;
    }
    if (shop.IsTurning() || pressed) {
        pressed = false;
        return;
    }
    const int32_t wanted = WantedPosition();
    const int32_t steps =
        (wanted - shop.Selected() + shop.ItemCount()) % shop.ItemCount();  // to the right
    Action action = Action::Fire1;
    if (steps != 0) {
        action = steps * 2 <= shop.ItemCount() ? Action::Right : Action::Left;
    }
    keyDown[keyMap->Get(action)] = 1;
    pressed = true;
}
