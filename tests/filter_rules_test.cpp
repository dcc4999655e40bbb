// SPDX-License-Identifier: MIT
// Filter rules of a WLAN service, read back through the record layout the daemon reads, with
// the failures that stop a parse and the policy elements built beside the rules.
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
        parsed = r != nullptr;
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
    bool parsed = false;
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

TEST_F(FilterRules, ActionsDirectionsAndAddresses) {
    struct Row {
        const char* name;
        std::string text;
        uint16_t filter, action, eth;
    } rows[] = {
        {"deny", acl("mac", true, R"({"allow": "deny"})"), 0x0100, 0x0009, 0},
        {"contain", acl("mac", true, R"({"allow": "contain-to-vlan",
            "cen_contain_to_vlan": {"vlan": 4094}})"),
         0x0100, 0x0808, 0},
        {"other action", acl("mac", false, R"({"allow": "permit"})"), 0x0080, 0x0008, 0},
        {"none", acl("mac", false, R"({"allow": "none"})"), 0x0080, 0x0000, 0},
        {"dmac out", acl("mac", false, R"({"dmac": "00-11-22-33-44-55", "match_type": "arp"})"),
         0x0888, 0, 0x0806},
        {"smac in", acl("mac", true, R"({"smac": "00-11-22-33-44-55", "match_type": "34525"})"),
         0x0308, 0, 0x86DD},
        {"both macs", acl("mac", true, R"({"smac": "00-11-22-33-44-55",
            "dmac": "00-11-22-33-44-55"})"),
         0x0304, 0, 0},
        {"dip out", acl("ip", false, R"({"dip": "10.0.0.1"})"), 0x0880, 0, 0x0800},
        {"dip in", acl("ip", true, R"({"dip": "10.0.0.1"})"), 0x0104, 0, 0x0800},
        {"sip out allowed", acl("ip", false, R"({"sip": "10.0.0.1", "allow": "allow"})"), 0x8082,
         0x0008, 0x0800},
        {"sport out", acl("ip", false, R"({"low_sport": 53, "protocol": 17})"), 0x00D8, 0, 0x0800},
        {"ipv6 in ip list", acl("ip", true, R"({"sip": "2001:db8::1/64"})"), 0x0300, 0, 0x86DD},
        {"dot1p", acl("ipv6", true, R"({"match_dot1p": 7})"), 0x2100, 0, 0x0800},
        {"unknown fqdn", acl("ip", true, R"({"dns_name": "a.example", "allow": "deny"})"), 0x0186,
         0x0009, 0x0800},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        auto r = rules(row.text);
        ASSERT_EQ(r.size(), 1u) << output;
        EXPECT_EQ(r[0].rule.r_filter_flags, row.filter)
            << filterFlagsToString(r[0].rule.r_filter_flags);
        EXPECT_EQ(r[0].rule.r_action_flags, row.action);
        EXPECT_EQ(r[0].rule.r_eth_type, row.eth);
        EXPECT_EQ(r[0].rule.r_app_sig_disp_id, 0u);
    }
    // The last row's name is unknown to the maps: kept after the warning.
    EXPECT_NE(output.find("warning: the specified FQDN rule not found its definition."),
              std::string::npos);
    auto v6 = rules(acl("ipv6", false, R"({"dip": "2001:db8::1/64", "allow": "redirect"})"));
    ASSERT_EQ(v6.size(), 1u);
    EXPECT_EQ(v6[0].rule.r_ip6addr[0], 0x20);
    EXPECT_EQ(v6[0].rule.r_ip6addr[15], 0x01);
    EXPECT_EQ(v6[0].rule.r_ipmasklen, 64);
    EXPECT_EQ(v6[0].r_ext_action_flags, 0x2000);
}

// Keys each filling only their own field, host-name rules held to their flags, white-list rules
// without enforcement and unknown names kept: the first rule of the WLAN's array.
TEST_F(FilterRules, EachKeyFillsOnlyItsOwnFields) {
    const std::string warnFqdn = "warning: the specified FQDN rule not found its definition.";
    const std::string portal = R"("captive_portal": [{"name": "cp", "dns_whitelist": "d",
        "cen_http_ports": "80"}], "dns_whitelist": [{"name": "d", "entry": [{"host": "a.example"},
        {"host": "b.example"}]}])";
    struct Row {
        const char* name;
        std::string text;
        size_t count;
        uint16_t filter, portMin, portMax;
        uint8_t mask;  // every byte of r_macmask
        std::string message;
    } rows[] = {
        {"mac without mask", acl("mac", true, R"({"precedence": 10, "allow": "deny",
            "smac": "00-11-22-33-44-55"})"),
         1, 0x0300, 0, 0, 0x00, ""},
        {"mac with mask", acl("mac", false, R"({"dmac": "00-11-22-33-44-55",
            "dmac_mask": "ff-ff-ff-ff-ff-ff"})"),
         1, 0x0880, 0, 0, 0xFF, ""},
        {"dns name with ports and protocol", acl("ip", true, R"({"precedence": 1,
            "dns_name": "nowhere.example", "low_dport": 443, "high_dport": 443, "protocol": 6})"),
         1, 0x0186, 443, 443, 0, warnFqdn},
        {"dns name outbound with an address", acl("ip", false, R"({"dns_name": "x.example",
            "dip": "10.0.0.1", "low_sport": 53})"),
         1, 0x0186, 53, 0, 0, warnFqdn},
        {"dns name keeps the ToS bit", acl("ip", true, R"({"dns_name": "x.example",
            "match_dot1p": 3})"),
         1, 0x2186, 0, 0, 0, warnFqdn},
        {"empty dns name", acl("ip", true, R"({"dns_name": ""})"), 1, 0x0186, 0, 0, 0, warnFqdn},
        {"lone low dport", acl("ip", true, R"({"low_dport": 80})"), 1, 0x0160, 80, 0, 0, ""},
        {"lone high dport", acl("ip", true, R"({"high_dport": 8080})"), 1, 0x0160, 0, 8080, 0, ""},
        {"lone low sport", acl("ip", false, R"({"low_sport": 53})"), 1, 0x00D0, 53, 0, 0, ""},
        {"white list without enforcement", document(R"("captive_portal": "cp")", portal), 2, 0x0186,
         0, 0, 0, warnFqdn},
        {"white list, portal not enforced",
         document(R"("captive_portal": "cp", "captive_portal_enforcement": "none")", portal), 2,
         0x0186, 0, 0, 0, warnFqdn},
        {"unknown application",
         document(R"("app_policy": "p")", R"("app_policy": [{"name": "p", "rule_entry": [
            {"precedence": 3, "allow": "deny", "canned_app": "Unknown"}]}])"),
         1, 0x0180, 0, 0, 0,
         "[WARN] application policy: no signature for Unknown in rule with precedence: 3, kept "
         "with id 0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        output.clear();
        auto r = rules(row.text);
        EXPECT_EQ(r.size(), row.count) << output;
        if (r.empty()) continue;
        const FILTER_RULE_ENTRY& rule = r[0].rule;
        EXPECT_EQ(rule.r_filter_flags, row.filter) << filterFlagsToString(rule.r_filter_flags);
        EXPECT_EQ(rule.r_port_min, row.portMin);
        EXPECT_EQ(rule.r_port_max, row.portMax);
        EXPECT_EQ(rule.r_app_sig_disp_id, 0u);
        for (uint8_t byte : rule.r_macmask) EXPECT_EQ(byte, row.mask);
        if (!row.message.empty()) {
            EXPECT_NE(output.find(row.message), std::string::npos) << output;
        }
    }
}

TEST_F(FilterRules, InvalidRulesFailTheParseWithTheirMessage) {
    struct Row {
        std::string text;
        const char* message;
    } rows[] = {
        {acl("mac", true, R"({"dmac": "00:11:22:33:44:55"})"),
         "MAC address in the MAC ACL is not valid: 00:11:22:33:44:55"},
        {acl("mac", true, R"({"smac": 5})"), "MAC address in the MAC ACL is not valid: 5"},
        {acl("mac", true, R"({"dmac_mask": "ff-ff"})"),
         "MAC mask in the MAC ACL is not valid: ff-ff"},
        {acl("mac", true, R"({"match_type": "IP"})"), "Ether type in the MAC ACL is not valid: IP"},
        {acl("mac", true, R"({"match_type": "70000"})"),
         "Ether type in the MAC ACL is not valid: 70000"},
        {acl("ip", true, R"({"match_type": 2048})"), "Ether type in the IP ACL is not valid: 2048"},
        {acl("mac", true, R"({"precedence": 4, "allow": "contain-to-vlan",
            "cen_contain_to_vlan": {"vlan": 4095}})"),
         "vlan: 4095 is not valid in rule with precedence: 4"},
        {acl("ip", true, R"({"precedence": 2, "allow": "contain-to-vlan"})"),
         "vlan: 0 is not valid in rule with precedence: 2"},
        {acl("mac", true, R"({"precedence": 9, "smac": "00-11-22-33-44-55",
            "dmac": "00-11-22-33-44-66"})"),
         "Source and Dest MAC not the same: in rule with precedence: 9"},
        {acl("ip", false, R"({"precedence": 3, "sip": "10.0.0.1", "dip": "10.0.0.2"})"),
         "Source and Dest IP address not the same: in rule with precedence: 3"},
        {acl("ip", true, R"({"dip": "10.0.0.0/33"})"),
         "IP address in the IP ACL is not valid: 10.0.0.0/33"},
        {acl("ipv6", true, R"({"dip": "::1/129"})"),
         "IP address in the IP ACL is not valid: ::1/129"},
        {acl("ip", true, R"({"low_dport": 65536})"), "Port in the IP ACL is not valid: 65536"},
        {acl("ip", true, R"({"low_sport": "80"})"), "Port in the IP ACL is not valid: 80"},
        {acl("ip", true, R"({"protocol": 256})"), "Protocol in the IP ACL is not valid: 256"},
        {acl("ip", true, R"({"protocol": "tcp"})"), "Protocol in the IP ACL is not valid: tcp"},
        {acl("ip", true, R"({"precedence": "1"})"), "Precedence in the ACL rule is not valid: 1"},
        {acl("ip", true, R"({"allow": true})"), "Action in the ACL rule is not valid: true"},
        {acl("ip", true, R"({"match_dot1p": 8})"), "ToS match in the rule is not valid"},
        {acl("ip", true, R"({"transmit_queue": 16})"),
         "Class of service in the rule is not valid: transmit_queue: 16"},
        {acl("ip", true, R"({"egress_enable": 1})"),
         "Class of service in the rule is not valid: egress_enable: 1"},
        {document(R"("captive_portal": "cp")",
                  R"("captive_portal": [{"name": "cp", "cen_http_ports": "80,65536"}])"),
         "HTTP port of the captive portal is not valid: 65536"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.message);
        EXPECT_TRUE(element(row.text).empty());
        EXPECT_FALSE(parsed);
        EXPECT_NE(output.find(row.message), std::string::npos) << output;
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
    std::string many;
    for (int i = 0; i < 300; ++i)
        many += (i ? "," : "") + std::string("{\"precedence\": ") + std::to_string(i) + "}";
    auto r = rules(acl("ip", true, many));
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
