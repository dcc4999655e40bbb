// SPDX-License-Identifier: MIT
// The default action's VLAN word, the resource table and external applications, byte by byte;
// the default class of service is golden (class_of_service).
#include <gtest/gtest.h>

#include <cstring>

#include "convert/converter.h"
#include "convert/filter_print.h"
#include "signature/signature_maps.h"
#include "test_support.h"

namespace {

using List = std::list<cfgElement>;

cfgElement object(List children) {
    return cfgElement("", std::move(children));
}

TEST(ClassOfService, DefaultActionVlanWord) {
    cfgPlusApiConverter c;
    std::string action = "deny";
    int vlan = 7;
    c.jsonCfgPlusVnsDefaultAction(
        object({cfgElement("allow", "contain-to-vlan"), cfgElement("cen_contain_to_vlan/vlan", 0)}),
        action, vlan);
    EXPECT_EQ(action, "contain-to-vlan");
    EXPECT_EQ(vlan, 7) << "id 0 leaves the word";
    c.jsonCfgPlusVnsDefaultAction(object({cfgElement("cen_contain_to_vlan/vlan", 10)}), action,
                                  vlan);
    EXPECT_EQ(vlan, 0xA00A);
    c.jsonCfgPlusVnsDefaultAction(object({cfgElement("cen_contain_to_vlan/vlan", 0x1005),
                                          cfgElement("cen_contain_to_vlan/cen_tagged", true),
                                          cfgElement("cen_contain_to_vlan/cen_bridged", false)}),
                                  action, vlan);
    EXPECT_EQ(vlan, 0x6005);
}

TEST(ClassOfService, ResourceTableKeepsNinePairs) {
    cfgObjArray limits;
    for (int i = 1; i <= 10; ++i) {
        limits.push_back(object({cfgElement("cen_rate_limit/ingress_rate", i * 100),
                                 cfgElement("cen_rate_limit/egress_rate", i)}));
    }
    // A longer vector than the record's: the table's own bound of nine pairs still holds.
    std::vector<unsigned int> slots(20, 0);
    cfgPlusApiConverter().jsonCfgPlusVnsResourceTable(cfgElement("cen_rate_limit", limits), slots);
    EXPECT_EQ(slots[0], 100u);
    EXPECT_EQ(slots[1], 1u);
    EXPECT_EQ(slots[16], 900u);
    EXPECT_EQ(slots[17], 9u);
    EXPECT_EQ(slots[18] + slots[19], 0u) << "a tenth pair was written";

    apiCfgPlusEntry entry = {-1,           -1, CFG_BYTES, const_cast<char*>("t"),
                             slots.data(), 16, nullptr,   nullptr};
    char* text = printApiCfgPlusResourceTable(&entry, 0);
    EXPECT_STREQ(text, "\"t\": [\n  {\"irl\": 100, \"orl\": 1},\n  {\"irl\": 200, \"orl\": 2}\n]");
    free(text);
}

TEST(ClassOfService, ExternalApplicationRecords) {
    testsupport::TempDir dir;
    cfgPlusSignatureMaps& maps = cfgPlusSignatureMaps::m_inst;
    maps.clear();
    maps.setPaths(dir.file("a.xml"), dir.file("d.xml"), dir.file("m.xml"), dir.file("n.xml"));
    testsupport::writeFile(dir.file("a.xml"),
                           R"(<Cockatrice><AppGroupID name="Chat" value="31"/></Cockatrice>)");
    testsupport::writeFile(dir.file("d.xml"), "<DisplayNames/>");
    const std::string p = "cen_ext_app_cfg_tbl/cen_ext_app_";
    List objects = {
        object({cfgElement(p + "disp_name", std::string(40, 'n')),
                cfgElement(p + "match_str", std::string(70, 'm')), cfgElement(p + "disp_id", 5500),
                cfgElement(p + "id", -2), cfgElement(p + "group_name", "Chat")}),
        object({cfgElement(p + "group_id", 5), cfgElement(p + "group_name", "Chat")}),
        object({cfgElement(p + "group_name", "Chat"), cfgElement(p + "group_id", 6)}),
        object({cfgElement(p + "group_name", "Unknown")}),
    };
    std::vector<EXT_APP_CONFIG> apps;
    testsupport::captureStdout([&] { cfgPlusApiConverter().jsonCfgPlusExtAppl(objects, apps); });
    ASSERT_EQ(apps.size(), 4u);
    const auto* b = reinterpret_cast<const uint8_t*>(&apps[0]);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(b)), std::string(32, 'n'));
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(b + 33)), std::string(64, 'm'));
    EXPECT_EQ(b[98] | b[99], 0);
    EXPECT_EQ(b[100] | b[101] << 8, 5500);
    EXPECT_EQ(b[104], 0xFE);
    EXPECT_EQ(b[108], 31);
    EXPECT_EQ(apps[1].groupId, 5u) << "an earlier id wins";
    EXPECT_EQ(apps[2].groupId, 6u) << "a later id overwrites";
    EXPECT_EQ(apps[3].groupId, 0u);
    EXPECT_EQ(printApiCfgPlusFilterOneExtAppl(apps[3], 0),
              "{\n  \"dispName\": \"\",\n  \"dispId\": 0,\n  \"matchStr\": \"\",\n"
              "  \"appId\": 0,\n  \"groupId\": 0\n}");
    maps.clear();
}

}  // namespace
