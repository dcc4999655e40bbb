// Which radio id each interface name gives: radios, wired and bridge ports and the IoT radio
// never merge into one another, and names of any length are read without a crash.
#include <gtest/gtest.h>

#include <set>

#include "document/json_cfg_plus.h"
#include "test_support.h"

namespace {

using testsupport::build;
using testsupport::Built;

std::string withInterfaces(const std::string& items) {
    return R"({"device": {"interface": [)" + items + R"(]},
      "wlan": [{"name": "w1", "cen_ssid_id": 1}, {"name": "w2", "cen_ssid_id": 2},
               {"name": "w3", "cen_ssid_id": 3}]})";
}

const radio_entry* radioNamed(const jsonCfgPlus& doc, const std::string& name) {
    for (const radio_entry& r : doc.m_radios) {
        if (r.name == name) return &r;
    }
    return nullptr;
}

TEST(InterfaceIds, RadioNamesConvertTheirWholeNumber) {
    const std::string zeros(5000, '0');
    struct Row {
        std::string name;
        bool built;
        int id;
        std::string warning;
    };
    const Row rows[] = {
        {"radio0", true, 0, ""},
        {"radio1234567", true, 1234567, ""},
        {"radio2147483647", true, 2147483647, ""},
        {"radio" + zeros + "2", true, 2, ""},
        {"radio2147483648", false, 0, "[WARN] radio number too large, radio skipped: "},
        {"radio99999999999999999999", false, 0, "[WARN] radio number too large, radio skipped: "},
        {"radio", false, 0, "[WARN] radio without a radio number in its name skipped: "},
        {"radioX", false, 0, "[WARN] radio without a radio number in its name skipped: "},
        {"radio-1", false, 0, "[WARN] radio without a radio number in its name skipped: "},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name.substr(0, 40));
        jsonCfgPlus doc;
        Built b = build(doc, withInterfaces(R"({"type": "radio", "name": ")" + row.name + "\"}"));
        ASSERT_EQ(b.result, 0);
        if (row.built) {
            ASSERT_EQ(doc.m_radios.size(), 1u);
            EXPECT_EQ(doc.m_radios[0].id, row.id);
            EXPECT_EQ(b.output.find("[WARN]"), std::string::npos) << b.output;
        } else {
            EXPECT_TRUE(doc.m_radios.empty());
            EXPECT_NE(b.output.find(row.warning + row.name + "\n"), std::string::npos) << b.output;
        }
    }
}

TEST(InterfaceIds, PortNamesAreReadCharacterByCharacter) {
    const std::string longDigits(30000, '7');
    struct Row {
        std::string name;
        bool wired;
        bool bridge;
    };
    const Row rows[] = {
        {"p1", true, false},
        {"p0", true, false},
        {"p", false, false},
        {"p1a", false, false},
        {"P1", false, false},
        {"p-1", false, false},
        {" p1", false, false},
        {"p1\n", false, false},
        {"br0", false, true},
        {"br12", false, true},
        {"br", false, false},
        {"bridge1", false, false},
        {"p" + longDigits, true, false},
        {"br" + longDigits, false, true},
        {"p" + longDigits + "x", false, false},
        {"br" + longDigits + "x", false, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name.substr(0, 40));
        EXPECT_EQ(jsonCfgPlus::isWiredPortInterface(row.name), row.wired);
        EXPECT_EQ(jsonCfgPlus::isBridgePortInterface(row.name), row.bridge);
    }

    // Ports whose number has no id are skipped, saying so.
    jsonCfgPlus doc;
    Built b =
        build(doc, withInterfaces(R"({"name": "p)" + longDigits + R"("}, {"name": "br)" +
                                  longDigits + R"("}, {"name": "p0"}, {"name": "p2147483645"})"));
    ASSERT_EQ(b.result, 0);
    EXPECT_TRUE(doc.m_radios.empty());
    size_t warnings = 0;
    for (size_t at = b.output.find("[WARN] port number out of range, port skipped: ");
         at != std::string::npos;
         at = b.output.find("[WARN] port number out of range, port skipped: ", at + 1))
        ++warnings;
    EXPECT_EQ(warnings, 4u);
}

TEST(InterfaceIds, NoTwoKindsOfInterfaceShareAnId) {
    // p4 is id 7, which bridge br1 used to take; bluetooth1 used to take radio 3's id.
    jsonCfgPlus doc;
    Built b = build(doc, withInterfaces(R"(
        {"name": "radio3", "type": "radio", "shutdown": false, "wlanbssmap": [{"bss": 1, "wlan": "w1"}]},
        {"name": "bluetooth1", "type": "bluetooth", "shutdown": true,
         "wlanbssmap": [{"bss": 1, "wlan": "w2"}]},
        {"name": "p4", "wlanbssmap": [{"bss": 1, "wlan": "w1"}]},
        {"name": "br1", "wlanbssmap": [{"bss": 2, "wlan": "w3"}]},
        {"name": "br0"}, {"name": "p1"}, {"name": "radio4", "type": "radio"})"));
    ASSERT_EQ(b.result, 0);
    std::set<int> ids;
    for (const radio_entry& r : doc.m_radios) {
        SCOPED_TRACE(r.name);
        EXPECT_TRUE(ids.insert(r.id).second) << "id " << r.id << " taken twice";
        EXPECT_EQ(r.wlans.size(),
                  r.name == "br0" || r.name == "p1" || r.name == "radio4" ? 0u : 1u);
    }
    // radio4 and p1 are the same pseudo-radio by the AP's numbering, and merge.
    EXPECT_EQ(doc.m_radios.size(), 6u);

    const radio_entry* radio3 = radioNamed(doc, "radio3");
    ASSERT_NE(radio3, nullptr);
    EXPECT_EQ(radio3->id, 3);
    ASSERT_EQ(radio3->wlans.size(), 1u);
    EXPECT_EQ(radio3->wlans[0].ssidId, 1);
    for (const cfgElement& e : radio3->elements) {
        if (e.name == "shutdown") {
            EXPECT_FALSE(e.boolValue);
        }
    }
    const radio_entry* p4 = radioNamed(doc, "p4");
    const radio_entry* br1 = radioNamed(doc, "br1");
    ASSERT_NE(p4, nullptr);
    ASSERT_NE(br1, nullptr);
    EXPECT_EQ(p4->id, 7);
    EXPECT_EQ(p4->wlans.at(0).ssidId, 1);
    EXPECT_EQ(br1->wlans.at(0).ssidId, 3);
}

TEST(InterfaceIds, IotRadioAloneAddsNoWirelessRadio) {
    std::string out;
    apiCfgPlusResult* r =
        testsupport::parseText(withInterfaces(R"({"name": "bluetooth1", "shutdown": true,
                           "wlanbssmap": [{"bss": 1, "wlan": "w2"}]})"),
                               jsonCfgPlusParserCallback, &out);
    ASSERT_NE(r, nullptr) << out;
    EXPECT_EQ(r->radioCount, 0);
    for (int i = 0; i < r->vnsCount; ++i) EXPECT_NE(r->vnsList[i].entries[0].radio, 2);
    testsupport::captureStdout([&] { freeJsonCfgPlus(r); });
}

}  // namespace
