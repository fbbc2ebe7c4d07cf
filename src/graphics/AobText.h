#pragma once

// A position in the bytes of a model file. Every step stays within the bytes: what would read past
// their end sets `Failed`, and everything read from then on is empty.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

class AobText {
public:
    explicit AobText(std::string_view bytes) : bytes(bytes) {}

    bool Failed() const { return failed; }
    size_t Position() const { return position; }
    void MoveTo(size_t newPosition);

    // Moves behind the next occurrence of the keyword; what stands before it is skipped unread.
    // Returns false, and fails, when there is none.
    bool Find(std::string_view keyword);
    // Moves to the start of the next occurrence.
    bool FindStart(std::string_view keyword);
    // Moves behind the keyword when it stands right here; fails otherwise.
    bool Expect(std::string_view keyword);
    void Skip(size_t characters);

    // A run of digits, 0 when it is empty; larger numbers come back as kLargest.
    int32_t Unsigned();
    // A decimal number, with or without a fraction and an exponent, 0 when there is none. The
    // character that follows it is skipped too. Not finite when no float can hold it.
    float Number();
    std::array<float, 4> FourNumbers();
    // Up to the next white space.
    std::string_view Word();
    // Up to the next line feed, which must come.
    std::string_view Line();

    static constexpr int32_t kLargest = 0x7FFFFFFF;

private:
    size_t DigitsFrom(size_t start) const;
    size_t NumberLength() const;

    std::string_view bytes;
    size_t position = 0;
    bool failed = false;
};
