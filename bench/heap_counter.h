// SPDX-License-Identifier: MIT
// Live and peak heap bytes of the benchmark process, counted by its own malloc.
#ifndef JSONCFGPLUS_BENCH_HEAP_COUNTER_H
#define JSONCFGPLUS_BENCH_HEAP_COUNTER_H

#include <cstddef>

namespace jcpbench {

// Counts the heap (usable sizes, through malloc, new and json-c alike) from zero until
// stopHeapCount; blocks made before the start are not followed.
void startHeapCount();
void stopHeapCount();
// The most bytes live at once while counting.
size_t peakHeapBytes();

}  // namespace jcpbench

#endif
