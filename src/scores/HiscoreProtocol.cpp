#include "scores/HiscoreProtocol.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/Version.h"

namespace {

constexpr const char* kAccept =
    "Accept: image/gif, image/x-xbitmap, image/jpeg, image/pjpeg, */*\n";

std::string RequestStart(const HiscoreServer& server, bool nameDefaultPort, const char* operation) {
    std::string request = "GET ";
    if (server.useProxy) {
        request += "http://" + server.host;
        if (server.port != 80 || nameDefaultPort) {
            request += ":" + std::to_string(server.port);
        }
    }
    return request + server.path + "?Op=" + operation + "&V=";
}

std::string RequestTail(const char* beforeVersion) {
    return std::string(beforeVersion) + "HTTP/1.1\n" + kAccept + "Accept-Language: en-gb\n" +
           "XXXXXXXXXXXXXXX: XXXXXXXXXXXXX\nUser-Agent: " + kWindowTitle +
           "\rConnection: Keep-Alive" + "\r\n\r\n";
}

// A name travels as letters between underscores: what would end it or the request line early is
// sent as a dash. Only a damaged hiscore file holds such characters.
char EncodeNameCharacter(char c) {
    if (c == ' ') {
        return ':';
    }
    return c > ' ' && c < 0x7F && c != '_' ? c : '-';
}

char VersionDigit(int8_t number) {
    return static_cast<char>('0' + std::clamp<int>(number, 0, 9));
}

// Walks through the fields of an answer. After the first fault everything reads as nothing.
class AnswerReader {
public:
    explicit AnswerReader(std::string_view text) : text(text) {}

    bool HasFailed() const { return failed; }

    // The characters up to the next underscore, which is passed.
    std::string_view ReadField() {
        const size_t end = text.find('_');
        if (end == std::string_view::npos) {
            failed = true;
            text = {};
            return {};
        }
        const std::string_view field = text.substr(0, end);
        text.remove_prefix(end + 1);
        return field;
    }
    // A decimal number at the start of the next field; what follows it in the field is passed over.
    template <typename Number>
    Number ReadNumber() {
        return Parse<Number>(ReadField());
    }
    // The number that the text begins with, to its end.
    int32_t ReadLastNumber() { return Parse<int32_t>(text); }

private:
    template <typename Number>
    Number Parse(std::string_view field) {
        Number number = {};
        if (std::from_chars(field.data(), field.data() + field.size(), number).ec != std::errc()) {
            failed = true;
        }
        return number;
    }

    std::string_view text;
    bool failed = false;
};

HiscoreEntry ReadEntry(AnswerReader& answer) {
    HiscoreEntry entry;
    std::string name(answer.ReadField().substr(0, kNameLength));
    std::replace(name.begin(), name.end(), ':', ' ');
    name.resize(kNameLength, '.');
    SetName(entry, name.c_str());
    entry.score = answer.ReadNumber<int32_t>();
    entry.level = answer.ReadNumber<int32_t>();
    entry.hitRatio = answer.ReadNumber<float>();
    const std::string_view digits = answer.ReadField();
    for (size_t i = 0; i < entry.version.size() && i < digits.size(); ++i) {
        entry.version[i] = static_cast<int8_t>(digits[i] - '0');
    }
    entry.time = answer.ReadNumber<uint32_t>();
    return entry;
}

// Where the table starts: after the headers of a plain status 200, else at the beginning.
std::string_view Body(std::string_view text) {
    constexpr std::string_view kBlankLine = "\r\n\r\n";
    int minor = 0;
    int status = 0;
    const std::string head(text.substr(0, 32));
    const bool hasStatus = std::sscanf(head.c_str(), "HTTP/1.%d %d", &minor, &status) == 2;
    const size_t blankLine = text.find(kBlankLine);
    if (hasStatus && status == 200 && blankLine != std::string_view::npos) {
        text.remove_prefix(blankLine + kBlankLine.size());
    }
    return text;
}

}  // namespace

std::string TableRequestStart(const HiscoreServer& server) {
    return RequestStart(server, false, "SetScores");
}

std::string ScoreRequestStart(const HiscoreServer& server) {
    // Through a proxy a single score goes by the name of the table's upload; servers take both.
    return RequestStart(server, true, server.useProxy ? "SetScores" : "SetScore");
}

std::string TableRequestTail() {
    return RequestTail(" ");
}

std::string ScoreRequestTail() {
    return RequestTail("\n");  // the version stands on a line of its own here
}

void AppendEntry(std::string& request, const HiscoreEntry& entry) {
    const char* end = std::find(entry.name, entry.name + strnlen(entry.name, kNameLength + 1), '.');
    std::transform(static_cast<const char*>(entry.name), end, std::back_inserter(request),
                   EncodeNameCharacter);
    char fields[128];
    std::snprintf(fields, sizeof fields, "_%d_%d_%7f_%c%c%c_%u", entry.score, entry.level,
                  static_cast<double>(entry.hitRatio), VersionDigit(entry.version[0]),
                  VersionDigit(entry.version[1]), VersionDigit(entry.version[2]), entry.time);
    request += fields;
}

bool IsUnwantedResponse(std::string_view text) {
    return text.size() > 2 && (text.find("Content-Length") != std::string_view::npos ||
                               text.find("<html>") != std::string_view::npos);
}

bool ParseResponse(std::string_view text, OnlineTable& table, int32_t& threshold) {
    AnswerReader answer(Body(text));
    OnlineTable received;
    for (HiscoreEntry& entry : received) {
        entry = ReadEntry(answer);
    }
    const int32_t lowest = answer.ReadLastNumber();
    if (answer.HasFailed()) {
        return true;
    }
    table = received;
    threshold = lowest;
    return false;
}
