// SPDX-License-Identifier: MIT
// Where a converter reads a value, a present element of another kind reads as 0, false, "" or
// an empty list, never as absent: documents through the whole pipeline and the entry each gives.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "model/cfg_element.h"
#include "test_support.h"

namespace {

// One radio on 2.4 GHz with WLAN w1 and non-root meshpoint m; each row adds members at a mark.
const char kDocument[] = R"({
  "device": {"profile_name": "p", "rf_domain_name": "rf" @device,
             "meshpoint_device": [{"name": "m", "is_root_dev": "false" @mesh}]},
  "profile": [{"name": "p", "interface": [
    {"name": "radio1", "type": "radio", "rf_mode": "2.4GHz-wlan" @radio,
     "wlanbssmap": [{"bss": 2, "wlan": "w1"}],
     "meshpointbssmap": [{"bss": 1, "meshpoint": "m"}]}]}],
  "rf_domain": [{"name": "rf", "sensor_policy_name": "s" @rf_domain}],
  "sensor_policy": [{"name": "s" @sensor}],
  "wlan": [{"name": "w1", "cen_ssid_id": 1, "ssid": "one" @wlan}],
  "meshpoint": [{"name": "m", "cen_ssid_id": 6, "is_root": false}]
})";
const char* const kMarks[] = {"@device", "@mesh", "@radio", "@rf_domain", "@sensor", "@wlan"};

enum class In { Global, Radio, Wlan };

struct Row {
    std::map<std::string, std::string> members;  // by mark
    In list;
    const char* name;
    const char* expected;  // part of the entry's rendering
};

std::string document(const Row& row) {
    std::string text = kDocument;
    for (const char* mark : kMarks) {
        size_t at = text.find(mark);
        auto members = row.members.find(mark);
        text.replace(at, std::string(mark).size(),
                     members == row.members.end() ? "" : ", " + members->second);
    }
    return text;
}

// The rendering of the first entry of that name in the list, or "(absent)".
std::string rendered(const apiCfgPlusResult& result, In list, const std::string& name) {
    auto render = [&](const apiCfgPlusEntryArray& array) -> std::string {
        const apiCfgPlusEntry* found = testsupport::findEntry(array, name);
        if (found == nullptr) return "";
        apiCfgPlusEntry entry = *found;
        return cfgElement::printApiCfgPlusEntry(entry, 0);
    };
    std::string text;
    if (list == In::Global) text = render(result.global);
    if (list == In::Radio && result.radioCount > 0) text = render(result.radios[0]);
    for (int i = 0; list == In::Wlan && text.empty() && i < result.vnsCount; ++i)
        text = render(result.vnsList[i]);
    return text.empty() ? "(absent)" : text;
}

TEST(ValueKinds, AnElementOfAnotherKindReadsAsZeroOrEmpty) {
    const Row rows[] = {
        {{{"@device", R"("hostname": null)"}}, In::Global, "cen_ap_name", R"("cen_ap_name": "")"},
        {{{"@rf_domain", R"("sensor_server": [{"host": "h", "port": "8443"}])"}},
         In::Global,
         "rf_domain/sensor_server_addresses",
         R"(["h:0"])"},
        {{{"@device", R"("antenna_id_group2_option": 5)"}},
         In::Global,
         "cen_antenna_group",
         R"([""])"},
        {{{"@radio", R"("antenna_mode": 4)"}}, In::Global, "cen_antenna_mode", R"([""])"},
        {{{"@sensor", R"("sensor_scanmode": {"lock_freq": "x"})"}},
         In::Radio,
         "rf_domain/sensor_policy/scan_channels",
         R"("rf_domain/sensor_policy/scan_channels/frequency": 0,)"},
        {{{"@mesh", R"("hysteresis_snr_min": "x")"}},
         In::Wlan,
         "wds/meshpoint_device/hysteresis_snr_min",
         ": 0"},
        {{{"@mesh", R"("acs_path_min_24": true)"}},
         In::Wlan,
         "meshpoint_device/acs_path_min",
         ": 0"},
        {{{"@mesh", R"("acs_tolerance_period_24": [3])"}},
         In::Wlan,
         "meshpoint_device/acs_tolerance_period",
         ": 0"},
        // A channel list that holds no string empties the radio's list, whatever it held.
        {{{"@radio", R"("meshpoint_device": {"acs_channel_list": ["36"]})"},
          {"@mesh", R"("acs_channel_list_24": [1, 6, 11])"}},
         In::Radio,
         "meshpoint_device/acs_channel_list",
         "[ ]"},
        {{{"@mesh", R"("acs_channel_list_24": "1,6,11")"}},
         In::Radio,
         "meshpoint_device/acs_channel_list",
         "[ ]"},
        // A present "cen_bridged" that is not true is not bridged: vlan 10 gives 0x200A.
        {{{"@wlan", R"("vlans": [{"vlan": 10, "cen_bridged": null}])"}},
         In::Wlan,
         "vlans/cen_wlan_vlan",
         ": 8202"},
        {{{"@wlan", R"("vlans": [{"vlan": 10, "cen_bridged": 0}])"}},
         In::Wlan,
         "vlans/cen_wlan_vlan",
         ": 8202"},
        {{{"@wlan", R"("vlans": [{"vlan": 10, "cen_bridged": "false"}])"}},
         In::Wlan,
         "vlans/cen_wlan_vlan",
         ": 8202"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << "row " << (&row - rows));
        std::string out;
        apiCfgPlusResult* result =
            testsupport::parseText(document(row), jsonCfgPlusParserCallback, &out);
        ASSERT_NE(result, nullptr) << out;
        std::string text = rendered(*result, row.list, row.name);
        EXPECT_NE(text.find(row.expected), std::string::npos) << text;
        testsupport::captureStdout([&] { freeJsonCfgPlus(result); });
    }
}

}  // namespace
