#pragma once

// Reads the fields of a level file. Every field stands after a colon; what stands before the colon
// is a label for people. The reader remembers the first fault, with its line, and from then on
// hands out safe values, so that callers check once at the end of each record.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class LevelText {
public:
    static constexpr size_t kMaxLine = 259;  // characters of a text field

    // `text` with line feeds only.
    explicit LevelText(std::string text) : text(std::move(text)) {}

    // The rest of the line after the next colon, a leading blank included; at most kMaxLine
    // characters, what is longer counts as label text of the next field. Where no colon follows,
    // the line is empty: the field after it reports that.
    std::string ReadLine();
    // The integer after the next colon; outside [minimum, maximum] is a fault that names `what` and
    // gives `minimum`.
    int32_t ReadInt(const char* what, int32_t minimum, int32_t maximum);
    // One to `maximumCount` integers after the next colon, separated by commas. Blanks may follow a
    // comma, none may stand before it. The character that ends the list is consumed, and so is a
    // comma that follows the last possible value.
    std::vector<int32_t> ReadIntList(const char* what, size_t maximumCount);
    // Skips past the next colon.
    void SkipToColon(const char* what);
    // The next number at the current position, blanks and line ends before it skipped.
    float ReadFloat(const char* what);

    bool HasFailed() const { return !fault.empty(); }
    // Keeps the first reason given, with the line of the field read last.
    void Fail(const std::string& reason);
    // "line N: reason".
    const std::string& Fault() const { return fault; }

private:
    bool FindColon();
    bool TakeComma();
    void SkipBlanks();
    // The whole number at the current position.
    int32_t ParseInt(const char* what, int32_t minimum, int32_t maximum);

    std::string text;
    size_t position = 0;
    size_t fieldStart = 0;  // where the field read last begins: its line is what a fault names
    std::string fault;
};
