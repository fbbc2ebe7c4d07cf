#include "audio/WaveFile.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Number(uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        text += static_cast<char>(value >> (8 * i));
    }
    return text;
}

std::string Chunk(const std::string& code, const std::string& body) {
    return code + Number(static_cast<uint32_t>(body.size()), 4) + body +
           (body.size() % 2 == 1 ? std::string(1, '\0') : "");
}

std::string Riff(const std::string& chunks) {
    return Chunk("RIFF", "WAVE" + chunks);
}

// Mono, 11025 samples a second, 8 bits.
std::string Format() {
    return Number(1, 2) + Number(1, 2) + Number(11025, 4) + Number(11025, 4) + Number(1, 2) +
           Number(8, 2);
}

bool Parse(const std::string& bytes, WaveData& wave) {
    return ParseWave(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size(), wave);
}

TEST(WaveFile, FindsFormatAndDataBehindOtherChunksOfOddLength) {
    const std::string bytes = Riff(Chunk("LIST", "abc") + Chunk("fmt ", Format()) +
                                   Chunk("fact", "x") + Chunk("data", "samples"));
    WaveData wave;
    ASSERT_FALSE(Parse(bytes, wave)) << "the pad byte after an odd chunk must be skipped";
    EXPECT_EQ(wave.format.formatTag, 1);
    EXPECT_EQ(wave.format.channels, 1);
    EXPECT_EQ(wave.format.samplesPerSecond, 11025U);
    EXPECT_EQ(wave.format.bitsPerSample, 8);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(wave.samples), wave.size), "samples");
}

TEST(WaveFile, TakesTheFirstOfEachChunkInAnyOrder) {
    const std::string other = Number(2, 2) + Format().substr(2);
    const std::string bytes = Riff(Chunk("data", "first!") + Chunk("data", "second") +
                                   Chunk("fmt ", Format()) + Chunk("fmt ", other));
    WaveData wave;
    ASSERT_FALSE(Parse(bytes, wave));
    EXPECT_EQ(wave.size, 6U);
    EXPECT_EQ(wave.samples[0], 'f');
    EXPECT_EQ(wave.format.formatTag, 1);
}

TEST(WaveFile, RefusesWhatIsNoWaveOrLacksAChunk) {
    const std::string data = Chunk("data", "samples!");
    WaveData wave;
    EXPECT_TRUE(ParseWave(nullptr, 0, wave));
    EXPECT_TRUE(Parse("RIFF", wave));
    EXPECT_TRUE(Parse(Chunk("RIFX", "WAVE" + Chunk("fmt ", Format()) + data), wave));
    EXPECT_TRUE(Parse(Chunk("RIFF", "AVI " + Chunk("fmt ", Format()) + data), wave));
    EXPECT_TRUE(Parse(Riff(data), wave)) << "no format";
    EXPECT_TRUE(Parse(Riff(Chunk("fmt ", Format())), wave)) << "no data";
    EXPECT_EQ(wave.samples, nullptr) << "a failure must leave nothing behind";
    EXPECT_TRUE(Parse(Riff(Chunk("fmt ", Format().substr(0, 12)) + data), wave))
        << "a format chunk of 12 bytes";
    EXPECT_FALSE(Parse(Riff(Chunk("fmt ", Format().substr(0, 14)) + data), wave));
    EXPECT_EQ(wave.format.bitsPerSample, 0) << "the short format has no bits of a sample";
}

TEST(WaveFile, StaysWithinTheRiffLengthAndTheMemory) {
    const std::string format = Chunk("fmt ", Format());
    std::string bytes = Riff(format) + Chunk("data", "samples!");
    WaveData wave;
    EXPECT_TRUE(Parse(bytes, wave)) << "the data lies behind the end that the header tells";

    const std::string whole = Riff(format + Chunk("data", "samples!"));
    for (size_t length = 0; length < whole.size(); ++length) {
        const std::string cut = whole.substr(0, length);
        EXPECT_TRUE(Parse(cut, wave)) << "cut to " << length << " bytes";
    }
    bytes = whole;
    bytes.replace(whole.size() - 12, 4, Number(0xFFFFFFFF, 4));
    EXPECT_TRUE(Parse(bytes, wave)) << "a chunk longer than the memory";
    bytes = Riff("junk" + Number(0xFFFFFFFF, 4));
    EXPECT_TRUE(Parse(bytes, wave)) << "the walk must end";
}

}  // namespace
