#include "platform/desktop/AudioDevice.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr int kSamplesPerSecond = 44100;
constexpr int kChannels = 2;
constexpr int kBlockSamples = 1024;  // 23 ms: an effect sounds within two frames
constexpr int kSilent = -10000;      // hundredths of a decibel

int users = 0;

}  // namespace

bool AcquireAudioDevice() {
    // No changes allowed: where the hardware wants another format SDL converts, so that effects
    // are always prepared for this one.
    if (users == 0 && Mix_OpenAudioDevice(kSamplesPerSecond, AUDIO_S16SYS, kChannels, kBlockSamples,
                                          nullptr, 0) != 0) {
        return true;
    }
    ++users;
    return false;
}

void ReleaseAudioDevice() {
    if (users > 0 && --users == 0) {
        Mix_CloseAudio();
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
    }
}

int MixerVolume(int hundredthsOfDecibel) {
    if (hundredthsOfDecibel <= kSilent) {
        return 0;
    }
    const double factor = std::pow(10.0, std::min(hundredthsOfDecibel, 0) / 2000.0);
    return static_cast<int>(std::lround(factor * MIX_MAX_VOLUME));
}

}  // namespace platform
