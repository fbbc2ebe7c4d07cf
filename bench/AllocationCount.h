#pragma once

// Counts what the program takes from the heap. Link AllocationCount.cpp into a benchmark and every
// `new` of the whole program is counted.

#include <cstdint>

int64_t AllocationCount();
