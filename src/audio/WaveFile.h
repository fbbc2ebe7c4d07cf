#pragma once

// RIFF waves in memory.

#include <cstddef>
#include <cstdint>

struct WaveFormat {
    uint16_t formatTag = 0;  // 1 = uncompressed PCM
    uint16_t channels = 0;
    uint32_t samplesPerSecond = 0;
    uint16_t bitsPerSample = 0;  // 0 when the format chunk is the short one that lacks it
};

struct WaveData {
    WaveFormat format;
    const uint8_t* samples = nullptr;  // within the memory given
    size_t size = 0;                   // bytes
};

// Finds the first format chunk and the first data chunk. True = failure: not a wave, a format chunk
// under 14 bytes, a chunk missing or reaching past the memory.
bool ParseWave(const uint8_t* memory, size_t size, WaveData& wave);

// The wave resource of that name (type "WAVE", else "WAV"). True = failure.
bool FindWaveResource(const char* name, WaveData& wave);
