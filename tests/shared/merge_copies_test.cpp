// SPDX-License-Identifier: MIT
// The exported merges leave what they are given as it was, so a caller can merge one radio or
// service into several vectors.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "document/json_cfg_plus.h"

namespace {

vns_entry service(int radioId, int ssidId, int index, const std::string& name) {
    vns_entry s;
    s.radioId = radioId;
    s.ssidId = ssidId;
    s.index = index;
    s.elements.emplace_back("name", name, "name");
    return s;
}

std::string render(const vns_entry& s) {
    std::string out = std::to_string(s.radioId) + "/" + std::to_string(s.ssidId) + "/" +
                      std::to_string(s.index) + ":";
    for (const cfgElement& e : s.elements) out += " " + e.toString(0);
    return out;
}

std::string render(const radio_entry& r) {
    std::string out = std::to_string(r.id) + " " + r.name + ":";
    for (const cfgElement& e : r.elements) out += " " + e.toString(0);
    for (const vns_entry& s : r.wlans) out += " [" + render(s) + "]";
    for (const vns_entry& s : r.meshpoints) out += " {" + render(s) + "}";
    return out;
}

TEST(MergeCopies, OneRadioOrServiceMergedIntoTwoVectorsArrivesWholeInBoth) {
    radio_entry radio{2, "radio2", {cfgElement("channel", 36, "channel")}, {}, {}};
    radio.wlans.push_back(service(2, 7, 0, "guest"));
    radio.meshpoints.push_back(service(2, 9, 1, "mesh"));
    const std::string radioBefore = render(radio);
    std::vector<radio_entry> inserted;
    std::vector<radio_entry> merged = {
        {2, "radio2", {cfgElement("channel", 1, "channel")}, {}, {}}};
    jsonCfgPlus::mergeRadioCfgElements(inserted, radio);
    jsonCfgPlus::mergeRadioCfgElements(merged, radio);
    ASSERT_EQ(inserted.size() + merged.size(), 2u);
    EXPECT_EQ(render(inserted[0]), radioBefore);
    EXPECT_EQ(render(merged[0]), "2 radio2: \"channel\": 36 [2/7/0: \"name\": \"guest\"]");
    EXPECT_EQ(render(radio), radioBefore);

    vns_entry wlan = service(1, 3, 2, "corp");
    wlan.elements.emplace_back("vlan", 20, "vlan");
    const std::string wlanBefore = render(wlan);
    std::vector<vns_entry> appended;
    std::vector<vns_entry> replaced = {service(1, 3, 5, "old")};
    jsonCfgPlus::mergeVnsCfgElement(appended, wlan);
    jsonCfgPlus::mergeVnsCfgElement(replaced, wlan);
    ASSERT_EQ(appended.size() + replaced.size(), 2u);
    EXPECT_EQ(render(appended[0]), wlanBefore);
    EXPECT_EQ(render(replaced[0]), "1/3/5: \"name\": \"corp\" \"vlan\": 20");
    EXPECT_EQ(render(wlan), wlanBefore);
}

}  // namespace
