#pragma once

// The debug log, "Data\debug.out": a fresh file each run, closed at shut-down. Errors begin
// "ERROR: ", warnings "WARNING: ". Worker threads may log too.

#include <string>

// Opens the log and writes its first line. A log that cannot be created writes nowhere.
void OpenDebugLog();
void CloseDebugLog();

// Appends the text to the log; what comes before OpenDebugLog or after CloseDebugLog is dropped.
[[gnu::format(printf, 1, 2)]] void Log(const char* format, ...);

// Sends a copy of everything logged from now on to `sink` (null ends it): for tests and tools.
void CaptureLog(std::string* sink);
