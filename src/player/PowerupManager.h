#pragma once

// Owns the powerups in play and the shop: drops, moves, draws and collects powerups and applies
// their effects to the player's ship.

#include <memory>

#include "core/Pool.h"
#include "player/Powerup.h"
#include "player/PowerupKinds.h"
#include "player/Shop.h"

class PowerupManager {
public:
    static constexpr int kCapacity = 20;

    PowerupManager();
    ~PowerupManager();
    bool Init();  // true = failure: never

    // The models of all kinds (GL context needed). True = failure: logged.
    static bool LoadModels();
    static uint32_t Model(int entry);

    void SetView(int32_t view);
    // Perhaps drops something where an enemy was destroyed. True when nothing was dropped.
    bool Drop(Vec3 at);
    void UpdateAll(const PlayerShip* player);  // null: no magnet
    void Collect(PlayerShip& player);
    void DrawAll();
    void Clear();

    // The effect of a kind; `award` adds its value to the score and plays its sound.
    static void Apply(PlayerShip& player, int32_t code, bool award);
    // Whether the kind would change anything; the shop sells only such.
    static bool IsValid(const PlayerShip& player, int32_t code);
    // Whether the strong magnet pulls the kind.
    static bool IsWanted(const PlayerShip& player, int32_t code);

    // The shop's, forwarded.
    bool OpenShop(int32_t moneyNow);
    void DrawShop();
    bool UpdateShop();

    int LiveCount() const { return powerups.LiveCount(); }
    const Powerup& GetPowerup(int index) const { return powerups.Live(index); }
    const Shop& GetShop() const { return shop; }

private:
    Pool<Powerup> powerups{kCapacity, false};
    Shop shop;
};
