// The shop: its ring, purchases and preview.

#include <vector>

#include "platform/VirtualKeys.h"
#include "player/PlayerFixture.h"

namespace {

class ShopTest : public PlayerFixture {
protected:
    static const Shop& TheShop() { return Powerups().GetShop(); }
    static bool Open(int32_t coins) {
        money = coins;
        return Powerups().OpenShop(money);
    }
    // One press of a key, and the frames until the ring stands still again.
    static bool Press(Action action) {
        Hold(action);
        bool left = Powerups().UpdateShop();
        Release(action);
        while (!left && TheShop().IsTurning()) {
            left = Powerups().UpdateShop();
        }
        return left;
    }
    static std::vector<int32_t> Ring() {
        std::vector<int32_t> ring;
        ring.reserve(TheShop().ItemCount());
        for (int32_t i = 0; i < TheShop().ItemCount(); ++i) {
            ring.push_back(TheShop().Item(i));
        }
        return ring;
    }
    static void TurnTo(int32_t item) {
        while (TheShop().Item(TheShop().Selected()) != item) {
            Press(Action::Right);
        }
    }
};

TEST_F(ShopTest, RingHoldsWhatTheMoneyBuysBehindExitAndPreview) {
    EXPECT_FALSE(Open(24)) << "nothing is affordable";
    EXPECT_TRUE(Open(25));
    EXPECT_EQ(Ring(), (std::vector<int32_t>{Shop::kExitItem, Shop::kPreviewItem, 0, 2}));
    EXPECT_FLOAT_EQ(TheShop().RingStep(), 90.0F);
    EXPECT_EQ(TheShop().Selected(), 1);
    EXPECT_TRUE(TheShop().IsBuyable(0));
    EXPECT_FALSE(TheShop().IsBuyable(1));
    EXPECT_FALSE(TheShop().IsBuyable(2)) << "the single laser is fitted already";
    EXPECT_TRUE(TheShop().IsBuyable(3));
    EXPECT_TRUE(Open(5000));
    EXPECT_EQ(TheShop().ItemCount(), Shop::kMaxItems) << "everything";
}

TEST_F(ShopTest, RingTurnsOneStepInTwentyFramesAndGoesRound) {
    Open(25);
    Hold(Action::Left);
    Powerups().UpdateShop();
    EXPECT_EQ(TheShop().Selected(), 0);
    Release(Action::Left);
    for (int i = 0; i < 19; ++i) {
        Powerups().UpdateShop();
        EXPECT_TRUE(TheShop().IsTurning()) << i;
    }
    Powerups().UpdateShop();
    EXPECT_FALSE(TheShop().IsTurning());
    Press(Action::Left);
    EXPECT_EQ(TheShop().Selected(), 3);
    Press(Action::Right);
    EXPECT_EQ(TheShop().Selected(), 0);
}

TEST_F(ShopTest, BuyingTakesThePriceOnceForEachPressAndScoresNothing) {
    Open(60);
    TurnTo(2);
    Hold(Action::Fire1);
    for (int i = 0; i < 10; ++i) {
        EXPECT_FALSE(Powerups().UpdateShop());
    }
    EXPECT_EQ(money, 35);
    EXPECT_EQ(playerShip->GetBullets(), 4);
    EXPECT_EQ(score, 0);
    EXPECT_FALSE(TheShop().IsBuyable(4)) << "a Double Laser for 50 has become too dear";
    EXPECT_EQ(TheShop().ItemCount(), 5) << "but stays on the ring";
    Press(Action::Fire1);
    EXPECT_EQ(money, 10);
    Press(Action::Fire1);
    EXPECT_EQ(money, 10);
    EXPECT_EQ(playerShip->GetBullets(), 5) << "what is red is not sold";
}

TEST_F(ShopTest, PreviewShowsTheShipWithTheItemInFront) {
    Open(500);
    EXPECT_EQ(TheShop().PreviewShip().GetPosition(), Vec3{});
    TurnTo(9);
    EXPECT_EQ(TheShop().PreviewShip().GetWeapon(), kWeaponQuad);
    EXPECT_EQ(playerShip->GetWeapon(), kWeaponSingle);
    TurnTo(11);
    EXPECT_EQ(TheShop().PreviewShip().GetWeapon(), kWeaponSingle) << "the quad is not in front";
    EXPECT_EQ(TheShop().PreviewShip().GetShields(), 1);
    EXPECT_EQ(playerShip->GetShields(), 0);
    Press(Action::Fire1);
    EXPECT_EQ(playerShip->GetShields(), 1);
    EXPECT_EQ(TheShop().PreviewShip().GetShields(), 2) << "what a second one would do";
    TurnTo(Shop::kPreviewItem);
    EXPECT_EQ(TheShop().PreviewShip().GetShields(), 1);
}

TEST_F(ShopTest, ExitAndEscapeLeave) {
    Open(25);
    EXPECT_FALSE(Press(Action::Fire1)) << "the preview's place is nothing to buy";
    TurnTo(Shop::kExitItem);
    EXPECT_TRUE(Press(Action::Fire1));
    EXPECT_EQ(money, 25);

    Open(25);
    Hold(Action::Left);
    Powerups().UpdateShop();
    keyDown[platform::VK_ESCAPE] = 1;
    EXPECT_TRUE(Powerups().UpdateShop()) << "also while the ring turns";
    EXPECT_EQ(keyDown[platform::VK_ESCAPE], 0);
}

}  // namespace
