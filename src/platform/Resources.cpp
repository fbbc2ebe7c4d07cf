#include "platform/Resources.h"

#include <cstring>

#include "platform/ResourceTable.h"

namespace platform {

Resource FindResource(const char* name, const char* type) {
    if (name == nullptr || type == nullptr) {
        return {};
    }
    for (const ResourceEntry* entry = kResources; entry->name != nullptr; ++entry) {
        if (std::strcmp(entry->name, name) == 0 && std::strcmp(entry->type, type) == 0) {
            return {entry->begin, static_cast<size_t>(entry->end - entry->begin)};
        }
    }
    return {};
}

}  // namespace platform
