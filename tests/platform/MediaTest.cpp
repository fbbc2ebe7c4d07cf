// Sound is mixed into a file instead of a loudspeaker, and controllers are made of software, so
// that what reaches the player can be measured.

#include <SDL.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include "platform/Controller.h"
#include "platform/MusicGraph.h"
#include "platform/SoundBuffer.h"

namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int16_t kLevel = 8000;

void Sleep(int ms) {
    std::this_thread::sleep_for(milliseconds(ms));
}

// Half a period up and half a period down: its peak is its level.
std::vector<uint8_t> Square(int frames, int channels) {
    std::vector<uint8_t> bytes(size_t{2} * static_cast<size_t>(frames) *
                               static_cast<size_t>(channels));
    for (int i = 0; i < frames * channels; ++i) {
        const int16_t sample = (i / channels) % 200 < 100 ? kLevel : -kLevel;
        std::memcpy(&bytes[2 * static_cast<size_t>(i)], &sample, sizeof sample);
    }
    return bytes;
}

class Mixed : public testing::Test {
protected:
    void SetUp() override {
        folder = fs::temp_directory_path() / ("nebulorix-media-" + std::to_string(getpid()));
        fs::create_directories(folder / "Music");
        oldFolder = fs::current_path();
        fs::current_path(folder);
        setenv("SDL_AUDIODRIVER", "disk", 1);
        setenv("SDL_DISKAUDIOFILE", (folder / "mixed.raw").c_str(), 1);
    }
    void TearDown() override {
        unsetenv("SDL_AUDIODRIVER");
        fs::current_path(oldFolder);
        fs::remove_all(folder);
    }

    // What was mixed; to be asked once the device is closed.
    static std::vector<int16_t> Samples() {
        std::ifstream file("mixed.raw", std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(file), {});
        std::vector<int16_t> samples(bytes.size() / 2);
        std::memcpy(samples.data(), bytes.data(), samples.size() * 2);
        return samples;
    }
    // The middle of the loudest samples: resampling rings a little at the edges of the wave.
    static double Peak() {
        std::vector<int16_t> samples = Samples();
        std::erase_if(samples, [](int16_t sample) { return sample <= 0; });
        if (samples.empty()) {
            return 0;
        }
        std::nth_element(samples.begin(), samples.begin() + samples.size() / 2, samples.end());
        return samples[samples.size() / 2];
    }
    static void WriteWave(const char* name, int frames) {
        const std::vector<uint8_t> data = Square(frames, 2);
        std::ofstream file(name, std::ios::binary);
        const auto put32 = [&file](size_t value) {
            const auto number = static_cast<uint32_t>(value);
            file.write(reinterpret_cast<const char*>(&number), 4);
        };
        file << "RIFF";
        put32(36 + data.size());
        file << "WAVEfmt ";
        put32(16);
        put32(1 | 2 << 16);  // PCM, two channels
        put32(44100);
        put32(size_t{44100} * 4);
        put32(4 | 16 << 16);
        file << "data";
        put32(data.size());
        file.write(reinterpret_cast<const char*>(data.data()),
                   static_cast<std::streamsize>(data.size()));
    }

private:
    fs::path folder;
    fs::path oldFolder;
};

using SoundBuffers = Mixed;
using Music = Mixed;

TEST_F(SoundBuffers, SoundAtTheirVolumeAndEndByThemselves) {
    ASSERT_FALSE(platform::OpenSoundDevice());
    const std::vector<uint8_t> wave = Square(4410, 1);
    const platform::PcmFormat format = {1, 22050, 16};
    auto* full = platform::CreateSoundBuffer(format, wave.data(), wave.size());
    auto* quiet = platform::DuplicateSoundBuffer(full);
    ASSERT_TRUE(full != nullptr && quiet != nullptr);
    platform::SetBufferVolume(quiet, -930);
    EXPECT_FALSE(platform::PlayBuffer(quiet));
    EXPECT_TRUE(platform::IsPlaying(quiet));
    EXPECT_FALSE(platform::IsPlaying(full)) << "each copy plays by itself";
    Sleep(400);
    EXPECT_FALSE(platform::IsPlaying(quiet)) << "0.2 s of sound must have ended";
    platform::ReleaseSoundBuffer(full);
    platform::ReleaseSoundBuffer(quiet);
    platform::CloseSoundDevice();
    EXPECT_NEAR(Peak(), kLevel * std::pow(10.0, -930 / 2000.0), kLevel * 0.01);
}

TEST_F(SoundBuffers, AMonoByteWaveSoundsOnBothSidesForItsTime) {
    ASSERT_FALSE(platform::OpenSoundDevice());
    std::vector<uint8_t> wave(8000);
    for (size_t i = 0; i < wave.size(); ++i) {
        wave[i] = i % 40 < 20 ? 192 : 64;
    }
    auto* buffer = platform::CreateSoundBuffer({1, 8000, 8}, wave.data(), wave.size() / 4);
    ASSERT_NE(buffer, nullptr);
    platform::PlayBuffer(buffer);
    Sleep(500);
    platform::ReleaseSoundBuffer(buffer);
    platform::CloseSoundDevice();
    const std::vector<int16_t> samples = Samples();
    int sounding = 0;
    for (size_t i = 0; i + 1 < samples.size(); i += 2) {
        ASSERT_EQ(samples[i], samples[i + 1]) << "left and right differ at " << i;
        sounding += std::abs(samples[i]) > 1000 ? 1 : 0;
    }
    EXPECT_NEAR(sounding, 11025, 882) << "a quarter of a second must sound";
}

TEST_F(SoundBuffers, AllEffectsWithAllTheirCopiesPlayAtOnce) {
    ASSERT_FALSE(platform::OpenSoundDevice());
    const std::vector<uint8_t> wave = Square(44100, 1);
    std::vector<platform::SoundBufferHandle> buffers;
    for (int effect = 0; effect < 17; ++effect) {
        buffers.push_back(platform::CreateSoundBuffer({1, 44100, 16}, wave.data(), wave.size()));
        for (int copy = 1; copy < 10; ++copy) {
            buffers.push_back(platform::DuplicateSoundBuffer(buffers.back()));
        }
    }
    for (auto* buffer : buffers) {
        EXPECT_FALSE(platform::PlayBuffer(buffer));
    }
    EXPECT_TRUE(std::all_of(buffers.begin(), buffers.end(), platform::IsPlaying));
    platform::StopBuffer(buffers[3]);
    EXPECT_FALSE(platform::IsPlaying(buffers[3]));
    EXPECT_TRUE(platform::IsPlaying(buffers[2]) && platform::IsPlaying(buffers[4]));
    for (auto* buffer : buffers) {
        platform::ReleaseSoundBuffer(buffer);
    }
    EXPECT_EQ(platform::CreateSoundBuffer({3, 44100, 16}, wave.data(), wave.size()), nullptr);
    EXPECT_EQ(platform::CreateSoundBuffer({1, 44100, 16}, wave.data(), 0), nullptr);
    platform::CloseSoundDevice();
}

TEST_F(SoundBuffers, WithoutADeviceNothingOpens) {
    setenv("SDL_AUDIODRIVER", "nosuchdriver", 1);
    EXPECT_TRUE(platform::OpenSoundDevice());
    const platform::MusicGraph graph;
    EXPECT_FALSE(graph.IsReady());
}

TEST_F(Music, PlaysToItsEndAndTellsAnEndFromAStop) {
    WriteWave("Music/Track.wav", 44100 * 3 / 10);
    platform::MusicGraph graph;
    ASSERT_TRUE(graph.IsReady());
    graph.SetVolume(-2500);
    ASSERT_FALSE(graph.Open("Music\\Track.wav"));
    ASSERT_FALSE(graph.Run());
    EXPECT_FALSE(graph.WaitForCompletion(50)) << "0.3 s of music ended too early";
    EXPECT_TRUE(graph.WaitForCompletion(2000));
    ASSERT_FALSE(graph.Open("Music\\Track.wav"));
    ASSERT_FALSE(graph.Run());
    graph.Stop();
    EXPECT_FALSE(graph.WaitForCompletion(50)) << "a track that was stopped has not ended";
}

TEST_F(Music, ItsVolumeIsInDecibelsAndAPauseHoldsIt) {
    WriteWave("Music/Track.wav", 44100 * 3 / 10);
    {
        platform::MusicGraph graph;
        graph.SetVolume(-1200);
        ASSERT_FALSE(graph.Open("Music\\Track.wav"));
        ASSERT_FALSE(graph.Run());
        Sleep(60);
        graph.Pause();
        EXPECT_FALSE(graph.WaitForCompletion(600)) << "a paused track must not end";
        ASSERT_FALSE(graph.Run());
        EXPECT_TRUE(graph.WaitForCompletion(2000));
    }
    EXPECT_NEAR(Peak(), kLevel * std::pow(10.0, -1200 / 2000.0), kLevel * 0.01);
}

TEST_F(Music, AWaitEndsWhenInterrupted) {
    WriteWave("Music/Track.wav", 44100 * 2);
    platform::MusicGraph graph;
    ASSERT_FALSE(graph.Open("Music\\Track.wav"));
    ASSERT_FALSE(graph.Run());
    const auto start = steady_clock::now();
    std::thread other([&graph] {
        Sleep(50);
        graph.Interrupt();
    });
    EXPECT_FALSE(graph.WaitForCompletion(1500));
    EXPECT_LT(steady_clock::now() - start, milliseconds(200));
    other.join();
}

TEST_F(Music, WhatIsNoMusicFailsToOpen) {
    fs::create_directories("Music/Folder");
    std::ofstream("Music/notes.txt") << "not a note of music in here\n";
    std::ofstream("Music/empty.ogg") << "";
    std::ofstream("Music/broken.mp3") << std::string(5000, '\xFF');
    std::ofstream("Music/broken.ogg") << "OggS" << std::string(5000, '\0');
    std::ofstream("Music/broken.wav") << "RIFF" << std::string(4, '\x7F') << "WAVEdata";
    mkfifo("Music/pipe", 0600);
    platform::MusicGraph graph;
    for (const char* name : {"Folder", "notes.txt", "empty.ogg", "broken.mp3", "broken.ogg",
                             "broken.wav", "pipe", "missing.ogg"}) {
        EXPECT_TRUE(graph.Open(std::string("Music\\") + name)) << name;
        EXPECT_TRUE(graph.Run()) << name;
    }
    WriteWave("Music/Track.wav", 4410);
    EXPECT_FALSE(graph.Open("Music\\Track.wav")) << "music after all that is not";
}

class Controllers : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER), 0);
        if (SDL_NumJoysticks() > 0) {
            GTEST_SKIP() << "a real controller is attached";
        }
    }
    void TearDown() override {
        platform::CloseController();
        if (index >= 0) {
            SDL_JoystickClose(stick);
            SDL_JoystickDetachVirtual(index);
        }
        SDL_QuitSubSystem(SDL_INIT_JOYSTICK | SDL_INIT_GAMECONTROLLER);
    }
    void Attach(SDL_JoystickType type, int axes, int buttons, int hats) {
        index = SDL_JoystickAttachVirtual(type, axes, buttons, hats);
        ASSERT_GE(index, 0) << SDL_GetError();
        stick = SDL_JoystickOpen(index);
    }
    platform::ControllerState Read() {
        platform::ControllerState state;
        EXPECT_FALSE(platform::ReadController(state));
        return state;
    }

    int index = -1;
    SDL_Joystick* stick = nullptr;
};

TEST_F(Controllers, NoneAttachedIsNoError) {
    bool found = true;
    EXPECT_EQ(platform::OpenController(found), 0);
    EXPECT_FALSE(found);
}

TEST_F(Controllers, APadGivesItsStickItsCrossAndItsButtons) {
    Attach(SDL_JOYSTICK_TYPE_GAMECONTROLLER, SDL_CONTROLLER_AXIS_MAX, SDL_CONTROLLER_BUTTON_MAX, 0);
    bool found = false;
    ASSERT_EQ(platform::OpenController(found), 0);
    ASSERT_TRUE(found);
    EXPECT_FALSE(platform::ControllerHasForceFeedback());
    SDL_JoystickSetVirtualAxis(stick, SDL_CONTROLLER_AXIS_LEFTX, -32768);
    SDL_JoystickSetVirtualAxis(stick, SDL_CONTROLLER_AXIS_LEFTY, 16384);
    SDL_JoystickSetVirtualButton(stick, SDL_CONTROLLER_BUTTON_B, 1);
    platform::ControllerState state = Read();
    EXPECT_EQ(state.lX, -1000);
    EXPECT_NEAR(state.lY, 500, 1);
    EXPECT_FALSE(state.buttons[0]);
    EXPECT_TRUE(state.buttons[1]);
    SDL_JoystickSetVirtualAxis(stick, SDL_CONTROLLER_AXIS_LEFTX, 2000);
    SDL_JoystickSetVirtualButton(stick, SDL_CONTROLLER_BUTTON_DPAD_UP, 1);
    state = Read();
    EXPECT_EQ(state.lX, 0) << "a stick near its centre must count as centred";
    EXPECT_EQ(state.lY, -1000) << "the cross goes before the stick";
}

TEST_F(Controllers, APlainJoystickGivesItsAxesItsHatAndItsButtons) {
    Attach(SDL_JOYSTICK_TYPE_UNKNOWN, 2, 3, 1);
    bool found = false;
    ASSERT_EQ(platform::OpenController(found), 0);
    ASSERT_TRUE(found);
    SDL_JoystickSetVirtualAxis(stick, 1, 32767);
    SDL_JoystickSetVirtualHat(stick, 0, SDL_HAT_RIGHT);
    SDL_JoystickSetVirtualButton(stick, 0, 1);
    const platform::ControllerState state = Read();
    EXPECT_EQ(state.lX, 1000);
    EXPECT_EQ(state.lY, 1000);
    EXPECT_TRUE(state.buttons[0]);
    EXPECT_FALSE(state.buttons[1]);
}

TEST_F(Controllers, AnUnpluggedOneIsPickedUpAgain) {
    Attach(SDL_JOYSTICK_TYPE_GAMECONTROLLER, SDL_CONTROLLER_AXIS_MAX, SDL_CONTROLLER_BUTTON_MAX, 0);
    bool found = false;
    ASSERT_EQ(platform::OpenController(found), 0);
    SDL_JoystickSetVirtualButton(stick, 0, 1);
    EXPECT_TRUE(Read().buttons[0]);
    SDL_JoystickClose(stick);
    SDL_JoystickDetachVirtual(index);
    platform::ControllerState state;
    EXPECT_TRUE(platform::ReadController(state));
    EXPECT_TRUE(platform::ReadController(state));
    Attach(SDL_JOYSTICK_TYPE_GAMECONTROLLER, SDL_CONTROLLER_AXIS_MAX, SDL_CONTROLLER_BUTTON_MAX, 0);
    EXPECT_FALSE(Read().buttons[0]);
    SDL_JoystickSetVirtualButton(stick, 0, 1);
    EXPECT_TRUE(Read().buttons[0]);
}

}  // namespace
