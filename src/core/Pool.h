#pragma once

// A fixed pool of objects that come and go during play: shots, explosions, powerups. All of them
// are made at once; nothing is allocated afterwards. Free objects form a stack, live ones a list
// in no particular order: releasing one moves the last live object into the hole, so a loop that
// releases entry i looks at entry i again.

#include <cassert>
#include <memory>
#include <utility>
#include <vector>

template <typename Object>
class Pool {
public:
    // Makes `capacity` objects, each from the same arguments.
    template <typename... Arguments>
    explicit Pool(int capacity, const Arguments&... arguments) {
        objects.reserve(capacity);
        freeObjects.reserve(capacity);
        liveObjects.reserve(capacity);
        for (int i = 0; i < capacity; ++i) {
            objects.push_back(std::make_unique<Object>(arguments...));
            freeObjects.push_back(objects.back().get());
        }
    }

    int Capacity() const { return static_cast<int>(objects.size()); }
    int FreeCount() const { return static_cast<int>(freeObjects.size()); }
    int LiveCount() const { return static_cast<int>(liveObjects.size()); }

    // The object on top of the free stack, now the last of the live list; null when none is free.
    Object* Take() {
        if (freeObjects.empty()) {
            return nullptr;
        }
        Object* object = freeObjects.back();
        freeObjects.pop_back();
        liveObjects.push_back(object);
        return object;
    }

    // Gives live entry `index` back.
    void Release(int index) {
        assert(index >= 0 && index < LiveCount());
        freeObjects.push_back(liveObjects[index]);
        liveObjects[index] = liveObjects.back();
        liveObjects.pop_back();
    }

    Object& Live(int index) { return *liveObjects[index]; }
    const Object& Live(int index) const { return *liveObjects[index]; }

    // Calls `finished` for every live object in list order and releases those for which it returns
    // true; the object that moves into the hole gets its turn in the same pass.
    template <typename Predicate>
    void ReleaseIf(Predicate finished) {
        for (int i = 0; i < LiveCount();) {
            if (finished(Live(i))) {
                Release(i);
            } else {
                ++i;
            }
        }
    }

private:
    std::vector<std::unique_ptr<Object>> objects;
    std::vector<Object*> freeObjects;
    std::vector<Object*> liveObjects;
};
