// Counts what goes through the global operator new, which the test program replaces.
#pragma once

#include <cstddef>

/// Allocations since the start of the program.
std::size_t AllocationCount();
