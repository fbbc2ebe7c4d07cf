#pragma once

// Reads the fields of a level file. Every field stands after a colon; what stands before the colon
// is a label for people. The reader remembers the first fault, with its line, and from then on
// hands out safe values, so that callers check once at the end of each record.

#include <cstdint>
#include <string>

class LevelText {
public:
    // `text` with line feeds only.
    explicit LevelText(std::string text) : text(std::move(text)) {}

    // The rest of the line after the next colon, at most 259 characters.
    std::string ReadLine();
    // The integer after the next colon; outside [minimum, maximum] is a fault that names `what`.
    int32_t ReadInt(const char* what, int32_t minimum, int32_t maximum);
    // Skips past the next colon.
    void SkipToColon(const char* what);
    // The next number at the current position, blanks and line ends before it skipped.
    float ReadFloat(const char* what);
    // Further integers of a list separated by commas without a blank before the comma: true and
    // `value` when one follows. The character that ends the list is consumed.
    bool ReadListItem(const char* what, int32_t& value);

    bool HasFailed() const { return !fault.empty(); }
    void Fail(const std::string& reason);
    // "line N: reason".
    const std::string& Fault() const { return fault; }

private:
    bool ParseInt(int64_t& value);

    std::string text;
    size_t position = 0;
    std::string fault;
};
