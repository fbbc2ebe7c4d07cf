#pragma once

// The table of named data that the build generates; FindResource searches it.

namespace platform {

struct ResourceEntry {
    const char* name;
    const char* type;
    const unsigned char* begin;
    const unsigned char* end;
};

// Ends with an entry whose name is null.
extern const ResourceEntry kResources[];

}  // namespace platform
