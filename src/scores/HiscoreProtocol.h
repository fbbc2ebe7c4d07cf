#pragma once

// The bytes of the online hiscore exchange: one HTTP GET whose query carries results, answered by
// the table of twenty and the score that still enters it. No sockets here, so that every byte can
// be tested.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "scores/HiscoreEntry.h"

// Where requests go: the selected server and, if one is used, the proxy.
struct HiscoreServer {
    std::string host;
    std::string path;
    uint16_t port = 80;
    bool useProxy = false;
    std::string proxyHost;
    uint16_t proxyPort = 8080;
};

using OnlineTable = std::array<HiscoreEntry, kHiscoreEntries>;

constexpr size_t kMaxExchange = 2048;  // bytes of a request or an answer

// The request up to the first result: upload of the local table, or of one result.
std::string TableRequestStart(const HiscoreServer& server);
std::string ScoreRequestStart(const HiscoreServer& server);
// What follows the last result.
std::string TableRequestTail();
std::string ScoreRequestTail();
// Name_score_level_ratio_vvv_time; the name ends at its first dot and blanks become colons.
void AppendEntry(std::string& request, const HiscoreEntry& entry);

// True when the answer is an HTML page or a full HTTP response, which is not wanted.
bool IsUnwantedResponse(std::string_view text);
// Reads twenty entries and the threshold from an answer (after an optional status line and
// headers). True = failure: cut short or malformed; the outputs are then untouched.
bool ParseResponse(std::string_view text, OnlineTable& table, int32_t& threshold);
