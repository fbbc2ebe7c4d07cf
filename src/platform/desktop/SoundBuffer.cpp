#include "platform/SoundBuffer.h"

#include <SDL_mixer.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <vector>

#include "platform/desktop/AudioDevice.h"

namespace platform {

namespace {

constexpr int kChannelBlock = 160;  // all effects of the game with ten copies each, and some more

// PCM data in the format of the device, shared by a buffer and its duplicates.
struct Samples {
    std::vector<uint8_t> bytes;
    Mix_Chunk chunk = {};
};

std::vector<bool> channelTaken;  // mixer channels; each belongs to one buffer

int TakeChannel() {
    for (size_t i = 0; i < channelTaken.size(); ++i) {
        if (!channelTaken[i]) {
            channelTaken[i] = true;
            Mix_Volume(static_cast<int>(i), MIX_MAX_VOLUME);
            return static_cast<int>(i);
        }
    }
    channelTaken.resize(channelTaken.size() + kChannelBlock);
    Mix_AllocateChannels(static_cast<int>(channelTaken.size()));
    return TakeChannel();
}

// SDL's audio streams lose the end of what they resample, so the whole wave is converted at once.
// True = failure.
bool BuildConverter(const PcmFormat& format, SDL_AudioCVT& converter) {
    int rate = 0;
    Uint16 sampleFormat = 0;
    int channels = 0;
    return Mix_QuerySpec(&rate, &sampleFormat, &channels) == 0 ||
           SDL_BuildAudioCVT(&converter, format.bitsPerSample == 8 ? AUDIO_U8 : AUDIO_S16LSB,
                             static_cast<Uint8>(format.channels), format.samplesPerSecond,
                             sampleFormat, static_cast<Uint8>(channels), rate) < 0;
}

// Null when the data cannot be played.
std::shared_ptr<Samples> Convert(const PcmFormat& format, const uint8_t* samples, size_t size) {
    const bool known = (format.channels == 1 || format.channels == 2) &&
                       (format.bitsPerSample == 8 || format.bitsPerSample == 16) &&
                       format.samplesPerSecond > 0;
    SDL_AudioCVT converter = {};
    if (!known || BuildConverter(format, converter)) {
        return nullptr;
    }
    const size_t frame = static_cast<size_t>(format.channels) * format.bitsPerSample / 8;
    const size_t whole = size - size % frame;
    if (whole == 0 || whole > static_cast<size_t>(INT_MAX / std::max(converter.len_mult, 1))) {
        return nullptr;
    }
    auto converted = std::make_shared<Samples>();
    converted->bytes.resize(whole * std::max(converter.len_mult, 1));
    std::memcpy(converted->bytes.data(), samples, whole);
    converter.buf = converted->bytes.data();
    converter.len = static_cast<int>(whole);
    converter.len_cvt = converter.len;  // what it stays when nothing needs converting
    if (SDL_ConvertAudio(&converter) != 0 || converter.len_cvt == 0) {
        return nullptr;
    }
    converted->bytes.resize(converter.len_cvt);
    converted->bytes.shrink_to_fit();
    converted->chunk.abuf = converted->bytes.data();
    converted->chunk.alen = converter.len_cvt;
    converted->chunk.volume = MIX_MAX_VOLUME;
    return converted;
}

}  // namespace

struct SoundBuffer {
    std::shared_ptr<Samples> samples;
    int channel = 0;  // of the mixer, this buffer's own
};

bool OpenSoundDevice() {
    return AcquireAudioDevice();
}

void CloseSoundDevice() {
    channelTaken.clear();
    Mix_AllocateChannels(0);
    ReleaseAudioDevice();
}

SoundBufferHandle CreateSoundBuffer(const PcmFormat& format, const uint8_t* samples, size_t size) {
    std::shared_ptr<Samples> converted = Convert(format, samples, size);
    return converted ? new SoundBuffer{std::move(converted), TakeChannel()} : nullptr;
}

SoundBufferHandle DuplicateSoundBuffer(SoundBufferHandle original) {
    auto* copy = new SoundBuffer{original->samples, TakeChannel()};
    Mix_Volume(copy->channel, Mix_Volume(original->channel, -1));
    return copy;
}

void ReleaseSoundBuffer(SoundBufferHandle buffer) {
    Mix_HaltChannel(buffer->channel);
    channelTaken[buffer->channel] = false;
    delete buffer;
}

bool IsPlaying(SoundBufferHandle buffer) {
    return Mix_Playing(buffer->channel) != 0;
}

bool PlayBuffer(SoundBufferHandle buffer) {
    return Mix_PlayChannel(buffer->channel, &buffer->samples->chunk, 0) < 0;
}

void StopBuffer(SoundBufferHandle buffer) {
    Mix_HaltChannel(buffer->channel);
}

void SetBufferVolume(SoundBufferHandle buffer, int hundredthsOfDecibel) {
    Mix_Volume(buffer->channel, MixerVolume(hundredthsOfDecibel));
}

}  // namespace platform
