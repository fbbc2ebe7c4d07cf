#include "world/AttackWave.h"

#include <gmock/gmock.h>

#include <set>

#include "core/Registry.h"
#include "graphics/GLWindow.h"
#include "support/GameFixture.h"

namespace {

class Waves : public GameFixture {
protected:
    void SetUp() override {
        GameFixture::SetUp();
        paths.push_back(std::make_unique<Path>(std::vector<Vec3>{{0, 0, -40}, {0, 0, -30}}));
        glWindow->SetView(1);
    }

    // A wave worth 1000 of these groups, each worth 500: "type, ships, interval, start".
    void Load(const std::vector<std::array<int, 4>>& groups) {
        std::string text = "Bonus: 1000\nGroups: " + std::to_string(groups.size());
        for (const auto& [type, ships, interval, start] : groups) {
            text += "\nB: 500 P: 0 T: " + std::to_string(type) + " S: " + std::to_string(ships) +
                    " I: " + std::to_string(interval) + " St: " + std::to_string(start) +
                    " F: 0 D: 0 K: 0";
        }
        LevelText file(text);
        ASSERT_FALSE(wave.Read(file, paths)) << file.Fault();
    }

    bool RunTo(int frame) {
        bool over = false;
        while (wave.GetFrame() < frame) {
            over = wave.Update();
        }
        return over;
    }

    PathTable paths;
    AttackWave wave;
};

int Launched(EnemyGroup& group) {
    int launched = 0;
    for (int i = 0; i < group.ShipCount(); ++i) {
        launched += group.GetShip(i).active ? 1 : 0;
    }
    return launched;
}

}  // namespace

TEST_F(Waves, LaunchTheirShipsAtTheInterval) {
    Load({{0, 5, 20, 100}, {0, 3, 1, 10}});
    std::vector<int> launches[2];
    int seen[2] = {};
    while (wave.GetFrame() < 250) {
        ASSERT_FALSE(wave.Update());
        for (int i = 0; i < 2; ++i) {
            const int launched = Launched(wave.GetGroup(i));
            if (launched != seen[i]) {
                launches[i].push_back(wave.GetFrame());
                seen[i] = launched;
            }
        }
    }
    EXPECT_THAT(launches[0], testing::ElementsAre(119, 139, 159, 179, 199));
    EXPECT_THAT(launches[1], testing::ElementsAre(10, 11, 12))
        << "interval 1: from the first frame";
}

TEST_F(Waves, PayTheGroupBonusOnlyToTheQuick) {
    Load({{0, 2, 1, 0}, {0, 2, 1, 0}});
    RunTo(5);
    wave.GetGroup(0).GetShip(0).TakeDamage(1);
    wave.GetGroup(0).GetShip(1).TakeDamage(1);
    wave.GetGroup(1).GetShip(1).TakeDamage(1);
    RunTo(6);
    EXPECT_TRUE(wave.GetGroup(0).IsCleared());
    EXPECT_EQ(score, 100 + 100 + 500 + 100) << "two ships with their group, and one of two";
    RunTo(60);
    ASSERT_TRUE(wave.GetGroup(1).GetShip(0).HasFinishedPath());
    wave.GetGroup(1).GetShip(0).TakeDamage(1);
    score = 0;
    EXPECT_TRUE(RunTo(61)) << "all destroyed: the wave is over";
    EXPECT_EQ(score, 100 + 1000) << "too slow for the group's bonus; the wave pays all the same";
}

TEST_F(Waves, KeepTheBonusWhileAShipIsStillToBeLaunched) {
    Load({{0, 2, 50, 0}});
    RunTo(99);
    ASSERT_TRUE(wave.GetGroup(0).GetShip(0).HasFinishedPath());
    RunTo(101);
    ASSERT_EQ(Launched(wave.GetGroup(0)), 2);
    wave.GetGroup(0).GetShip(0).TakeDamage(1);
    wave.GetGroup(0).GetShip(1).TakeDamage(1);
    EXPECT_TRUE(RunTo(102));
    EXPECT_EQ(score, 100 + 100 + 500 + 1000);
}

TEST_F(Waves, OfferOnlyLiveShipsAsTargets) {
    EXPECT_EQ(AttackWave().PickRandomShip(), nullptr) << "no groups";
    Load({{0, 3, 1, 0}, {0, 3, 1, 1000}});
    EXPECT_EQ(wave.PickRandomShip(), nullptr) << "nothing launched yet";
    RunTo(3);
    EnemyGroup& group = wave.GetGroup(0);
    group.GetShip(1).TakeDamage(1);
    RunTo(4);
    std::set<EnemyShip*> targets;
    int misses = 0;
    for (int i = 0; i < 300; ++i) {
        EnemyShip* target = wave.PickRandomShip();
        misses += target == nullptr ? 1 : 0;
        targets.insert(target);
    }
    EXPECT_LT(misses, 5) << "ten draws fail but once in a thousand times";
    targets.erase(nullptr);
    EXPECT_THAT(targets, testing::UnorderedElementsAre(&group.GetShip(0), &group.GetShip(2)));
    group.GetShip(0).TakeDamage(1);
    group.GetShip(2).TakeDamage(1);
    RunTo(5);
    EXPECT_EQ(wave.PickRandomShip(), nullptr) << "the first group is cleared, the second waits";
}
