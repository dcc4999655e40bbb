// SPDX-License-Identifier: MIT
// Filter rules of a WLAN service read back through the record layout the daemon reads: the
// offsets of every field, the order in which the lists join, and the limit; one rule of each
// form, and each refusal, is golden (filter_rules).
#include <gtest/gtest.h>

#include <cstring>

#include "convert/converter.h"
#include "convert/filter_print.h"
#include "signature/signature_maps.h"
#include "test_support.h"

namespace {

using Bytes = std::vector<uint8_t>;

// A WLAN "w" naming the objects in wlanRefs, with the top-level objects in objects.
std::string document(const std::string& wlanRefs, const std::string& objects) {
    return R"({"device": {"name": "ap", "interface": [{"name": "radio1", "type": "radio",
              "wlanbssmap": [{"bss": 1, "wlan": "w"}]}]},
              "wlan": [{"name": "w", "cen_ssid_id": 1, "vlans": [{"vlan": 20}])" +
           (wlanRefs.empty() ? "" : ", " + wlanRefs) + "}]" +
           (objects.empty() ? "" : ", " + objects) + "}";
}

// An inbound (or outbound) ACL of kind "mac" / "ip" / "ipv6" holding rules.
std::string acl(const std::string& kind, bool inbound, const std::string& rules) {
    std::string list = kind == "mac" ? "mac_rules" : "ip_rules";
    return document("\"" + kind + (inbound ? "_in_acl" : "_out_acl") + "\": \"a\"",
                    "\"" + kind + "_acl\": [{\"name\": \"a\", \"" + list + "\": [" + rules + "]}]");
}

// Points the signature maps at an empty directory, so no lookup reads the AP's files.
class FilterRules : public ::testing::Test {
  protected:
    void SetUp() override {
        cfgPlusSignatureMaps::m_inst.clear();
        cfgPlusSignatureMaps::m_inst.setPaths(dir.file("a.xml"), dir.file("d.xml"),
                                              dir.file("ma.xml"), dir.file("md.xml"));
        testsupport::writeFile(
            dir.file("a.xml"),
            R"(<Cockatrice><AppGroupID name="Streaming" value="17"/></Cockatrice>)");
        testsupport::writeFile(
            dir.file("d.xml"),
            R"(<DisplayNames><DisplayName name="BitTorrent" id="1204"/></DisplayNames>)");
    }
    void TearDown() override { cfgPlusSignatureMaps::m_inst.clear(); }

    // Parses with the pipeline; the WLAN's element named name, or empty.
    Bytes element(const std::string& text, const std::string& name = "cen_filter_rules") {
        apiCfgPlusResult* r = testsupport::parseText(text, jsonCfgPlusParserCallback, &output);
        Bytes out;
        if (r != nullptr && r->vnsCount > 0) {
            const apiCfgPlusEntry* e = testsupport::findEntry(r->vnsList[0], name);
            if (e != nullptr && e->type == CFG_BYTES) {
                const auto* at = static_cast<const uint8_t*>(e->value);
                out.assign(at, at + e->size);
            }
        }
        testsupport::captureStdout([r] { freeJsonCfgPlus(r); });
        return out;
    }
    std::vector<apiCfgPlusFilterRule> rules(const std::string& text) {
        Bytes bytes = element(text);
        std::vector<apiCfgPlusFilterRule> out(bytes.size() / sizeof(apiCfgPlusFilterRule));
        if (!out.empty()) std::memcpy(out.data(), bytes.data(), out.size() * sizeof out[0]);
        return out;
    }

    testsupport::TempDir dir;
    std::string output;
};

uint32_t at32(const Bytes& b, size_t off) {
    return b[off] | b[off + 1] << 8 | b[off + 2] << 16 | uint32_t(b[off + 3]) << 24;
}
uint16_t at16(const Bytes& b, size_t off) {
    return uint16_t(b[off] | b[off + 1] << 8);
}

TEST_F(FilterRules, RecordLayoutIsTheDocumentedContract) {
    Bytes b = element(acl("ip", true, R"({"precedence": 7, "allow": "contain-to-vlan",
        "dip": "192.168.1.0/24", "protocol": 17, "low_dport": 1000, "high_dport": 2000,
        "cen_match_tos": 184, "cen_match_tosmask": 252, "mark_8021p": 5, "transmit_queue": 3,
        "egress_enable": true, "egress_rate": 2, "cen_contain_to_vlan": {"vlan": 10}})"));
    ASSERT_EQ(b.size(), 76u) << output;
    struct Field {
        size_t offset, width;
        uint32_t value;
    } fields[] = {{0, 4, 7},       {32, 4, 0x0001A8C0}, {36, 2, 0xC16C},
                  {38, 2, 0x0D58}, {40, 2, 0x0800},     {42, 1, 24},
                  {43, 1, 17},     {44, 1, 184},        {45, 1, 5},  // mask code of 252
                  {46, 2, 1000},   {48, 2, 2000},       {50, 2, 0xA00A},
                  {66, 1, 0x53},   {67, 1, 0xF2},       {72, 2, 0}};
    for (const Field& f : fields) {
        uint32_t value = f.width == 4   ? at32(b, f.offset)
                         : f.width == 2 ? at16(b, f.offset)
                                        : b[f.offset];
        EXPECT_EQ(value, f.value) << "offset " << f.offset;
    }
}

TEST_F(FilterRules, ListsMergeByPrecedenceAndJoinInTheirOrder) {
    std::string text = document(
        R"("mac_in_acl": "m1", "mac_out_acl": "m2", "ip_in_acl": "i1", "ipv6_out_acl": "v6",
           "app_policy": "p", "captive_portal": "cp", "captive_portal_enforcement": "")",
        R"("mac_acl": [{"name": "m1", "mac_rules": [{"precedence": 30}, {"precedence": 10}]},
                       {"name": "m2", "mac_rules": [{"precedence": 20}, {"precedence": 10}]}],
           "ip_acl": [{"name": "i1", "ip_rules": [{"precedence": 1}]}],
           "ipv6_acl": [{"name": "v6", "ip_rules": [{"precedence": 0}]}],
           "app_policy": [{"name": "p", "rule_entry": [{"precedence": 2, "canned_app": "BitTorrent"},
                {"precedence": 3, "canned_app": "Unknown"}, {"precedence": 4, "app_category": "Streaming"}]}],
           "captive_portal": [{"name": "cp", "dns_whitelist": "d", "cen_http_ports": "80,8080"}],
           "dns_whitelist": [{"name": "d", "entry": [{"host": "portal.example"}]}],
           "cen_ext_app_cfg_tbl": [{"cen_ext_app_disp_name": "P", "cen_ext_app_match_str": "portal.example",
                "cen_ext_app_disp_id": 5563, "cen_ext_app_id": 77, "cen_ext_app_group_id": 9}])");
    auto r = rules(text);
    ASSERT_EQ(r.size(), 12u) << output;
    // precedence, direction flag: inbound first on equal precedence
    const uint32_t precedence[] = {10, 10, 20, 30, 1, 0, 0, 0, 0, 2, 3, 4};
    const uint16_t direction[] = {0x0100, 0x0080, 0x0080, 0x0100, 0x0100, 0x0080};
    for (size_t i = 0; i < 12; ++i) EXPECT_EQ(r[i].rule.precedence, precedence[i]) << i;
    for (size_t i = 0; i < 6; ++i) EXPECT_EQ(r[i].rule.r_filter_flags, direction[i]) << i;
    EXPECT_EQ(r[6].rule.r_app_sig_disp_id, 5563u);
    EXPECT_EQ(r[6].rule.r_app_sig_group_id, 9u);
    EXPECT_EQ(r[6].rule.r_fixed_app_id, 77u);
    EXPECT_EQ(r[7].rule.r_port_min, 80);
    EXPECT_EQ(r[8].rule.r_port_max, 8080);
    EXPECT_EQ(r[8].rule.r_filter_flags, 0x0128);
    EXPECT_EQ(r[9].rule.r_app_sig_disp_id, 1204u);
    EXPECT_EQ(r[11].rule.r_app_sig_group_id, 17u);

    // Not enforced: the white list stays, the HTTP ports add no rule.
    std::string open = text;
    open.replace(open.find(R"("captive_portal_enforcement": "")"), 32,
                 R"("captive_portal_enforcement": "none")");
    EXPECT_EQ(rules(open).size(), 10u);
}

TEST_F(FilterRules, PastTheLimitTheRestIsDroppedWithAWarning) {
    auto r = rules(acl("ip", true, testsupport::joined(300, [](size_t i) {
                           return "{\"precedence\": " + std::to_string(i) + "}";
                       })));
    ASSERT_EQ(r.size(), 256u);
    EXPECT_EQ(r.back().rule.precedence, 255u);
    EXPECT_NE(
        output.find("[WARN] jsonCfgPlusVnsFilters: service \"w\" (radio 1, ssid id 1) has 300 "
                    "filter rules, only the first 256 are kept"),
        std::string::npos)
        << output;
}

TEST(FilterPrint, FlagWordsInTheirPrintOrder) {
    EXPECT_EQ(
        actionFlagsToString(0xFFFF),
        "ACCESS_CTRL,DENY,VLAN,REPLICATE,COS_DEFINED,COS_UP,COS_TOS,COS_TXQ,COS_IRL,COS_ORL,");
    EXPECT_EQ(extActionFlagsToString(0xFFFF), "REDIRECTION,MIRRORN_DEFINED,MIRRORN,");
    EXPECT_EQ(filterFlagsToString(0xFFFF),
              "ETHER_TYPE,SOURCE_IP_OUT,DEST_IP_IN,PROT_TYPE,SOURCE_PORT_OUT,DEST_PORT_IN,OUT_DIR,"
              "IN_DIR,SOURCE_IP_IN,SOURCE_PORT_IN,DEST_IP_OUT,DEST_PORT_OUT,UP,TOS,SHADOW_FRAG,"
              "SHADOW_ARP,");
    apiCfgPlusFilterRule rule;
    std::memset(&rule, 0, sizeof rule);
    rule.rule.r_action_flags = 0x0009;
    rule.rule.r_ipaddr = 0x0100000A;  // 10.0.0.1 in memory order
    rule.rule.cos_rates = 0x2F;
    std::string text = printApiCfgPlusFilterRule(rule, 1);
    for (const char* line :
         {"\n    \"r_action_flags\": 0x0009 (ACCESS_CTRL,DENY,),\n",
          "\n    \"r_ipaddr\": \"10.0.0.1\",\n", "\n    \"cos:r_rates\": <IRL:2, ORL:15>,\n",
          "\n    \"r_ext_action_flags\": 0x0000 ()\n  }"}) {
        EXPECT_NE(text.find(line), std::string::npos) << line << text;
    }
}

}  // namespace
