#include "audio/Sound.h"

#include <algorithm>

#include "audio/WaveFile.h"

namespace {

constexpr uint16_t kPcmFormatTag = 1;

platform::SoundBufferHandle LoadSoundBuffer(const char* name) {
    WaveData wave;
    if (FindWaveResource(name, wave) || wave.format.formatTag != kPcmFormatTag) {
        return nullptr;
    }
    platform::PcmFormat format;
    format.channels = wave.format.channels;
    format.samplesPerSecond = static_cast<int>(wave.format.samplesPerSecond);
    format.bitsPerSample = wave.format.bitsPerSample;
    return platform::CreateSoundBuffer(format, wave.samples, wave.size);
}

}  // namespace

std::unique_ptr<Sound> Sound::Create(const char* name, uint32_t count) {
    count = std::max(count, 1U);
    std::unique_ptr<Sound> sound(new Sound);
    sound->buffers.reserve(count);
    while (sound->buffers.size() < count) {
        platform::SoundBufferHandle buffer =
            sound->buffers.empty() ? nullptr : platform::DuplicateSoundBuffer(sound->buffers[0]);
        if (buffer == nullptr) {
            buffer = LoadSoundBuffer(name);
        }
        if (buffer == nullptr) {
            return nullptr;  // what was made so far goes with it
        }
        sound->buffers.push_back(buffer);
    }
    return sound;
}

Sound::~Sound() {
    for (const platform::SoundBufferHandle buffer : buffers) {
        platform::ReleaseSoundBuffer(buffer);
    }
}

bool Sound::Play() {
    const platform::SoundBufferHandle buffer = GetFreeBuffer();
    return buffer == nullptr || platform::PlayBuffer(buffer);
}

void Sound::SetVolume(int hundredthsOfDecibel) {
    for (const platform::SoundBufferHandle buffer : buffers) {
        platform::SetBufferVolume(buffer, hundredthsOfDecibel);
    }
}

// The buffer used last serves again while it is idle. An effect asked for again while it still
// sounds moves on by one, and cuts off the copy it finds playing there: with ten buffers ten
// copies overlap. A lone buffer is never restarted.
platform::SoundBufferHandle Sound::GetFreeBuffer() {
    if (!platform::IsPlaying(buffers[current])) {
        return buffers[current];
    }
    if (buffers.size() == 1) {
        return nullptr;
    }
    current = (current + 1) % BufferCount();
    if (platform::IsPlaying(buffers[current])) {
        platform::StopBuffer(buffers[current]);
    }
    return buffers[current];
}
