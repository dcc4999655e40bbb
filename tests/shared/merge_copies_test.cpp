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

TEST(MergeCopies, OneRadioMergedIntoTwoVectorsArrivesWholeInBoth) {
    radio_entry radio;
    radio.id = 2;
    radio.name = "radio2";
    radio.elements.emplace_back("channel", 36, "channel");
    radio.wlans.push_back(service(2, 7, 0, "guest"));
    radio.meshpoints.push_back(service(2, 9, 1, "mesh"));
    const std::string before = render(radio);

    radio_entry present;
    present.id = 2;
    present.name = "radio2";
    present.elements.emplace_back("channel", 1, "channel");
    struct Row {
        const char* what;
        std::vector<radio_entry> radios;
        std::string expected;
    };
    Row rows[] = {
        {"inserted", {}, before},
        {"merged into the same id",
         {present},
         "2 radio2: \"channel\": 36 [2/7/0: \"name\": \"guest\"]"},
    };
    for (Row& row : rows) {
        SCOPED_TRACE(row.what);
        jsonCfgPlus::mergeRadioCfgElements(row.radios, radio);
        ASSERT_EQ(row.radios.size(), 1u);
        EXPECT_EQ(render(row.radios[0]), row.expected);
        EXPECT_EQ(render(radio), before);
    }
}

TEST(MergeCopies, OneServiceMergedIntoTwoVectorsArrivesWholeInBoth) {
    vns_entry wlan = service(1, 3, 2, "corp");
    wlan.elements.emplace_back("vlan", 20, "vlan");
    const std::string before = render(wlan);

    std::vector<vns_entry> appended;
    std::vector<vns_entry> merged = {service(1, 3, 5, "old")};
    jsonCfgPlus::mergeVnsCfgElement(appended, wlan);
    jsonCfgPlus::mergeVnsCfgElement(merged, wlan);

    ASSERT_EQ(appended.size(), 1u);
    EXPECT_EQ(render(appended[0]), before);
    ASSERT_EQ(merged.size(), 1u);
    EXPECT_EQ(render(merged[0]), "1/3/5: \"name\": \"corp\" \"vlan\": 20");
    EXPECT_EQ(render(wlan), before);
}

}  // namespace
