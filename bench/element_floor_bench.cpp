// SPDX-License-Identifier: MIT
// The least an output entry can cost with the element and entry formats as they are: each
// element made once in its list with the walk's two path strings, converted into its entry
// (a name copy and a value block) and released, with no lookups, converters or JSON at all.
// The campus figures are read against this floor.
#include <benchmark/benchmark.h>

#include <chrono>
#include <list>
#include <string>

#include "heap_counter.h"
#include "model/cfg_element.h"

namespace jcpbench {

namespace {

// The walk's paths into an ACL rule run to about 30 characters, past any short-string buffer.
const char kPath[] = "mac_in_acl/mac_rules/precedence";

// One third integers, one third short texts, one third texts as long as a MAC address.
cfgElement walkedElement(int i) {
    std::string path = kPath;
    std::string key = path;
    switch (i % 3) {
        case 0:
            return cfgElement(std::move(path), i, std::move(key));
        case 1:
            return cfgElement(std::move(path), std::string("deny"), std::move(key));
        default:
            return cfgElement(std::move(path), std::string("00-11-22-10-44-55"), std::move(key));
    }
}

void makeConvertRelease(int count) {
    std::list<cfgElement> list;
    for (int i = 0; i < count; ++i) list.push_back(walkedElement(i));
    apiCfgPlusEntryArray array{};
    cfgElement::setApiCfgPlusList(std::move(list), &array, 0, 1);
    cfgElement::freeApiCfgPlusEntries(&array);
}

void BM_EntryFloor(benchmark::State& state) {
    const int count = static_cast<int>(state.range(0));
    // The elements are all alive before the first entry is made, as after a build.
    startHeapCount();
    makeConvertRelease(count);
    size_t peak = peakHeapBytes();
    stopHeapCount();
    double total = 0;
    for (auto _ : state) {
        auto start = std::chrono::steady_clock::now();
        makeConvertRelease(count);
        std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
        total += spent.count();
        state.SetIterationTime(spent.count());
    }
    double entries = static_cast<double>(count) * static_cast<double>(state.iterations());
    state.counters["ns_per_entry"] = 1e9 * total / entries;
    state.counters["peak_bytes_per_entry"] = static_cast<double>(peak) / count;
}
BENCHMARK(BM_EntryFloor)->Arg(10'000)->Arg(400'000)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace jcpbench
