// SPDX-License-Identifier: MIT
// The radio index every entry carries, as a daemon linking the shared library receives it.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "document/json_cfg_plus.h"
#include "shared_support.h"

namespace {

using shared::findEntry;

// The radio index of the WLAN array holding the service with that SSID id, or -100.
int radioOfSsid(const apiCfgPlusResult& result, int ssidId) {
    for (int32_t i = 0; i < result.vnsCount; ++i) {
        const apiCfgPlusEntry* ssid = findEntry(result.vnsList[i], "cen_ssid_id");
        if (ssid != nullptr && *static_cast<const int32_t*>(ssid->value) == ssidId)
            return result.vnsList[i].entries[0].radio;
    }
    return -100;
}

int lowestRadioIndex(const apiCfgPlusResult& result) {
    int lowest = 0;
    auto scan = [&lowest](const apiCfgPlusEntryArray* arrays, int32_t count) {
        for (int32_t a = 0; a < count; ++a) {
            for (int32_t i = 0; i < arrays[a].count; ++i)
                lowest = std::min(lowest, static_cast<int>(arrays[a].entries[i].radio));
        }
    };
    scan(&result.global, 1);
    scan(result.radios, result.radioCount);
    scan(result.vnsList, result.vnsCount);
    scan(result.meshpoints, result.meshpointCount);
    return lowest;
}

// Every interface of a real AP, each serving the WLAN whose SSID id is its row number.
TEST(RadioNumbering, EveryInterfaceOfAnApHasItsOwnIndexNoneBelowMinusOne) {
    struct Row {
        const char* interface;
        int radioIndex;
    };
    const Row rows[] = {
        {R"({"name": "radio1", "type": "radio")", 0},
        {R"({"name": "radio2", "type": "radio")", 1},
        {R"({"name": "radio3", "type": "radio")", 2},
        {R"({"name": "p1")", 3},
        {R"({"name": "p2")", 4},
        {R"({"name": "p3")", 5},
        {R"({"name": "p4")", 6},
        {R"({"name": "bluetooth1", "type": "bluetooth", "mode": "beacon")",
         JSONCFGPLUS_IOT_RADIO_INDEX},
        {R"({"name": "br0")", JSONCFGPLUS_BRIDGE_RADIO_INDEX(0)},
        {R"({"name": "br1")", JSONCFGPLUS_BRIDGE_RADIO_INDEX(1)},
        {R"({"name": "br7")", JSONCFGPLUS_BRIDGE_RADIO_INDEX(7)},
    };
    std::string wlans;
    std::string interfaces;
    int ssid = 1;
    for (const Row& row : rows) {
        std::string id = std::to_string(ssid++);
        if (!wlans.empty()) wlans += ",";
        wlans += R"({"name": "w)" + id + R"(", "cen_ssid_id": )" + id + "}";
        if (!interfaces.empty()) interfaces += ",";
        interfaces += std::string(row.interface) + R"(, "wlanbssmap": [{"bss": 1, "wlan": "w)" +
                      id + R"("}]})";
    }
    std::string output;
    apiCfgPlusResult* parsed = shared::parse(
        R"({"wlan": [)" + wlans + R"(], "device": {"interface": [)" + interfaces + "]}}", output);
    ASSERT_NE(parsed, nullptr) << output;
    const apiCfgPlusResult& result = *parsed;

    std::set<int> indexes;
    ssid = 1;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.interface);
        EXPECT_EQ(radioOfSsid(result, ssid++), row.radioIndex);
        indexes.insert(row.radioIndex);
    }
    EXPECT_EQ(indexes.size(), std::size(rows));
    EXPECT_EQ(lowestRadioIndex(result), -1);
    // Eight slots for each interface; only the wireless radios have a radio array.
    EXPECT_EQ(result.vnsCount, static_cast<int32_t>(8 * std::size(rows)));
    EXPECT_EQ(result.radioCount, 3);
    // The IoT radio's own settings come as globals.
    const apiCfgPlusEntry* mode = findEntry(result.global, "iot/mode");
    ASSERT_NE(mode, nullptr);
    EXPECT_STREQ(static_cast<const char*>(mode->value), "beacon");
    shared::release(parsed);
}

TEST(RadioNumbering, BluetoothDeclaredAsRadioIsStillTheIotRadio) {
    std::string output;
    apiCfgPlusResult* parsed = shared::parse(R"({"wlan": [{"name": "w", "cen_ssid_id": 4}],
        "device": {"interface": [{"name": "bluetooth1", "type": "radio", "mode": "scan",
                                  "wlanbssmap": [{"bss": 2, "wlan": "w"}]}]}})",
                                             output);
    ASSERT_NE(parsed, nullptr) << output;
    EXPECT_EQ(output.find("[WARN]"), std::string::npos) << output;
    EXPECT_EQ(radioOfSsid(*parsed, 4), JSONCFGPLUS_IOT_RADIO_INDEX);
    EXPECT_EQ(parsed->radioCount, 0);
    const apiCfgPlusEntry* mode = findEntry(parsed->global, "iot/mode");
    ASSERT_NE(mode, nullptr);
    EXPECT_STREQ(static_cast<const char*>(mode->value), "scan");
    shared::release(parsed);
}

// The edges of each name's range: no name reaches an id of another kind.
TEST(RadioNumbering, NameRangesMeetWithoutOverlap) {
    using Kind = jsonCfgPlus::RadioIdKind;
    using Outcome = jsonCfgPlus::RadioId::Outcome;
    struct Row {
        Kind kind;
        const char* name;
        Outcome outcome;
        int id;
    };
    const Row rows[] = {
        {Kind::kRadio, "radio99999", Outcome::kId, 99999},
        {Kind::kRadio, "radio100000", Outcome::kTooLarge, 0},
        {Kind::kWiredPort, "p99996", Outcome::kId, 99999},
        {Kind::kWiredPort, "p99997", Outcome::kOutOfRange, 0},
        {Kind::kIotRadio, "bluetooth1", Outcome::kId, JSONCFGPLUS_IOT_RADIO_INDEX + 1},
        {Kind::kBridgePort, "br0", Outcome::kId, JSONCFGPLUS_BRIDGE_RADIO_INDEX(0) + 1},
        {Kind::kBridgePort, "br2147383646", Outcome::kId, 2147483647},
        {Kind::kBridgePort, "br2147383647", Outcome::kOutOfRange, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        jsonCfgPlus::RadioId got = jsonCfgPlus::radioIdOf(row.kind, row.name);
        EXPECT_EQ(got.outcome, row.outcome);
        if (row.outcome == Outcome::kId) {
            EXPECT_EQ(got.id, row.id);
        }
    }
}

}  // namespace
