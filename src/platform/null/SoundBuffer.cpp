#include "platform/SoundBuffer.h"

#include "platform/Resources.h"
#include "platform/null/NullMedia.h"

namespace platform {

bool OpenSoundDevice() {
    null::Media().soundDeviceOpen = null::Media().soundDeviceWorks;
    return !null::Media().soundDeviceOpen;
}

void CloseSoundDevice() {
    null::Media().soundDeviceOpen = false;
}

SoundBufferHandle CreateSoundBuffer(const PcmFormat& format, const uint8_t* samples, size_t size) {
    const bool playable = (format.channels == 1 || format.channels == 2) &&
                          (format.bitsPerSample == 8 || format.bitsPerSample == 16) &&
                          format.samplesPerSecond > 0 && size > 0;
    if (!null::Media().soundDeviceOpen || !playable) {
        return nullptr;
    }
    auto buffer = std::make_unique<SoundBuffer>();
    buffer->format = format;
    buffer->samples = samples;
    buffer->size = size;
    return null::Media().soundBuffers.emplace_back(std::move(buffer)).get();
}

SoundBufferHandle DuplicateSoundBuffer(SoundBufferHandle original) {
    SoundBufferHandle copy = CreateSoundBuffer(original->format, original->samples, original->size);
    if (copy != nullptr) {
        copy->duplicate = true;
        copy->volume = original->volume;
    }
    return copy;
}

void ReleaseSoundBuffer(SoundBufferHandle buffer) {
    std::erase_if(null::Media().soundBuffers,
                  [buffer](const auto& held) { return held.get() == buffer; });
}

bool IsPlaying(SoundBufferHandle buffer) {
    return buffer->playing;
}

bool PlayBuffer(SoundBufferHandle buffer) {
    buffer->playing = true;
    ++buffer->plays;
    return false;
}

void StopBuffer(SoundBufferHandle buffer) {
    buffer->playing = false;
    ++buffer->stops;
}

void SetBufferVolume(SoundBufferHandle buffer, int hundredthsOfDecibel) {
    buffer->volume = hundredthsOfDecibel;
}

namespace null {

std::vector<SoundBuffer*> SoundCopies(const char* resource) {
    const Resource wave = FindResource(resource, "WAVE");
    std::vector<SoundBuffer*> copies;
    for (const auto& buffer : Media().soundBuffers) {
        if (buffer->samples >= wave.data && buffer->samples < wave.data + wave.size) {
            copies.push_back(buffer.get());
        }
    }
    return copies;
}

int SoundPlays(const char* resource) {
    int plays = 0;
    for (const SoundBuffer* buffer : SoundCopies(resource)) {
        plays += buffer->plays;
    }
    return plays;
}

}  // namespace null

}  // namespace platform
