#include "audio/MusicPlayer.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>

#include "core/DebugLog.h"
#include "platform/Files.h"
#include "platform/Random.h"
#include "platform/null/NullMedia.h"

namespace {

namespace fs = std::filesystem;
namespace null = platform::null;
using State = MusicPlayer::State;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

bool Within(int ms, const std::function<bool()>& condition) {
    const auto deadline = steady_clock::now() + milliseconds(ms);
    while (!condition()) {
        if (steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(milliseconds(2));
    }
    return true;
}

class Music : public testing::Test {
protected:
    void SetUp() override {
        folder = fs::temp_directory_path() / ("nebulorix-music-" + std::to_string(getpid()));
        fs::create_directories(folder / "Music");
        oldFolder = fs::current_path();
        fs::current_path(folder);
        null::ResetMedia();
        CaptureLog(&log);
    }
    void TearDown() override {
        MusicPlayer::DestroyInstance();
        CaptureLog(nullptr);
        fs::current_path(oldFolder);
        fs::remove_all(folder);
    }

    static MusicPlayer& Player() { return *MusicPlayer::Instance(); }
    static void StartWith(int tracks) {
        for (int i = 0; i < tracks; ++i) {
            std::ofstream("Music/" + std::to_string(i) + ".ogg") << "x";
        }
        ASSERT_FALSE(Player().Scan());
        Player().PlayNext();
        ASSERT_TRUE(Plays(0));
    }
    // Also waits out the second of silence between two tracks.
    static bool Plays(int track) {
        return Within(2000, [track] {
            const null::NullMusic music = null::Music();
            return Player().GetState() == State::Playing && Player().CurrentTrack() == track &&
                   music.running && music.openFile == "Music\\" + Player().TrackName(track);
        });
    }
    static bool Becomes(State state, int ms) {
        return Within(ms, [state] { return Player().GetState() == state; });
    }
    static int64_t ShutdownMs() {
        const auto start = steady_clock::now();
        Player().Shutdown();
        return std::chrono::duration_cast<milliseconds>(steady_clock::now() - start).count();
    }

    std::string log;

private:
    fs::path folder;
    fs::path oldFolder;
};

TEST_F(Music, WithoutTracksTheKeysDoNothing) {
    EXPECT_TRUE(Player().Scan());
    Player().PlayNext();
    Player().Pause();
    Player().Resume();
    Player().ChangeVolume(1);
    Player().Stop();
    EXPECT_EQ(Player().GetVolume(), 50);
    EXPECT_LT(ShutdownMs(), 20);
    EXPECT_TRUE(null::Music().history.empty());
    fs::remove_all("Music");
    EXPECT_TRUE(Player().Scan()) << "no folder at all";
}

TEST_F(Music, TheListIsShuffledByOneDrawForEachTrack) {
    for (int i = 0; i < 25; ++i) {
        std::ofstream("Music/" + std::to_string(i)) << "x";
    }
    std::vector<std::string> expected = platform::ListFolder("Music");
    platform::SeedRandom(7);
    for (int i = 0; i < 25; ++i) {
        std::swap(expected[i], expected[platform::Random() % 25]);
    }
    platform::SeedRandom(7);
    ASSERT_FALSE(Player().Scan());
    ASSERT_EQ(Player().TrackCount(), 25);
    for (int i = 0; i < 25; ++i) {
        EXPECT_EQ(Player().TrackName(i), expected[i]) << i;
    }
    EXPECT_EQ(Player().GetState(), State::Stopped) << "nothing plays before it is asked for";
}

TEST_F(Music, TracksFollowOneAnotherByKeyAndByTheirEnd) {
    StartWith(3);
    null::EndMusicTrack();
    EXPECT_TRUE(Plays(1));
    Player().PlayNext();
    EXPECT_TRUE(Plays(2));
    null::EndMusicTrack();
    EXPECT_TRUE(Plays(0)) << "the first follows the last";
    EXPECT_EQ(null::Music().volume, -2500);
}

TEST_F(Music, EndPressedTwiceMovesOnByTwo) {
    StartWith(4);
    Player().PlayNext();
    ASSERT_TRUE(Becomes(State::Stopped, 50)) << "the key must act at once";
    ASSERT_TRUE(Within(500, [] { return !null::Music().running; }));
    Player().PlayNext();
    EXPECT_TRUE(Plays(2));
    const std::vector<std::string> history = null::Music().history;
    EXPECT_EQ(std::count_if(history.begin(), history.end(),
                            [](const std::string& call) { return call.starts_with("Open"); }),
              2)
        << "the track in between must not be heard";
}

TEST_F(Music, PauseResumeAndStop) {
    StartWith(2);
    Player().Resume();
    Player().Pause();
    ASSERT_TRUE(Becomes(State::Paused, 50));
    EXPECT_FALSE(null::Music().running);
    Player().Pause();
    Player().ChangeVolume(1);
    EXPECT_EQ(Player().GetVolume(), 50) << "while paused the volume stays";
    Player().Resume();
    ASSERT_TRUE(Becomes(State::Playing, 50));
    EXPECT_TRUE(Plays(0)) << "the same track goes on";
    Player().Stop();
    ASSERT_TRUE(Becomes(State::Stopped, 50));
    Player().Pause();
    Player().Resume();
    Player().ChangeVolume(1);
    EXPECT_EQ(Player().GetVolume(), 50) << "while stopped the volume stays";
    EXPECT_FALSE(Becomes(State::Playing, 100));
    Player().PlayNext();
    EXPECT_TRUE(Plays(1));
}

TEST_F(Music, TheVolumeHasAHundredStepsAndCarriesOver) {
    StartWith(2);
    ASSERT_TRUE(Within(500, [] { return null::Music().volume == -2500; }));
    Player().ChangeVolume(1);
    EXPECT_EQ(null::Music().volume, -2450);
    for (int i = 0; i < 60; ++i) {
        Player().ChangeVolume(1);
    }
    EXPECT_EQ(Player().GetVolume(), 100);
    EXPECT_EQ(null::Music().volume, 0);
    for (int i = 0; i < 110; ++i) {
        Player().ChangeVolume(-1);
    }
    EXPECT_EQ(Player().GetVolume(), 0);
    EXPECT_EQ(null::Music().volume, -5000);
    Player().ChangeVolume(10);
    null::EndMusicTrack();
    ASSERT_TRUE(Plays(1));
    EXPECT_TRUE(Within(500, [] { return null::Music().history.back() == "Volume -4500"; }))
        << "the next track starts at " << null::Music().history.back();
}

TEST_F(Music, AFileThatIsNoMusicStopsUntilTheNextKey) {
    std::ofstream("Music/0.ogg") << "x";
    std::ofstream("Music/1.ogg") << "x";
    ASSERT_FALSE(Player().Scan());
    const std::string broken = Player().TrackName(0);
    null::SetMusic(true, {"Music\\" + broken});
    Player().PlayNext();
    ASSERT_TRUE(Within(500, [] { return !null::Music().history.empty(); }));
    EXPECT_FALSE(Becomes(State::Playing, 100));
    Player().PlayNext();
    EXPECT_TRUE(Plays(1));
    Player().Shutdown();
    EXPECT_EQ(log, "WARNING: Cannot play music file: " + broken + "\n");
}

TEST_F(Music, WithoutADeviceTheLogSaysSo) {
    null::SetMusic(false);
    std::ofstream("Music/0.ogg") << "x";
    ASSERT_FALSE(Player().Scan());
    Player().PlayNext();
    EXPECT_FALSE(Becomes(State::Playing, 100));
    Player().Shutdown();
    EXPECT_EQ(log, "ERROR - Could not create the Filter Graph Manager.");
}

TEST_F(Music, QuittingTakesNoTimeInAnyState) {
    StartWith(2);
    EXPECT_LT(ShutdownMs(), 100) << "while playing";
    EXPECT_EQ(Player().GetState(), State::Ended);
    EXPECT_TRUE(null::Music().openFile.empty()) << "the track must be closed";
    for (const bool paused : {true, false}) {
        MusicPlayer::DestroyInstance();
        StartWith(2);
        if (paused) {
            Player().Pause();
            ASSERT_TRUE(Becomes(State::Paused, 50));
        } else {
            Player().PlayNext();
            ASSERT_TRUE(Becomes(State::Stopped, 50));
        }
        EXPECT_LT(ShutdownMs(), 100) << (paused ? "while paused" : "in the silence between two");
    }
}

}  // namespace
