// The build driver, the interface build and the service merge where a document is odd;
// whole documents are golden files (golden_test).
#include <gtest/gtest.h>

#include "document/json_cfg_plus.h"
#include "test_support.h"

namespace {

using testsupport::build;
using testsupport::Built;

std::vector<std::string> names(const std::list<cfgElement>& list) {
    std::vector<std::string> out;
    for (const cfgElement& e : list) out.push_back(e.name);
    return out;
}

TEST(BuildDriver, MissingDeviceFailsEvenWithRedisSource) {
    jsonCfgPlus doc;
    Built b = build(doc, R"({"ip": "127.0.0.1", "port": 1, "key": "k", "personality": "x"})");
    EXPECT_EQ(b.result, -1);
    EXPECT_NE(b.output.find("[ERR] not found mandatory device.\n"), std::string::npos);
    EXPECT_TRUE(doc.m_global.empty());
}

TEST(BuildDriver, UnresolvedReferencesPrintInformationAndGoOn) {
    jsonCfgPlus doc;
    Built b = build(doc, R"({"device": {"profile_name": "p", "rf_domain_name": 5, "x": 1},
                             "profile": [{"name": "p", "management_policy": "none"}],
                             "management_policy": [{"name": "m"}]})");
    ASSERT_EQ(b.result, 0);
    EXPECT_NE(b.output.find("device: profile resolved.\n[INFO] management policy not resolved.\n"
                            "[INFO] device: rf_domain not resolved\n"),
              std::string::npos)
        << b.output;
    EXPECT_EQ(names(doc.m_global), (std::vector<std::string>{"x"}));

    jsonCfgPlus noProfile;
    b = build(noProfile, R"({"device": {"profile_name": "q"}, "profile": [{"name": "p"}]})");
    EXPECT_NE(b.output.find("[INFO] device: profile not resolved\n"), std::string::npos);
}

TEST(BuildDriver, EmptyAssocAclYieldsEmptyRuleArray) {
    jsonCfgPlus doc;
    ASSERT_EQ(build(doc, R"({"assoc_acl": [], "device": {}})").result, 0);
    ASSERT_EQ(doc.m_global.size(), 1u);
    EXPECT_EQ(doc.m_global.front().name, "assoc_acl/rule");
    EXPECT_EQ(doc.m_global.front().kind, CFG_OBJ_ARRAY);
    EXPECT_TRUE(doc.m_global.front().objArray.empty());
}

int g_callbackCalls = 0;
int failingPipeline(jsonCfgPlus* doc) {
    ++g_callbackCalls;
    return doc->m_global.empty() ? 1 : 5;
}

TEST(BuildDriver, PipelineResultFailsTheBuildAndResetsTheLists) {
    jsonCfgPlus doc;
    doc.m_callback = failingPipeline;
    g_callbackCalls = 0;
    Built b = build(doc, R"({"key": "k", "ip": "h", "device": {"a": 1},
                             "profile": [{"name": "p", "interface": []}]})");
    EXPECT_EQ(b.result, 5);
    EXPECT_EQ(g_callbackCalls, 1);
    EXPECT_TRUE(doc.m_global.empty());
    EXPECT_EQ(doc.m_redis_key, "");
    EXPECT_EQ(doc.m_redis_ip, "h");
}

TEST(InterfaceBuild, SkipsWhatItCannotUse) {
    jsonCfgPlus doc;
    Built b = build(doc, R"({"device": {"interface": [
        5, "radio1", {"type": "radio"}, {"name": 3, "type": "radio"},
        {"name": "radioX", "type": "radio"}, {"name": "radio", "type": "radio"},
        {"name": "radio0", "type": "radio"},
        {"name": "radio99999999999999", "type": "radio"},
        {"name": "radio1", "type": "radio",
         "wlanbssmap": [7, {"wlan": "w"}, {"bss": 1}, {"bss": 2, "wlan": "nope"},
                        {"bss": 3, "wlan": 4}, {"bss": 4, "wlan": "noid"},
                        {"bss": 0, "wlan": "w"}],
         "meshpointbssmap": {"bss": 1}}]},
      "wlan": [{"name": "w", "cen_ssid_id": 3}, {"name": "noid"}]})");
    ASSERT_EQ(b.result, 0);
    EXPECT_NE(b.output.find("[ERROR] cen_ssid_id is not specified.\n"), std::string::npos);
    EXPECT_NE(b.output.find("[WARN] "), std::string::npos);
    ASSERT_EQ(doc.m_radios.size(), 2u);  // radio0 and radio1
    ASSERT_EQ(doc.m_radios[1].wlans.size(), 1u);
    EXPECT_EQ(doc.m_radios[1].wlans[0].index, -1);  // bss 0
    EXPECT_TRUE(doc.m_radios[1].meshpoints.empty());
}

}  // namespace
