// SPDX-License-Identifier: MIT
// Filter rules of a WLAN service read back through the record layout the daemon reads: the
// values at the offsets of every field, and the limit; one rule of each form, each refusal and
// the order in which the lists join are golden (filter_rules).
#include <gtest/gtest.h>

#include <cstring>

#include "convert/converter.h"
#include "convert/filter_print.h"
#include "signature/signature_maps.h"
#include "test_support.h"

namespace {

using Bytes = std::vector<uint8_t>;

// A WLAN "w" whose inbound IP ACL holds rules.
std::string ipAcl(const std::string& rules) {
    return R"({"device": {"name": "ap", "interface": [{"name": "radio1", "type": "radio",
              "wlanbssmap": [{"bss": 1, "wlan": "w"}]}]},
              "wlan": [{"name": "w", "cen_ssid_id": 1, "ip_in_acl": "a"}],
              "ip_acl": [{"name": "a", "ip_rules": [)" +
           rules + "]}]}";
}

// Points the signature maps at an empty directory, so no lookup reads the AP's files.
class FilterRules : public ::testing::Test {
  protected:
    void SetUp() override {
        cfgPlusSignatureMaps::m_inst.clear();
        cfgPlusSignatureMaps::m_inst.setPaths(dir.file("a.xml"), dir.file("d.xml"),
                                              dir.file("ma.xml"), dir.file("md.xml"));
    }
    void TearDown() override { cfgPlusSignatureMaps::m_inst.clear(); }

    // Parses with the pipeline; the bytes of the WLAN's filter rules, or none.
    Bytes element(const std::string& text) {
        apiCfgPlusResult* r = testsupport::parseText(text, jsonCfgPlusParserCallback, &output);
        Bytes out;
        if (r != nullptr && r->vnsCount > 0) {
            const apiCfgPlusEntry* e = testsupport::findEntry(r->vnsList[0], "cen_filter_rules");
            if (e != nullptr && e->type == CFG_BYTES) {
                const auto* at = static_cast<const uint8_t*>(e->value);
                out.assign(at, at + e->size);
            }
        }
        testsupport::captureStdout([r] { freeJsonCfgPlus(r); });
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
    Bytes b = element(ipAcl(R"({"precedence": 7, "allow": "contain-to-vlan",
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

TEST_F(FilterRules, PastTheLimitTheRestIsDroppedWithAWarning) {
    Bytes b = element(ipAcl(testsupport::joined(
        300, [](size_t i) { return "{\"precedence\": " + std::to_string(i) + "}"; })));
    ASSERT_EQ(b.size(), 256 * sizeof(apiCfgPlusFilterRule));
    EXPECT_EQ(at32(b, 255 * sizeof(apiCfgPlusFilterRule)), 255u);  // the last kept
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
