#pragma once

// The shop after every fifth level: a ring of affordable items turning around a preview of the
// player's ship.

#include <array>
#include <cstdint>
#include <vector>

#include "player/PlayerShip.h"
#include "player/Powerup.h"

class Shop {
public:
    static constexpr int kMaxItems = 20;
    static constexpr int kTurnFrames = 20;
    static constexpr int32_t kExitItem = -1;
    static constexpr int32_t kPreviewItem = -2;  // the preview ship's place

    Shop() = default;
    virtual ~Shop() = default;

    // Fills the ring with what `moneyNow` buys. True when at least one item is affordable.
    bool Open(int32_t moneyNow);
    // One frame of input; true when the player leaves.
    bool Update();
    void Draw();  // in camera view 1

    // The ring: items are powerup entries, kExitItem or kPreviewItem.
    int32_t ItemCount() const { return itemCount; }
    int32_t Item(int32_t ringPosition) const { return items[ringPosition]; }
    bool IsBuyable(int32_t ringPosition) const { return buyable[ringPosition]; }
    int32_t Selected() const { return selected; }
    bool IsTurning() const { return turning; }
    float RingStep() const { return ringStep; }
    const PlayerShip& PreviewShip() const { return previewShip; }

private:
    void SetItem(int32_t ringPosition, int32_t item, uint32_t model, int32_t code);
    void UpdateBuyable();
    void UpdatePreview();
    void Turn(int32_t direction);
    bool Buy();  // true: it was the exit
    void DrawRing() const;
    void DrawPreview();
    void DrawLabel() const;

    std::array<int32_t, kMaxItems> items = {};
    // Display i shows items[i].
    std::vector<Powerup> displays = std::vector<Powerup>(kMaxItems, Powerup(true));
    std::array<bool, kMaxItems> buyable = {};
    int32_t itemCount = 0;
    float ringStep = 0.0F;  // degrees between neighbours
    int32_t selected = 0;   // ring position in front
    bool turning = false;
    int32_t turnDirection = 1;  // -1 or +1
    int32_t turnFrames = 0;     // frames left of the turn
    PlayerShip previewShip;
    float previewAngle = 0.0F;  // degrees
};
