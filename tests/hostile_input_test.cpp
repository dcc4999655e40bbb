// SPDX-License-Identifier: MIT
// Whatever a manager sends ends in a result or a clean failure, through the whole pipeline, the
// dump and the free: every stored shape under tests/data/bad and tests/data/hostile, and
// generated extremes of size and depth; none of them reaches the network.
#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <set>

#include "document/element_budget.h"
#include "document/json_cfg_plus.h"
#include "document/redis_client.h"
#include "test_support.h"

namespace {

std::vector<std::string> g_connectHosts;

redisContext* refuseAndRecord(const char* host, int, struct timeval) {
    g_connectHosts.push_back(host);
    return nullptr;
}

// Installs the recording connector for one test.
class NoNetwork : public testing::Test {
  protected:
    void SetUp() override {
        g_connectHosts.clear();
        m_previous = jcp::setRedisConnector(&refuseAndRecord);
    }
    void TearDown() override { jcp::setRedisConnector(m_previous); }

  private:
    jcp::RedisConnector m_previous = nullptr;
};

struct Outcome {
    bool built = false;
    std::string out;
    std::string err;
};

Outcome parseConvertDumpFree(const std::string& text) {
    Outcome o;
    o.err = testsupport::captureStderr([&] {
        apiCfgPlusResult* r = testsupport::parseText(text, jsonCfgPlusParserCallback, &o.out);
        o.built = r != nullptr;
        testsupport::captureStdout([&] {
            printJsonCfgPlus(r);
            freeJsonCfgPlus(r);
        });
    });
    return o;
}

TEST_F(NoNetwork, EveryStoredShapeEndsCleanly) {
    // The documents that give no result; every other one builds.
    const std::set<std::string> refused = {"bad/array_document.json",
                                           "bad/empty.json",
                                           "bad/null_document.json",
                                           "bad/scalar_document.json",
                                           "bad/string_document.json",
                                           "bad/truncated.json",
                                           "hostile/depth_past_limit.json",
                                           "hostile/ether_type_beyond_int.json",
                                           "hostile/ether_type_empty.json",
                                           "hostile/http_ports_not_numbers.json",
                                           "hostile/mesh_acs_channel_not_a_number.json",
                                           "hostile/pointer_to_remote_redis.json",
                                           "hostile/truncated_in_escape.json",
                                           "hostile/truncated_in_number.json",
                                           "hostile/truncated_in_string.json",
                                           "hostile/unclosed_everything.json"};
    size_t seen = 0;
    for (const char* dir : {"bad", "hostile"}) {
        for (const auto& file : std::filesystem::directory_iterator(testsupport::dataPath(dir))) {
            std::string name = dir + ("/" + file.path().filename().string());
            SCOPED_TRACE(name);
            Outcome o = parseConvertDumpFree(testsupport::readFile(file.path().string()));
            EXPECT_EQ(o.built, refused.count(name) == 0) << o.out.substr(0, 2000);
            ++seen;
        }
    }
    EXPECT_EQ(seen, 35u);
    // Only the pointer document names a server, and the connector refused it.
    EXPECT_EQ(g_connectHosts, std::vector<std::string>{"192.0.2.77"});
}

TEST_F(NoNetwork, GeneratedExtremesOfSizeEndCleanly) {
    const std::string big(100 * 1024, 'x');
    struct Row {
        const char* name;
        std::string text;
    };
    const Row rows[] = {
        {"20,000 keys in one object",
         R"({"device": {)" +
             testsupport::joined(20000,
                                 [](size_t i) { return "\"k" + std::to_string(i) + "\": 1"; }) +
             "}}"},
        {"20,000 interface items",
         R"({"device": {"interface": [)" +
             testsupport::joined(
                 20000,
                 [](size_t i) {
                     const char* kinds[] = {R"("type": "vlan", "vlan": 1)", R"("type": "radio")",
                                            R"("type": "ethernet")", R"("type": "uwb")"};
                     std::string prefix = i % 4 == 1 ? "radio" : i % 4 == 2 ? "p" : "if";
                     return "{\"name\": \"" + prefix + std::to_string(i) + "\", " + kinds[i % 4] +
                            "}";
                 }) +
             "]}}"},
        {"10,000 BSS-map items",
         R"({"wlan": [{"name": "w", "cen_ssid_id": 1}], "device": {"interface": [
             {"name": "radio1", "type": "radio", "wlanbssmap": [)" +
             testsupport::joined(10000,
                                 [](size_t i) {
                                     return "{\"bss\": " + std::to_string(i % 12) +
                                            ", \"wlan\": \"w\"}";
                                 }) +
             "]}]}}"},
        {"100 KB strings and keys", R"({"device": {")" + big + R"(": ")" + big + R"(", "name": ")" +
                                        big + R"(", "interface": [{"name": ")" + big +
                                        R"(", "type": "radio"}]}, "wlan": [{"name": ")" + big +
                                        R"("}]})"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_TRUE(parseConvertDumpFree(row.text).built);
    }
    EXPECT_TRUE(g_connectHosts.empty());

    Outcome deep = parseConvertDumpFree("{\"device\": {\"a\": " + std::string(200, '[') +
                                        std::string(200, ']') + "}}");
    EXPECT_FALSE(deep.built);
    EXPECT_EQ(deep.err, "Error: nesting too deep\n");
}

// Arrays of any length are walked whole: every value reaches its entry.
TEST(HugeArrays, AreWalkedWhole) {
    std::string ints = testsupport::joined(100000, [](size_t i) { return std::to_string(i); });
    apiCfgPlusResult* r = testsupport::parseText("{\"device\": {\"ints\": [" + ints + "]}}");
    ASSERT_NE(r, nullptr);
    ASSERT_EQ(r->global.count, 1);
    EXPECT_EQ(r->global.entries[0].size, 100000 * 4);
    EXPECT_EQ(static_cast<int32_t*>(r->global.entries[0].value)[99999], 99999);
    testsupport::captureStdout([&] { freeJsonCfgPlus(r); });

    std::string objects =
        testsupport::joined(20000, [](size_t i) { return "{\"k\":" + std::to_string(i) + "}"; });
    r = testsupport::parseText("{\"device\": {\"objs\": [" + objects + "]}}");
    ASSERT_NE(r, nullptr);
    EXPECT_EQ(testsupport::nestedCount(r->global.entries[0]), 20000u);
    testsupport::captureStdout([&] { freeJsonCfgPlus(r); });
}

TEST(ElementBudget, AmplifyingDocumentStopsWithOneErrorAndNoResult) {
    // 2,000 services, each naming the same 5,000-rule ACL: about 526 KB of text that would ask
    // for a hundred million elements.
    std::string rules = testsupport::joined(5000, [](size_t i) {
        return "{\"action\":\"deny\",\"protocol\":6,\"src\":\"10.0.0.0/"
               "8\",\"dst\":\"any\",\"port\":" +
               std::to_string(i) + ",\"precedence\":" + std::to_string(i) + "}";
    });
    std::string wlans = testsupport::joined(2000, [](size_t i) {
        return "{\"name\":\"w" + std::to_string(i) + "\",\"cen_ssid_id\":" + std::to_string(i) +
               ",\"ip_in_acl\":\"big\"}";
    });
    std::string bss = testsupport::joined(2000, [](size_t i) {
        return "{\"bss\":" + std::to_string(i % 8 + 1) + ",\"wlan\":\"w" + std::to_string(i) +
               "\"}";
    });
    std::string text = "{\"ip_acl\":[{\"name\":\"big\",\"ip_rules\":[" + rules + "]}],\"wlan\":[" +
                       wlans +
                       "],\"device\":{\"interface\":[{\"name\":\"radio1\",\"type\":\"radio\"," +
                       "\"wlanbssmap\":[" + bss + "]}]}}";
    ASSERT_GT(text.size(), 500u * 1024);

    Outcome o = parseConvertDumpFree(text);
    EXPECT_FALSE(o.built);
    EXPECT_EQ(testsupport::occurrences(o.out, "[ERR]"), 1u) << o.out;
    EXPECT_NE(o.out.find("[ERR] document needs more than the element budget of " +
                         std::to_string(jcp::elementBudgetFor(text.size())) +
                         " elements, build stopped.\n"),
              std::string::npos);
}

}  // namespace
