#pragma once

// Packed little-endian records, field by field: what the program's binary files consist of.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

class ByteWriter {
public:
    template <typename Value>
    void Put(Value value) {
        static_assert(sizeof(Value) <= 4);
        uint32_t bits = 0;
        std::memcpy(&bits, &value, sizeof value);
        for (size_t i = 0; i < sizeof value; ++i) {
            bytes.push_back(static_cast<uint8_t>(bits >> (8 * i)));
        }
    }
    void PutBytes(const void* data, size_t size) {
        const auto* first = static_cast<const uint8_t*>(data);
        bytes.insert(bytes.end(), first, first + size);
    }
    const std::vector<uint8_t>& Bytes() const { return bytes; }

private:
    std::vector<uint8_t> bytes;
};

// Reads past the end give zeros and are remembered.
class ByteReader {
public:
    explicit ByteReader(const std::vector<uint8_t>& bytes) : bytes(bytes) {}

    template <typename Value>
    Value Get() {
        static_assert(sizeof(Value) <= 4);
        uint32_t bits = 0;
        for (size_t i = 0; i < sizeof(Value); ++i) {
            bits |= static_cast<uint32_t>(NextByte()) << (8 * i);
        }
        Value value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    uint8_t NextByte() {
        if (position >= bytes.size()) {
            cutShort = true;
            return 0;
        }
        return bytes[position++];
    }
    bool AtEnd() const { return position >= bytes.size(); }
    bool IsCutShort() const { return cutShort; }

private:
    const std::vector<uint8_t>& bytes;
    size_t position = 0;
    bool cutShort = false;
};
