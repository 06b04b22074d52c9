// How much the test program takes from the heap.
#ifndef PXDUTIL_TESTS_PXD_ALLOCATION_COUNT_H
#define PXDUTIL_TESTS_PXD_ALLOCATION_COUNT_H

#include <cstdint>

// How often memory was taken since the program started, by whatever thread.
std::uint64_t AllocationCount();

#endif
