#include "world/LevelText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr const char* kBlanks = " \t\n\v\f\r";

// Where a number at `position` begins for from_chars, which does not know a leading plus.
const char* NumberStart(const std::string& text, size_t position) {
    const bool plus = position + 1 < text.size() && text[position] == '+' &&
                      text[position + 1] != '-' && text[position + 1] != '+';
    return text.data() + position + (plus ? 1 : 0);
}

}  // namespace

std::string LevelText::ReadLine() {
    if (!FindColon()) {
        return {};
    }
    const size_t end = std::min(text.find('\n', position), text.size());
    const size_t length = std::min(end - position, kMaxLine);
    std::string line = text.substr(position, length);
    position += length;
    return line;
}

int32_t LevelText::ReadInt(const char* what, int32_t minimum, int32_t maximum) {
    SkipToColon(what);
    return ParseInt(what, minimum, maximum);
}

std::vector<int32_t> LevelText::ReadIntList(const char* what, size_t maximumCount) {
    std::vector<int32_t> values;
    SkipToColon(what);
    do {
        values.push_back(ParseInt(what, std::numeric_limits<int32_t>::min(),
                                  std::numeric_limits<int32_t>::max()));
    } while (!HasFailed() && TakeComma() && values.size() < maximumCount);
    return values;
}

void LevelText::SkipToColon(const char* what) {
    if (!FindColon()) {
        Fail(std::string("the file ends before the ") + what);
    }
}

float LevelText::ReadFloat(const char* what) {
    if (HasFailed()) {
        return 0.0F;
    }
    SkipBlanks();
    float value = 0.0F;
    const auto [end, error] =
        std::from_chars(NumberStart(text, position), text.data() + text.size(), value);
    if (error != std::errc() || !std::isfinite(value)) {
        Fail(std::string("the ") + what + " is not a number of the usual size");
        return 0.0F;
    }
    position = static_cast<size_t>(end - text.data());
    return value;
}

void LevelText::Fail(const std::string& reason) {
    if (HasFailed()) {
        return;
    }
    const auto place = text.begin() + static_cast<std::ptrdiff_t>(fieldStart);
    const auto line = std::count(text.begin(), place, '\n') + 1;
    fault = "line " + std::to_string(line) + ": " + reason;
}

bool LevelText::FindColon() {
    const size_t colon = text.find(':', position);
    position = colon == std::string::npos ? text.size() : colon + 1;
    fieldStart = position;
    return colon != std::string::npos;
}

bool LevelText::TakeComma() {
    return position < text.size() && text[position++] == ',';
}

void LevelText::SkipBlanks() {
    position = std::min(text.find_first_not_of(kBlanks, position), text.size());
    fieldStart = position;
}

int32_t LevelText::ParseInt(const char* what, int32_t minimum, int32_t maximum) {
    if (HasFailed()) {
        return minimum;
    }
    SkipBlanks();
    int64_t value = 0;
    const auto [end, error] =
        std::from_chars(NumberStart(text, position), text.data() + text.size(), value);
    if (error == std::errc::invalid_argument) {
        Fail(std::string("the ") + what + " is not a whole number");
        return minimum;
    }
    if (error != std::errc() || value < minimum || value > maximum) {
        Fail(std::string("the ") + what + " is not from " + std::to_string(minimum) + " to " +
             std::to_string(maximum));
        return minimum;
    }
    position = static_cast<size_t>(end - text.data());
    return static_cast<int32_t>(value);
}
