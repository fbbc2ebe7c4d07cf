#pragma once

// Game paths: relative to the working folder, with backslashes and in any letter case, as the model
// table and the level files spell them ("Objects\X" and "objects\x" are one file). Results of type
// bool: true means failure.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace platform {

// The real path of a game path: each component in the letter case that exists on disk, as written
// where none exists.
std::string ResolvePath(const std::string& gamePath);

// fopen on the real path. Null on failure.
std::FILE* OpenFile(const std::string& gamePath, const char* mode);

// Reads a whole regular file of at most `limit` bytes. Failure leaves `bytes` empty.
bool ReadWholeFile(const std::string& gamePath, std::vector<uint8_t>& bytes, size_t limit);
// The same as text: CR LF becomes LF.
bool ReadWholeText(const std::string& gamePath, std::string& text, size_t limit);

// Replaces the file in one step: written beside it, flushed to the disk and renamed, so that a
// crash or a full disk at any moment leaves the old content or the new one, never a mixture.
bool WriteWholeFile(const std::string& gamePath, const void* data, size_t size);

// Names of the entries of a folder in byte order, "." and ".." left out; empty when there is no
// such folder.
std::vector<std::string> ListFolder(const std::string& gamePath);

}  // namespace platform
