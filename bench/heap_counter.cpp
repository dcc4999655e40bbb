// SPDX-License-Identifier: MIT
// Interposes malloc and friends in the benchmark binary (never in the library) to follow the
// heap's live and peak bytes; glibc's own allocator does the work.
#include "heap_counter.h"

#include <malloc.h>

#include <atomic>
#include <cerrno>
#include <cstring>

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* ptr, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* ptr);
}

namespace {

// Off while timing, so the count costs nothing there; on for one separate pass.
std::atomic<bool> g_counting{false};
std::atomic<long long> g_live{0};
std::atomic<long long> g_peak{0};

}  // namespace

// A sanitizer brings its own malloc; there the counter stays at zero.
#if !defined(__SANITIZE_ADDRESS__)

namespace {

void adjust(long long delta) {
    if (delta == 0) return;
    long long now = g_live.fetch_add(delta, std::memory_order_relaxed) + delta;
    long long peak = g_peak.load(std::memory_order_relaxed);
    while (now > peak && !g_peak.compare_exchange_weak(peak, now, std::memory_order_relaxed)) {
    }
}

long long usable(void* ptr) {
    if (ptr == nullptr || !g_counting.load(std::memory_order_relaxed)) return 0;
    return static_cast<long long>(malloc_usable_size(ptr));
}

void* counted(void* ptr) {
    adjust(usable(ptr));
    return ptr;
}

}  // namespace

extern "C" {

void* malloc(size_t size) {
    return counted(__libc_malloc(size));
}

void* calloc(size_t count, size_t size) {
    return counted(__libc_calloc(count, size));
}

void* realloc(void* ptr, size_t size) {
    long long before = usable(ptr);
    void* moved = __libc_realloc(ptr, size);
    // A failed realloc keeps the old block; realloc to 0 bytes frees it.
    if (moved != nullptr || size == 0) adjust(usable(moved) - before);
    return moved;
}

void free(void* ptr) {
    adjust(-usable(ptr));
    __libc_free(ptr);
}

void* memalign(size_t alignment, size_t size) {
    return counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(size_t alignment, size_t size) {
    return counted(__libc_memalign(alignment, size));
}

int posix_memalign(void** out, size_t alignment, size_t size) {
    void* ptr = counted(__libc_memalign(alignment, size));
    if (ptr == nullptr) return ENOMEM;
    *out = ptr;
    return 0;
}

}  // extern "C"

#endif

namespace jcpbench {

void startHeapCount() {
    g_live.store(0, std::memory_order_relaxed);
    g_peak.store(0, std::memory_order_relaxed);
    g_counting.store(true, std::memory_order_relaxed);
}

void stopHeapCount() {
    g_counting.store(false, std::memory_order_relaxed);
}

size_t peakHeapBytes() {
    long long peak = g_peak.load(std::memory_order_relaxed);
    return peak > 0 ? static_cast<size_t>(peak) : 0;
}

}  // namespace jcpbench
