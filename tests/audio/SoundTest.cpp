#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "audio/SoundManager.h"
#include "core/DebugLog.h"
#include "platform/null/NullMedia.h"

namespace {

using platform::SoundBuffer;
using platform::null::Media;
using platform::null::SoundCopies;
using platform::null::SoundPlays;

class Sounds : public testing::Test {
protected:
    void SetUp() override {
        platform::null::ResetMedia();
        CaptureLog(&log);
    }
    void TearDown() override {
        SoundManager::DestroyInstance();
        CaptureLog(nullptr);
        EXPECT_TRUE(Media().soundBuffers.empty()) << "buffers left behind";
        EXPECT_FALSE(Media().soundDeviceOpen);
    }
    static SoundManager& Manager() { return *SoundManager::Instance(); }
    static std::vector<int> PlaysOfCopies(const char* resource) {
        std::vector<int> plays;
        for (const SoundBuffer* copy : SoundCopies(resource)) {
            plays.push_back(copy->plays);
        }
        return plays;
    }

    std::string log;
};

TEST_F(Sounds, AllFourteenLoadWithTenCopiesEach) {
    Manager().Init();
    EXPECT_EQ(log, "DirectSound found and being used :o)\n");
    for (const char* name :
         {"FIRE", "QUAD_SHOT", "CANNON_SOUND", "MIS_EXPL", "EXPLOSION3", "EXPLOSION1", "HIT",
          "3SUCK", "PS_SINGLE_LASER", "PS_ENGINE_UPGRADE", "PS_INC_BULLETS", "PS_DOUBLE_LASER",
          "PS_MISSILE_DUMBFIRE", "PS_MISSILE_FAST"}) {
        const std::vector<SoundBuffer*> copies = SoundCopies(name);
        ASSERT_EQ(copies.size(), 10U) << name;
        EXPECT_FALSE(copies[0]->duplicate) << name;
        EXPECT_TRUE(copies[9]->duplicate) << name << " must share its samples";
    }
}

TEST_F(Sounds, TenCopiesOverlapAndTheEleventhCutsTheOldestOff) {
    Manager().Init();
    for (int shot = 0; shot < 10; ++shot) {
        Manager().PlayWeaponSound(1);
    }
    const std::vector<SoundBuffer*> copies = SoundCopies("FIRE");
    for (const SoundBuffer* copy : copies) {
        EXPECT_TRUE(copy->playing && copy->plays == 1 && copy->stops == 0);
    }
    Manager().PlayWeaponSound(1);
    EXPECT_EQ(PlaysOfCopies("FIRE"), (std::vector<int>{2, 1, 1, 1, 1, 1, 1, 1, 1, 1}));
    EXPECT_EQ(copies[0]->stops, 1) << "it must start again from its beginning";
    copies[0]->playing = false;
    Manager().PlayWeaponSound(1);
    Manager().PlayWeaponSound(1);
    EXPECT_EQ(PlaysOfCopies("FIRE"), (std::vector<int>{3, 2, 1, 1, 1, 1, 1, 1, 1, 1}))
        << "an idle copy serves again, and the rotation goes on behind it";
}

TEST_F(Sounds, ALoneCopyIsNotRestarted) {
    ASSERT_FALSE(platform::OpenSoundDevice());
    const auto sound = Sound::Create("HIT", 0);
    ASSERT_NE(sound, nullptr);
    EXPECT_EQ(sound->BufferCount(), 1U);
    EXPECT_FALSE(sound->Play());
    EXPECT_TRUE(sound->Play());
    EXPECT_EQ(PlaysOfCopies("HIT"), std::vector<int>{1});
    EXPECT_EQ(Sound::Create("NO_SUCH_SOUND", 10), nullptr);
    platform::CloseSoundDevice();
}

TEST_F(Sounds, TheVolumeLowersTheFourLoudestOnly) {
    Manager().Init();
    for (const char* name : {"FIRE", "EXPLOSION3", "EXPLOSION1", "HIT"}) {
        EXPECT_EQ(SoundCopies(name)[0]->volume, -930) << name;
        EXPECT_EQ(SoundCopies(name)[9]->volume, -930) << name;
    }
    for (const char* name : {"QUAD_SHOT", "CANNON_SOUND", "MIS_EXPL", "3SUCK", "PS_MISSILE_FAST"}) {
        EXPECT_EQ(SoundCopies(name)[9]->volume, 0) << name;
    }
    Manager().SetVolume(0.0F);
    EXPECT_EQ(SoundCopies("HIT")[4]->volume, -3000);
    Manager().SetVolume(1.0F);
    EXPECT_EQ(SoundCopies("HIT")[4]->volume, 0);
    Manager().ToggleSound();
    Manager().SetVolume(0.0F);
    EXPECT_EQ(SoundCopies("HIT")[4]->volume, 0) << "switched off, the volume stays";
}

TEST_F(Sounds, EachEventPlaysItsSound) {
    Manager().Init();
    for (int weapon = -1; weapon <= 6; ++weapon) {
        Manager().PlayWeaponSound(weapon);
    }
    EXPECT_EQ(SoundPlays("FIRE"), 3);
    EXPECT_EQ(SoundPlays("QUAD_SHOT"), 1);
    EXPECT_EQ(SoundPlays("CANNON_SOUND"), 1);
    Manager().PlayExplosion();
    Manager().PlayMissileExplosion();
    Manager().PlayPlayerExplosion();
    Manager().PlayHit();
    Manager().PlaySuck();
    for (const char* name : {"EXPLOSION1", "MIS_EXPL", "EXPLOSION3", "HIT", "3SUCK"}) {
        EXPECT_EQ(SoundPlays(name), 1) << name;
    }
    for (int entry = -1; entry <= SoundManager::kPickupEntries; ++entry) {
        Manager().PlayPickupSound(entry);
    }
    Manager().PlayPickupSound(4);
    EXPECT_EQ(SoundPlays("PS_SINGLE_LASER"), 1);
    EXPECT_EQ(SoundPlays("PS_MISSILE_DUMBFIRE"), 2);
    EXPECT_EQ(SoundPlays("PS_MISSILE_FAST"), 1);
}

TEST_F(Sounds, SwitchedOffOnlyPickupsSound) {
    Manager().Init();
    Manager().ToggleSound();
    EXPECT_FALSE(Manager().IsEnabled());
    Manager().PlayWeaponSound(1);
    Manager().PlayExplosion();
    Manager().PlayHit();
    Manager().PlayPickupSound(0);
    EXPECT_EQ(SoundPlays("FIRE") + SoundPlays("EXPLOSION1") + SoundPlays("HIT"), 0);
    EXPECT_EQ(SoundPlays("PS_SINGLE_LASER"), 1);
    Manager().Shutdown();
    EXPECT_TRUE(Media().soundBuffers.empty()) << "also switched off the sounds are released";
    Manager().PlayPickupSound(0);
}

TEST_F(Sounds, WithoutADeviceTheGameIsSilent) {
    Media().soundDeviceWorks = false;
    Manager().Init();
    EXPECT_EQ(log, "WARNING: DirectSound failed to initialise - sounds are turned off\n");
    EXPECT_FALSE(Manager().IsEnabled());
    Manager().ToggleSound();
    Manager().PlayExplosion();
    Manager().PlayPickupSound(0);
    Manager().SetVolume(0.5F);
    Manager().Shutdown();
}

}  // namespace
