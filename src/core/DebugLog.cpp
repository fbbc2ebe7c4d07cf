#include "core/DebugLog.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>

#include "core/Registry.h"
#include "platform/Files.h"

namespace {

// Worker threads may still log while the program ends, so this lock is never destroyed.
std::mutex& LogLock() {
    static auto* lock = new std::mutex;
    return *lock;
}

std::string* capture = nullptr;

}  // namespace

void OpenDebugLog() {
    {
        const std::lock_guard guard(LogLock());
        debugLog = platform::OpenFile("Data\\debug.out", "w");
        if (debugLog != nullptr) {
            std::setvbuf(debugLog, nullptr, _IOLBF, BUFSIZ);  // a crash leaves what led to it
        }
    }
    Log("File opened\n");
}

void CloseDebugLog() {
    const std::lock_guard guard(LogLock());
    if (debugLog != nullptr) {
        std::fclose(debugLog);
        debugLog = nullptr;
    }
}

void Log(const char* format, ...) {
    const std::lock_guard guard(LogLock());
    va_list arguments;
    if (debugLog != nullptr) {
        va_start(arguments, format);
        std::vfprintf(debugLog, format, arguments);
        va_end(arguments);
    }
    if (capture != nullptr) {
        char line[4096];  // the longest text logged is a network request or answer of 2048 bytes
        va_start(arguments, format);
        std::vsnprintf(line, sizeof line, format, arguments);
        va_end(arguments);
        capture->append(line);
    }
}

void CaptureLog(std::string* sink) {
    const std::lock_guard guard(LogLock());
    capture = sink;
}
