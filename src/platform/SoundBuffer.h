#pragma once

// Sound buffers: each holds PCM data and plays it once at a time. Duplicates share the data. All
// calls belong to the main thread; mixing runs in threads of the platform's own.

#include <cstddef>
#include <cstdint>

namespace platform {

struct PcmFormat {
    int channels = 1;  // 1 or 2
    int samplesPerSecond = 22050;
    int bitsPerSample = 16;  // 8 (unsigned) or 16 (signed)
};

struct SoundBuffer;
using SoundBufferHandle = SoundBuffer*;

// True = failure: no sound device.
bool OpenSoundDevice();
void CloseSoundDevice();

// Copies the samples. Null on failure (no device, a format that it cannot play, no memory).
SoundBufferHandle CreateSoundBuffer(const PcmFormat& format, const uint8_t* samples, size_t size);
SoundBufferHandle DuplicateSoundBuffer(SoundBufferHandle original);
void ReleaseSoundBuffer(SoundBufferHandle buffer);

bool IsPlaying(SoundBufferHandle buffer);
bool PlayBuffer(SoundBufferHandle buffer);  // from its start; true = failure
void StopBuffer(SoundBufferHandle buffer);
// Hundredths of a decibel, 0 (full) down to -10000 (silent).
void SetBufferVolume(SoundBufferHandle buffer, int hundredthsOfDecibel);

}  // namespace platform
