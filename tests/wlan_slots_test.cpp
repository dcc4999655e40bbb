// SPDX-License-Identifier: MIT
// The eight WLAN slots per radio where a slot is out of range or taken twice, and the reorder
// by stored SSID ids; meshpoints turned WLANs and whole slot layouts are golden.
#include <gtest/gtest.h>

#include <map>
#include <utility>

#include "convert/converter.h"
#include "test_support.h"

// The value the AP stores per (0-based radio, slot); unlisted slots hold 0.
static std::map<std::pair<int, int>, int> g_stored;

extern "C" int apCfgVlanVIDGet(int radio, int slot) {
    auto it = g_stored.find({radio, slot});
    return it == g_stored.end() ? 0 : it->second;
}

namespace {

using List = std::list<cfgElement>;
vns_entry service(int radioId, int index, int ssidId, List extra = {}) {
    vns_entry v{index, radioId, ssidId, {cfgElement("cen_ssid_id", ssidId, "ssid_id")}};
    v.elements.splice(v.elements.end(), extra);
    return v;
}

radio_entry radio(int id, List elements = {}) {
    return radio_entry{id, "radio" + std::to_string(id), std::move(elements), {}, {}};
}

// Index, radio id, SSID id, then each element's key and rendering.
std::string describe(const vns_entry& v) {
    std::string out =
        std::to_string(v.index) + "," + std::to_string(v.radioId) + "," + std::to_string(v.ssidId);
    for (const cfgElement& e : v.elements) out += " " + e.key + "=" + e.toString(0);
    return out;
}

std::string placeholder(int k, int radioId) {
    std::string r = std::to_string(radioId);
    return std::to_string(k) + "," + r + ",0 radio_id=\"cen_radio_id\": " + r +
           " ssid_id=\"cen_ssid_id\": 0";
}

template <typename Step>
std::string run(jsonCfgPlus& doc, Step step) {
    return testsupport::captureStdout([&] { (cfgPlusApiConverter().*step)(doc); });
}

TEST(WlanOrder, EightSlotsPerRadioAndTheWiredPorts) {
    jsonCfgPlus doc;
    doc.m_radios = {radio(1), radio(5), radio(-3)};  // -3, a bridge port
    doc.m_radios[0].wlans = {service(1, 3, 30), service(1, 0, 10), service(1, -1, 99),
                             service(1, 8, 98), service(1, 3, 31, {cfgElement("x", 1)})};
    const std::string warning = "[WARNING: vns_index is out of range: 8, ignore.\n";
    EXPECT_EQ(run(doc, &cfgPlusApiConverter::jsonCfgPlusVnsOrderWlans), warning + warning);
    std::vector<int> ids;
    for (const radio_entry& r : doc.m_radios) ids.push_back(r.id);
    // The missing wired ports are appended after what the document built.
    EXPECT_EQ(ids, (std::vector<int>{1, 5, -3, 4, 6}));
    const std::vector<vns_entry>& slots = doc.m_radios[0].wlans;
    ASSERT_EQ(slots.size(), 8u);
    EXPECT_EQ(describe(slots[0]), "0,1,10 ssid_id=\"cen_ssid_id\": 10");
    EXPECT_EQ(describe(slots[3]), "3,1,31 ssid_id=\"cen_ssid_id\": 31 =\"x\": 1");
    for (int k : {1, 2, 4, 5, 6, 7}) EXPECT_EQ(describe(slots[k]), placeholder(k, 1));
}

TEST(WlanReorder, SlotsFollowTheSsidIdsStoredOnTheAp) {
    // SSID 6 is stored in slots 2 and 6: the first wins. Two WLANs of SSID 5 meet in slot 4.
    g_stored = {{{1, 4}, 5}, {{1, 6}, 6}, {{1, 2}, 6}};
    jsonCfgPlus doc;
    doc.m_trace = 1;
    doc.m_radios = {radio(2)};
    doc.m_radios[0].wlans = {service(2, 0, 5), service(2, 1, 6), service(2, 2, 7),
                             service(2, 3, 5, {cfgElement("later", true)})};
    EXPECT_EQ(run(doc, &cfgPlusApiConverter::jsonCfgPlusVnsReorderWlans),
              "jsonCfgPlusVnsReorderWlans... \n"
              "VNS[1,0] ssid=5 found existing VNS[1,4]\n"
              "VNS[1,1] ssid=6 found existing VNS[1,2]\n"
              "VNS[1,3] ssid=5 found existing VNS[1,4]\n");
    g_stored.clear();
    const std::vector<vns_entry>& slots = doc.m_radios[0].wlans;
    ASSERT_EQ(slots.size(), 8u);
    EXPECT_EQ(describe(slots[2]), "2,2,6 ssid_id=\"cen_ssid_id\": 6");
    EXPECT_EQ(describe(slots[4]), "4,2,5 ssid_id=\"cen_ssid_id\": 5 =\"later\": true");
    for (int k : {0, 1, 3, 5, 6, 7}) EXPECT_EQ(describe(slots[k]), placeholder(k, 2));
}

}  // namespace
