// SPDX-License-Identifier: MIT
// Cost of one configuration push: parse, build, convert and release, on the shipped example
// and on documents that grow in the directions a manager's documents grow.
#include <benchmark/benchmark.h>
#include <fstream>
#include <sstream>

#include "api/jsoncfgplus.h"
#include "quiet_stdout.h"

namespace {

std::string example() {
    std::ifstream in(std::string(JCP_EXAMPLES_DIR) + "/ap-config.json");
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

// A device with n members, one radio with n WLAN services, and n VLAN interfaces.
std::string grownDocument(int n) {
    std::string members, wlans, bss, vlans;
    for (int i = 0; i < n; ++i) {
        std::string id = std::to_string(i);
        members += ",\"setting_" + id + "\":" + id;
        wlans += std::string(i ? "," : "") + "{\"name\":\"w" + id + "\",\"cen_ssid_id\":" + id +
                 ",\"ssid\":\"net" + id + "\",\"vlans\":[{\"vlan\":" + id + "}]}";
        bss += std::string(i ? "," : "") + "{\"bss\":" + std::to_string(i % 8 + 1) +
               ",\"wlan\":\"w" + id + "\"}";
        vlans += ",{\"name\":\"vlan" + id + "\",\"type\":\"vlan\",\"vlan\":" + id +
                 ",\"internal_key\":" + id + "}";
    }
    return "{\"device\":{\"name\":\"ap\"" + members +
           ",\"interface\":[{\"name\":\"radio1\",\"type\":\"radio\",\"wlanbssmap\":[" + bss + "]}" +
           vlans + "]},\"wlan\":[" + wlans + "]}";
}

void runPush(benchmark::State& state, const std::string& text, jsonCfgPlusCallback pipeline) {
    QuietStdout quiet;
    for (auto _ : state) {
        apiCfgPlusResult* r = parseJsonCfgPlus(text.data(), text.size(), pipeline, 0, 0, 0);
        benchmark::DoNotOptimize(r);
        freeJsonCfgPlus(r);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(text.size()));
}

void BM_ExamplePush(benchmark::State& state) {
    runPush(state, example(), jsonCfgPlusParserCallback);
}
BENCHMARK(BM_ExamplePush);

void BM_GrownDocument(benchmark::State& state) {
    runPush(state, grownDocument(int(state.range(0))), jsonCfgPlusParserCallback);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_GrownDocument)->RangeMultiplier(4)->Range(16, 4096)->Complexity();

}  // namespace
