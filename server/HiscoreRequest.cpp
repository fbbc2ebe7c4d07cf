#include "HiscoreRequest.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "scores/HiscoreProtocol.h"

namespace {

constexpr size_t kFieldsPerResult = 6;

std::string PercentDecoded(std::string_view text) {
    std::string decoded;
    for (size_t i = 0; i < text.size(); ++i) {
        int code = 0;
        if (text[i] == '%' && i + 2 < text.size() &&
            std::from_chars(&text[i + 1], &text[i + 1] + 2, code, 16).ptr == &text[i + 1] + 2) {
            decoded += static_cast<char>(code);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

template <typename Number>
bool Parse(std::string_view field, Number& number) {
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), number);
    return error == std::errc() && end == field.data() + field.size();
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> fields;
    while (!text.empty()) {
        const size_t end = std::min(text.find(separator), text.size());
        fields.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return fields;
}

bool IsNameCharacter(char c) {
    return c >= ' ' && c < 0x7F && c != '_' && c != '!' && c != '<';
}

// A result of a game that was played. Level 0 marks the entries that every new table starts with,
// which are nobody's.
std::optional<HiscoreEntry> ParseResult(const std::string_view* fields) {
    HiscoreEntry entry;
    std::string name(fields[0]);
    std::replace(name.begin(), name.end(), ':', ' ');
    const bool goodName = !name.empty() && name.size() <= kNameLength &&
                          std::all_of(name.begin(), name.end(), IsNameCharacter);
    if (!goodName || !Parse(fields[1], entry.score) || !Parse(fields[2], entry.level) ||
        !Parse(fields[3], entry.hitRatio) || !Parse(fields[5], entry.time)) {
        return std::nullopt;
    }
    const bool plausible = entry.score > 0 && entry.level > 0 && std::isfinite(entry.hitRatio) &&
                           entry.hitRatio >= 0.0F && entry.hitRatio <= 100.0F;
    const std::string_view version = fields[4];
    if (!plausible || version.size() != entry.version.size() ||
        !std::all_of(version.begin(), version.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return std::nullopt;
    }
    for (size_t i = 0; i < version.size(); ++i) {
        entry.version[i] = static_cast<int8_t>(version[i] - '0');
    }
    SetName(entry, name.c_str());
    return entry;
}

// The request's target: the word after GET.
std::string_view Target(std::string_view bytes) {
    constexpr std::string_view kMethod = "GET ";
    if (!bytes.starts_with(kMethod)) {
        return {};
    }
    bytes.remove_prefix(kMethod.size());
    return bytes.substr(0, bytes.find_first_of(" \r\n\t"));
}

}  // namespace

bool IsComplete(std::string_view bytes) {
    return bytes.find("\r\n\r\n") != std::string_view::npos ||
           bytes.find("\n\n") != std::string_view::npos;
}

HiscoreRequest ParseRequest(std::string_view bytes) {
    HiscoreRequest request;
    const std::string target = PercentDecoded(Target(bytes));
    const size_t query = target.find('?');
    if (query == std::string::npos) {
        return request;
    }
    std::string_view results;
    for (const std::string_view parameter :
         Split(std::string_view(target).substr(query + 1), '&')) {
        if (parameter == "Op=SetScores" || parameter == "Op=SetScore") {
            request.valid = true;
        } else if (parameter.starts_with("V=")) {
            results = parameter.substr(2);
        }
    }
    if (!request.valid) {
        return request;
    }
    const std::vector<std::string_view> fields = Split(results, '_');
    for (size_t i = 0; i + kFieldsPerResult <= fields.size(); i += kFieldsPerResult) {
        const std::optional<HiscoreEntry> entry = ParseResult(&fields[i]);
        if (entry.has_value() && request.entries.size() < kMaxResults) {
            request.entries.push_back(*entry);
        }
    }
    return request;
}

std::string AnswerBody(const std::vector<HiscoreEntry>& best) {
    std::string body;
    int32_t threshold = 0;
    for (size_t i = 0; i < kHiscoreEntries; ++i) {
        HiscoreEntry entry;
        if (i < best.size()) {
            entry = best[i];
        } else {
            entry.version = kProgramVersion;
        }
        AppendEntry(body, entry);
        body += '_';
        threshold = entry.score;
    }
    return body + std::to_string(threshold) + "!";
}
