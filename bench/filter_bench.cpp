// SPDX-License-Identifier: MIT
// Cost of the filter step per rule, on a WLAN whose MAC and IP ACLs hold n rules between them.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "convert/converter.h"

namespace {

// A device with one WLAN naming an inbound MAC ACL (a fifth of the n rules) and inbound and
// outbound IP ACLs (the rest, evenly).
std::string aclDocument(int n) {
    std::string mac, in, out;
    const int macRules = n / 5;
    const int ipRules = (n - macRules) / 2;
    for (int i = 0; i < n - macRules - ipRules; ++i) {
        std::string sep = i ? "," : "";
        std::string id = std::to_string(i);
        char address[32];
        std::snprintf(address, sizeof address, "00-11-22-33-%02x-%02x", (i >> 8) & 0xFF, i & 0xFF);
        if (i < macRules)
            mac +=
                sep + "{\"precedence\":" + id + ",\"allow\":\"deny\",\"smac\":\"" + address + "\"}";
        std::string ip = "10." + std::to_string(i / 256) + "." + std::to_string(i % 256) + ".0/24";
        if (i < ipRules)
            in += sep + "{\"precedence\":" + id + ",\"allow\":\"allow\",\"dip\":\"" + ip +
                  "\",\"protocol\":6,\"low_dport\":443,\"mark_8021p\":5}";
        out += sep + "{\"precedence\":" + id + ",\"allow\":\"deny\",\"sip\":\"" + ip +
               "\",\"protocol\":17,\"low_sport\":53,\"high_sport\":60}";
    }
    return R"({"device":{"name":"ap","interface":[{"name":"radio1","type":"radio",
        "wlanbssmap":[{"bss":1,"wlan":"w"}]}]},
        "wlan":[{"name":"w","cen_ssid_id":1,"mac_in_acl":"m","ip_in_acl":"i","ip_out_acl":"o"}],
        "mac_acl":[{"name":"m","mac_rules":[)" +
           mac + R"(]}],"ip_acl":[{"name":"i","ip_rules":[)" + in +
           R"(]},{"name":"o","ip_rules":[)" + out + "]}]}";
}

// The library prints its milestones (and the cut warning); the benchmark measures the work.
class Quiet {
  public:
    Quiet() : saved_(dup(1)) {
        std::fflush(stdout);
        FILE* null = std::fopen("/dev/null", "w");
        dup2(fileno(null), 1);
        std::fclose(null);
    }
    ~Quiet() {
        std::fflush(stdout);
        dup2(saved_, 1);
        close(saved_);
    }

  private:
    int saved_;
};

void BM_FilterStep(benchmark::State& state) {
    const int n = int(state.range(0));
    std::string text = aclDocument(n);
    Quiet quiet;
    jsonCfgPlus doc;
    if (doc.buildConfig(text.data(), unsigned(text.size())) != 0) {
        state.SkipWithError("document did not build");
        return;
    }
    cfgPlusApiConverter converter;
    for (auto _ : state) {
        // Every run reads the same ACL elements and replaces the elements it wrote before.
        benchmark::DoNotOptimize(converter.jsonCfgPlusVnsFilters(doc));
    }
    state.counters["rules"] = n;
    state.counters["per_rule"] = benchmark::Counter(
        double(state.iterations()) * n, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_FilterStep)->Arg(10)->Arg(100)->Arg(1000);

}  // namespace
