// Live and peak heap bytes of the benchmark process, counted by its own malloc.
#ifndef JSONCFGPLUS_BENCH_HEAP_COUNTER_H
#define JSONCFGPLUS_BENCH_HEAP_COUNTER_H

#include <cstddef>

namespace jcpbench {

// Bytes currently allocated (usable sizes) through malloc, new and json-c alike.
size_t liveHeapBytes();
// Restarts the peak at the current live bytes.
void resetHeapPeak();
size_t peakHeapBytes();

}  // namespace jcpbench

#endif
