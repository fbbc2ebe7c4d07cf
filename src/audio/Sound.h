#pragma once

// One effect with several buffers, so that copies of it can sound at once.

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/SoundBuffer.h"

class Sound {
public:
    // Makes the effect of that wave resource with `count` buffers (at least 1). Null when there is
    // no sound device, no such resource or no memory.
    static std::unique_ptr<Sound> Create(const char* name, uint32_t count);
    ~Sound();
    Sound(const Sound&) = delete;
    Sound& operator=(const Sound&) = delete;

    // Plays it once from the start. True = failure: no buffer is free.
    bool Play();
    // Hundredths of a decibel, 0 full, for every buffer.
    void SetVolume(int hundredthsOfDecibel);

    uint32_t BufferCount() const { return static_cast<uint32_t>(buffers.size()); }

private:
    Sound() = default;
    platform::SoundBufferHandle GetFreeBuffer();

    uint32_t current = 0;  // the buffer used last
    std::vector<platform::SoundBufferHandle>
        buffers;  // 0 made from the wave, the others duplicates
};
