#include "audio/WaveFile.h"

#include <cstring>

#include "platform/Resources.h"

namespace {

constexpr size_t kRiffHeaderSize = 12;   // "RIFF", a length, "WAVE"
constexpr size_t kChunkHeaderSize = 8;   // a four-character code, a length
constexpr uint32_t kMinFormatSize = 14;  // the short format chunk, without the bits of a sample
constexpr uint32_t kPcmFormatSize = 16;

uint16_t Read16(const uint8_t* p) {
    return static_cast<uint16_t>(p[0] | p[1] << 8);
}

uint32_t Read32(const uint8_t* p) {
    return p[0] | p[1] << 8 | p[2] << 16 | static_cast<uint32_t>(p[3]) << 24;
}

bool HasCode(const uint8_t* p, const char* code) {
    return std::memcmp(p, code, 4) == 0;
}

WaveFormat ReadFormat(const uint8_t* body, uint32_t length) {
    WaveFormat format;
    format.formatTag = Read16(body);
    format.channels = Read16(body + 2);
    format.samplesPerSecond = Read32(body + 4);
    format.bitsPerSample = length >= kPcmFormatSize ? Read16(body + 14) : uint16_t{0};
    return format;
}

}  // namespace

bool ParseWave(const uint8_t* memory, size_t size, WaveData& wave) {
    wave = WaveData{};
    if (memory == nullptr || size < kRiffHeaderSize || !HasCode(memory, "RIFF") ||
        !HasCode(memory + 8, "WAVE")) {
        return true;
    }
    // No chunk begins at or behind the RIFF length counted from byte 8.
    const uint64_t walkEnd = uint64_t{8} + Read32(memory + 4);
    bool haveFormat = false;
    uint64_t at = kRiffHeaderSize;
    while (at < walkEnd && at + kChunkHeaderSize <= size) {
        const uint8_t* chunk = memory + at;
        const uint32_t length = Read32(chunk + 4);
        const uint64_t bodyStart = at + kChunkHeaderSize;
        const bool isFormat = !haveFormat && HasCode(chunk, "fmt ");
        const bool isData = wave.samples == nullptr && HasCode(chunk, "data");
        if ((isFormat || isData) && bodyStart + length > size) {
            break;
        }
        if (isFormat) {
            if (length < kMinFormatSize) {
                break;
            }
            wave.format = ReadFormat(memory + bodyStart, length);
            haveFormat = true;
        } else if (isData) {
            wave.samples = memory + bodyStart;
            wave.size = length;
        }
        if (haveFormat && wave.samples != nullptr) {
            return false;
        }
        at = bodyStart + length + (length & 1);  // chunks begin at even places
    }
    wave = WaveData{};
    return true;
}

bool FindWaveResource(const char* name, WaveData& wave) {
    platform::Resource resource = platform::FindResource(name, "WAVE");
    if (resource.data == nullptr) {
        resource = platform::FindResource(name, "WAV");
    }
    return ParseWave(resource.data, resource.size, wave);
}
