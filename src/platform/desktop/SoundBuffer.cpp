#include "platform/SoundBuffer.h"

#include <SDL_mixer.h>

#include <climits>
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

using AudioStream = std::unique_ptr<SDL_AudioStream, decltype(&SDL_FreeAudioStream)>;

AudioStream MakeConverter(const PcmFormat& format) {
    int rate = 0;
    Uint16 sampleFormat = 0;
    int channels = 0;
    SDL_AudioStream* stream = nullptr;
    if (Mix_QuerySpec(&rate, &sampleFormat, &channels) != 0) {
        stream = SDL_NewAudioStream(format.bitsPerSample == 8 ? AUDIO_U8 : AUDIO_S16LSB,
                                    static_cast<Uint8>(format.channels), format.samplesPerSecond,
                                    sampleFormat, static_cast<Uint8>(channels), rate);
    }
    return {stream, &SDL_FreeAudioStream};
}

// Null when the data cannot be played.
std::shared_ptr<Samples> Convert(const PcmFormat& format, const uint8_t* samples, size_t size) {
    const bool known = (format.channels == 1 || format.channels == 2) &&
                       (format.bitsPerSample == 8 || format.bitsPerSample == 16) &&
                       format.samplesPerSecond > 0;
    if (!known) {
        return nullptr;
    }
    const size_t frame = static_cast<size_t>(format.channels) * format.bitsPerSample / 8;
    const size_t whole = size - size % frame;
    if (whole == 0 || whole > INT_MAX / 16) {
        return nullptr;
    }
    const AudioStream stream = MakeConverter(format);
    if (!stream || SDL_AudioStreamPut(stream.get(), samples, static_cast<int>(whole)) != 0 ||
        SDL_AudioStreamFlush(stream.get()) != 0) {
        return nullptr;
    }
    auto converted = std::make_shared<Samples>();
    converted->bytes.resize(SDL_AudioStreamAvailable(stream.get()));
    const int length = static_cast<int>(converted->bytes.size());
    if (length == 0 ||
        SDL_AudioStreamGet(stream.get(), converted->bytes.data(), length) != length) {
        return nullptr;
    }
    converted->chunk.abuf = converted->bytes.data();
    converted->chunk.alen = length;
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
