#pragma once

// What a request asks for, whoever sent it: the game with its bare line feeds, a proxy with a whole
// URL, or a browser.

#include <string>
#include <string_view>
#include <vector>

#include "scores/HiscoreEntry.h"

struct HiscoreRequest {
    bool valid = false;                 // a GET whose query names an operation of ours
    std::vector<HiscoreEntry> entries;  // those of its results that can be believed
};

constexpr size_t kMaxRequest = 4096;  // bytes; the game's are under 2048
constexpr size_t kMaxResults = 20;    // of one request

// True once the blank line that ends a request has come.
bool IsComplete(std::string_view bytes);

HiscoreRequest ParseRequest(std::string_view bytes);

// The answer's text: twenty results, best first, the score to beat, and the closing mark. Missing
// results are filled up with nameless ones of score 0.
std::string AnswerBody(const std::vector<HiscoreEntry>& best);
