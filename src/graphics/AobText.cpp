#include "graphics/AobText.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r') || c == '\0';
}

// The text of a number as float. Too large is infinite, too small is 0.
float ToFloat(std::string_view field) {
    double value = 0.0;
    const auto result = std::from_chars(field.data(), field.data() + field.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        const bool tiny = field.find("e-") != field.npos || field.find("E-") != field.npos;
        return tiny ? 0.0F : std::numeric_limits<float>::infinity();
    }
    return static_cast<float>(value);
}

}  // namespace

void AobText::MoveTo(size_t newPosition) {
    if (newPosition > bytes.size()) {
        failed = true;
        return;
    }
    position = newPosition;
}

void AobText::Skip(size_t characters) {
    if (characters > bytes.size() - position) {
        failed = true;
        return;
    }
    position += characters;
}

bool AobText::FindStart(std::string_view keyword) {
    const size_t match = failed ? bytes.npos : bytes.find(keyword, position);
    if (match == bytes.npos) {
        failed = true;
        return false;
    }
    position = match;
    return true;
}

bool AobText::Find(std::string_view keyword) {
    if (!FindStart(keyword)) {
        return false;
    }
    position += keyword.size();
    return true;
}

bool AobText::Expect(std::string_view keyword) {
    if (failed || bytes.substr(position, keyword.size()) != keyword) {
        failed = true;
        return false;
    }
    position += keyword.size();
    return true;
}

size_t AobText::DigitsFrom(size_t start) const {
    size_t end = start;
    while (end < bytes.size() && IsDigit(bytes[end])) {
        ++end;
    }
    return end - start;
}

int32_t AobText::Unsigned() {
    if (failed) {
        return 0;
    }
    const std::string_view digits = bytes.substr(position, DigitsFrom(position));
    position += digits.size();
    int64_t value = 0;
    for (const char digit : digits) {
        value = value * 10 + (digit - '0');
        if (value >= kLargest) {
            return kLargest;
        }
    }
    return static_cast<int32_t>(value);
}

size_t AobText::NumberLength() const {
    size_t end = position;
    if (end < bytes.size() && bytes[end] == '-') {
        ++end;
    }
    size_t digits = DigitsFrom(end);
    end += digits;
    if (end < bytes.size() && bytes[end] == '.') {
        const size_t fraction = DigitsFrom(end + 1);
        digits += fraction;
        end += 1 + fraction;
    }
    if (digits > 0 && end < bytes.size() && (bytes[end] == 'e' || bytes[end] == 'E')) {
        size_t exponent = end + 1;
        if (exponent < bytes.size() && (bytes[exponent] == '-' || bytes[exponent] == '+')) {
            ++exponent;
        }
        const size_t exponentDigits = DigitsFrom(exponent);
        if (exponentDigits > 0) {
            end = exponent + exponentDigits;
        }
    }
    return end - position;
}

float AobText::Number() {
    if (failed) {
        return 0.0F;
    }
    const size_t length = NumberLength();
    const float value = ToFloat(bytes.substr(position, length));
    Skip(length);
    Skip(1);
    return value;
}

std::array<float, 4> AobText::FourNumbers() {
    std::array<float, 4> numbers = {};
    for (float& number : numbers) {
        number = Number();
    }
    return numbers;
}

std::string_view AobText::Word() {
    if (failed) {
        return {};
    }
    size_t end = position;
    while (end < bytes.size() && !IsBlank(bytes[end])) {
        ++end;
    }
    const std::string_view word = bytes.substr(position, end - position);
    position = end;
    return word;
}

std::string_view AobText::Line() {
    const size_t start = position;
    if (!FindStart("\n")) {
        return {};
    }
    return bytes.substr(start, position - start);
}
