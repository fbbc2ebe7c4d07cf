#include "player/Shop.h"

#include <GL/gl.h>

#include <cinttypes>

#include "core/KeyMap.h"
#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "graphics/Text.h"
#include "platform/VirtualKeys.h"
#include "player/PowerupKinds.h"
#include "player/PowerupManager.h"
#include "player/WeaponKinds.h"
#include "player/WeaponManager.h"

namespace {

constexpr float kPreviewSpin = 1.0F;  // degrees per frame
constexpr int kPriceLine = 24;        // pixels below the name

// Where an item stands before the ring's turn: up towards the camera and away from the middle.
struct RingPlace {
    float height;
    float distance;
};
constexpr RingPlace kInFront = {30.0F, 7.0F};
constexpr RingPlace kOnOffer = {15.0F, 12.0F};
constexpr RingPlace kOutOfReach = {-10.0F, 19.0F};

// A row of missiles beside the preview ship, as many as it may have in flight.
void DrawRack(float z, int32_t missileKind, int32_t count) {
    glPushMatrix();
    glTranslatef(4.0F, 30.0F, z);
    for (int32_t i = 0; i < count; ++i) {
        glCallList(WeaponManager::MissileModel(missileKind));
        glTranslatef(1.0F, 0.0F, 0.0F);
    }
    glPopMatrix();
}

}  // namespace

bool Shop::Open(int32_t moneyNow) {
    playerShip->CopyStateTo(previewShip);
    itemCount = 2;
    for (int entry = 0; entry < kShopEntries; ++entry) {
        if (kPowerups[entry].value <= moneyNow) {
            SetItem(itemCount, entry, PowerupManager::Model(entry), kPowerups[entry].code);
            ++itemCount;
        }
    }
    const bool anythingAffordable = itemCount > 2;
    if (anythingAffordable) {
        ringStep = 360.0F / static_cast<float>(itemCount);
        SetItem(0, kExitItem, PowerupManager::Model(kSuckerEntry), kExitItem);
        SetItem(1, kPreviewItem, 0, kPreviewItem);
        UpdateBuyable();
    }
    turning = false;
    turnFrames = 0;
    previewAngle = 0.0F;
    selected = 1;
    return anythingAffordable;
}

void Shop::SetItem(int32_t ringPosition, int32_t item, uint32_t model, int32_t code) {
    items[ringPosition] = item;
    displays[ringPosition].Place({}, model, code);
}

void Shop::UpdateBuyable() {
    for (int32_t i = 0; i < itemCount; ++i) {
        const int32_t item = items[i];
        buyable[i] =
            item == kExitItem || (item != kPreviewItem && kPowerups[item].value <= money &&
                                  PowerupManager::IsValid(*playerShip, kPowerups[item].code));
    }
}

// The preview is the player's ship as it would be after buying what stands in front.
void Shop::UpdatePreview() {
    playerShip->CopyStateTo(previewShip);
    const int32_t item = items[selected];
    if (item >= 0) {
        PowerupManager::Apply(previewShip, kPowerups[item].code, false);
    }
}

bool Shop::Update() {
    if (keyDown[platform::VK_ESCAPE] != 0) {
        keyDown[platform::VK_ESCAPE] = 0;
        return true;
    }
    previewAngle += kPreviewSpin;
    if (previewAngle > 360.0F) {
        previewAngle -= 360.0F;
    }
    for (int32_t i = 0; i < itemCount; ++i) {
        displays[i].Update({}, nullptr);
    }
    if (turning) {
        --turnFrames;
        turning = turnFrames != 0;
        return false;
    }
    if (keyMap->IsHeld(Action::Left)) {
        Turn(-1);
    } else if (keyMap->IsHeld(Action::Right)) {
        Turn(1);
    } else if (keyMap->IsHeld(Action::Fire1)) {
        keyMap->Consume(Action::Fire1);  // one purchase per press
        return Buy();
    }
    return false;
}

void Shop::Turn(int32_t direction) {
    turning = true;
    turnFrames = kTurnFrames;
    turnDirection = direction;
    selected = (selected + direction + itemCount) % itemCount;
    UpdatePreview();
}

bool Shop::Buy() {
    if (!buyable[selected]) {
        return false;
    }
    const int32_t item = items[selected];
    if (item == kExitItem) {
        return true;
    }
    money -= kPowerups[item].value;
    PowerupManager::Apply(*playerShip, kPowerups[item].code, false);
    UpdateBuyable();
    UpdatePreview();
    return false;
}

void Shop::Draw() {
    DrawRing();
    DrawPreview();
    if (items[selected] != kPreviewItem) {
        DrawLabel();
    }
}

void Shop::DrawRing() const {
    glPushMatrix();
    if (turning) {
        const auto turnLeft = static_cast<float>(turnDirection * turnFrames);
        glRotatef(turnLeft * (ringStep / kTurnFrames), 0.0F, 1.0F, 0.0F);
    }
    for (int32_t i = 0; i < itemCount; ++i) {
        const int32_t p = (selected + i) % itemCount;
        if (items[p] == kPreviewItem) {
            continue;
        }
        RingPlace place = kOutOfReach;
        if (buyable[p]) {
            place = i == 0 ? kInFront : kOnOffer;
        }
        glPushMatrix();
        glRotatef(static_cast<float>(i) * ringStep, 0.0F, 1.0F, 0.0F);
        glTranslatef(0.0F, place.height, -place.distance);
        displays[p].Draw();
        glPopMatrix();
    }
    glPopMatrix();
}

void Shop::DrawPreview() {
    glPushMatrix();
    glTranslatef(0.0F, 30.0F, 1.5F);
    glRotatef(previewAngle, 0.0F, 0.0F, -1.0F);
    previewShip.Draw();
    glPopMatrix();
    DrawRack(-1.0F, kMissileHoming, previewShip.GetHomingMissiles());
    DrawRack(1.0F, kMissileDumbfire, previewShip.GetDumbfireMissiles());
}

void Shop::DrawLabel() const {
    const int x = glWindow->GetWidth() / 20;
    const int y = glWindow->GetHeight() / 8;
    const float red = buyable[selected] ? 0.0F : 1.0F;
    const float green = 1.0F - red;
    const int32_t item = items[selected];
    if (item == kExitItem) {
        PrintText(glWindow, x, y, red, green, 0.0F, "Exit");
        return;
    }
    PrintText(glWindow, x, y, red, green, 0.0F, "%s", kPowerups[item].name);
    PrintText(glWindow, x, y - kPriceLine, red, green, 0.0F, "%" PRId32, kPowerups[item].value);
}
