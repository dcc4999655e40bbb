// SPDX-License-Identifier: MIT
// The whole translation (parse, build, pipeline, entry arrays, release) of generated documents,
// set against json-c's own parse of the same text in the same run, per output entry, and with
// the heap's peak.
#include <benchmark/benchmark.h>
#include <json-c/json.h>

#include <chrono>
#include <string>

#include "api/jsoncfgplus.h"
#include "doc_generator.h"
#include "heap_counter.h"
#include "quiet_stdout.h"

namespace jcpbench {

namespace {

using Clock = std::chrono::steady_clock;

size_t countEntries(const apiCfgPlusEntry* entries, size_t count) {
    size_t total = count;
    for (size_t i = 0; i < count; ++i) {
        const apiCfgPlusEntry& e = entries[i];
        if ((e.type == CFG_OBJECT || e.type == CFG_OBJ_ARRAY) && e.value != nullptr && e.size > 0)
            total += countEntries(static_cast<const apiCfgPlusEntry*>(e.value),
                                  static_cast<size_t>(e.size) / sizeof(apiCfgPlusEntry));
    }
    return total;
}

size_t countArrays(const apiCfgPlusEntryArray* arrays, int32_t count) {
    size_t total = 0;
    for (int32_t i = 0; arrays != nullptr && i < count; ++i)
        total += countEntries(arrays[i].entries, static_cast<size_t>(arrays[i].count));
    return total;
}

// Every entry of a result, nested ones included.
size_t countResultEntries(const apiCfgPlusResult& r) {
    return countEntries(r.global.entries, static_cast<size_t>(r.global.count)) +
           countArrays(r.radios, r.radioCount) + countArrays(r.vnsList, r.vnsCount) +
           countArrays(r.meshpoints, r.meshpointCount);
}

size_t countJsonNodes(json_object* node) {
    size_t total = 1;
    if (json_object_is_type(node, json_type_object)) {
        json_object_object_foreach(node, key, child) {
            (void)key;
            total += child != nullptr ? countJsonNodes(child) : 1;
        }
    } else if (json_object_is_type(node, json_type_array)) {
        for (size_t i = 0; i < json_object_array_length(node); ++i) {
            json_object* child = json_object_array_get_idx(node, i);
            total += child != nullptr ? countJsonNodes(child) : 1;
        }
    }
    return total;
}

json_object* jsoncParse(const std::string& text) {
    json_tokener* tokener = json_tokener_new();
    json_object* root = json_tokener_parse_ex(tokener, text.data(), static_cast<int>(text.size()));
    json_tokener_free(tokener);
    return root;
}

double seconds(Clock::duration d) {
    return std::chrono::duration<double>(d).count();
}

void runTranslation(benchmark::State& state, const std::string& text) {
    QuietStdout quiet;
    json_object* tree = jsoncParse(text);
    size_t nodes = tree != nullptr ? countJsonNodes(tree) : 0;
    json_object_put(tree);

    // One untimed pass counts the entries and the heap's peak.
    startHeapCount();
    apiCfgPlusResult* counted = parseJsonCfgPlus(
        text.data(), static_cast<unsigned int>(text.size()), jsonCfgPlusParserCallback, 0, 0, 0);
    size_t peak = peakHeapBytes();
    stopHeapCount();
    size_t entries = counted != nullptr ? countResultEntries(*counted) : 0;
    freeJsonCfgPlus(counted);

    double jsoncTime = 0;
    double translateTime = 0;
    for (auto _ : state) {
        Clock::time_point t0 = Clock::now();
        json_object_put(jsoncParse(text));
        Clock::time_point t1 = Clock::now();
        freeJsonCfgPlus(parseJsonCfgPlus(text.data(), static_cast<unsigned int>(text.size()),
                                         jsonCfgPlusParserCallback, 0, 0, 0));
        Clock::time_point t2 = Clock::now();
        jsoncTime += seconds(t1 - t0);
        translateTime += seconds(t2 - t1);
        state.SetIterationTime(seconds(t2 - t1));
    }
    double n = static_cast<double>(state.iterations());
    state.counters["bytes"] = static_cast<double>(text.size());
    state.counters["entries"] = static_cast<double>(entries);
    state.counters["json_nodes"] = static_cast<double>(nodes);
    state.counters["jsonc_ms"] = 1e3 * jsoncTime / n;
    state.counters["x_jsonc"] = jsoncTime > 0 ? translateTime / jsoncTime : 0;
    state.counters["ns_per_entry"] = entries > 0 ? 1e9 * translateTime / n / double(entries) : 0;
    state.counters["jsonc_ns_per_node"] = nodes > 0 ? 1e9 * jsoncTime / n / double(nodes) : 0;
    state.counters["peak_heap_MB"] = static_cast<double>(peak) / 1e6;
}

void BM_Campus(benchmark::State& state) {
    static std::string text;
    static size_t madeFor = 0;
    size_t target = static_cast<size_t>(state.range(0));
    if (madeFor != target) {
        text = campusDocumentOfSize(target);
        madeFor = target;
    }
    runTranslation(state, text);
}
BENCHMARK(BM_Campus)->Arg(25'000)->Arg(100'000)->Arg(1'000'000)->UseManualTime()->Unit(
    benchmark::kMillisecond);
// The largest size runs once: one pass already takes seconds.
BENCHMARK(BM_Campus)
    ->Arg(10'000'000)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void BM_Adversarial(benchmark::State& state) {
    const NamedShape& shape = adversarialShapes()[static_cast<size_t>(state.range(0))];
    state.SetLabel(shape.name);
    runTranslation(state, shape.make(shape.n));
}
BENCHMARK(BM_Adversarial)
    ->DenseRange(0, 6)
    ->Iterations(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace jcpbench
