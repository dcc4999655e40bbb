// SPDX-License-Identifier: MIT
// The default action's VLAN word and the resource table; the default class of service and the
// external applications are golden (class_of_service, filter_rules).
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

}  // namespace
