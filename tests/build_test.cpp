// The build driver, the interface build and the WLAN/meshpoint build, on whole documents.
#include <gtest/gtest.h>

#include "document/json_cfg_plus.h"
#include "test_support.h"

namespace {

struct Built {
    int result = 0;
    std::string output;
};

Built build(jsonCfgPlus& doc, const std::string& text) {
    Built b;
    b.output = testsupport::captureStdout(
        [&] { b.result = doc.buildConfig(text.data(), static_cast<unsigned int>(text.size())); });
    return b;
}

std::vector<std::string> names(const std::list<cfgElement>& list) {
    std::vector<std::string> out;
    for (const cfgElement& e : list) out.push_back(e.name);
    return out;
}

const cfgElement* find(const std::list<cfgElement>& list, const std::string& name) {
    for (const cfgElement& e : list) {
        if (e.name == name) return &e;
    }
    return nullptr;
}

// A device, its profile with two radios, the RF domain with both policies, and WLANs.
const char kFullDocument[] = R"({
  "config-version": "0a0b", "personality": "ap", "request-id": 12, "cen_time": 1000,
  "ip": "", "port": 0, "key": "",
  "assoc_acl": [{"name": "a", "rule": []}],
  "cen_ext_app_cfg_tbl": {"id": 3},
  "radio_qos": [{"name": "rq", "wmm": true, "admission_control_voice_enable": true,
                 "admission_control_video_enable": false,
                 "admission_control_best_effort_enable": false,
                 "admission_control_background_enable": true}],
  "device": {"name": "d", "profile_name": "p", "rf_domain_name": "rf", "led": "on",
             "only_device": 1,
             "interface": [{"name": "radio2", "type": "radio", "power": 9,
                            "wlanbssmap": [{"bss": 4, "wlan": "w2"}]}]},
  "profile": [{"name": "p", "type": "x", "led": "off", "management_policy": "m",
               "interface": [
                 {"name": "vlan1", "type": "vlan", "vlan": 1},
                 {"name": "radio2", "type": "radio", "power": 5, "channel": "36",
                  "qos_policy": "rq", "placement": "outdoor",
                  "wlanbssmap": [{"bss": 1, "wlan": "w1"}, {"bss": 2, "wlan": "w2"}]},
                 {"name": "radio1", "type": "radio", "power": 3},
                 {"name": "tun", "type": "gre", "vlan": 30}]}],
  "management_policy": [{"name": "m", "ssh": true}],
  "rf_domain": [{"name": "rf", "sensor_policy_name": "s", "smart_rf_policy": "sr", "cc": "de"}],
  "sensor_policy": [{"name": "s", "mode": "scan"}],
  "smart_rf_policy": [{"name": "sr", "enable": true}],
  "wlan": [{"name": "w1", "cen_ssid_id": 1, "qos_policy": "wq", "mac_in_acl": "acl",
            "mac_out_acl": "acl", "captive_portal": "cp", "ssid": "one"},
           {"name": "w2", "cen_ssid_id": 2, "ssid": "two"}],
  "wlan_qos": [{"name": "wq", "wmm": true}],
  "mac_acl": [{"name": "acl", "mac_rules": [{"action": "deny"}]}],
  "captive_portal": [{"name": "cp", "dns_whitelist": "dw", "aaa_policy": "aaa", "mode": "x"}],
  "dns_whitelist": [{"name": "dw", "entry": [{"host": "h"}]}],
  "aaa_policy": [{"name": "aaa", "server": "10.0.0.1"}]
})";

TEST(BuildDriver, GlobalListOrderAndInformationLines) {
    jsonCfgPlus doc;
    Built b = build(doc, kFullDocument);
    ASSERT_EQ(b.result, 0) << b.output;
    EXPECT_NE(b.output.find(std::string(64, '=') + "\nJSON-Q+: buildConfig()...\n" +
                            std::string(64, '=') +
                            "\nbuild top level look-up table...\n"
                            " config-version: hex=0x0a0b\n request-id=12\n"
                            "device: profile resolved.\n"
                            "resolved management policy from profile.\n"
                            "device: resolved rf_domain. \n"
                            "resolved sensor_policy from rf_domain.\n"
                            "resolved smart_rf_policy from rf_domain.\n"),
              std::string::npos)
        << b.output;
    std::vector<std::string> expected = {
        "config-version", "personality", "request-id", "cen_time", "ip", "port", "key",
        "assoc_acl/name", "assoc_acl/rule", "cen_ext_app_cfg_tbl/id", "radio_qos/name",
        "radio_qos/wmm",
        // the profile's "led" keeps its place but takes the device's value
        "led", "management_policy/name", "management_policy/ssh", "rf_domain/name",
        "rf_domain/sensor_policy_name", "rf_domain/cc", "rf_domain/sensor_policy/name",
        "rf_domain/sensor_policy/mode", "rf_domain/smart_rf_policy/name",
        "rf_domain/smart_rf_policy/enable", "smart_rf_cfg", "cen_if_vlans", "name", "only_device",
        "interface"};
    EXPECT_EQ(names(doc.m_global), expected);
    EXPECT_EQ(find(doc.m_global, "led")->strValue, "on");
    EXPECT_EQ(find(doc.m_global, "smart_rf_cfg")->strValue,
              "{\n  \"name\": \"sr\",\n  \"enable\": true\n}");
    EXPECT_EQ(find(doc.m_global, "smart_rf_cfg")->key, "");
    EXPECT_EQ(doc.m_request_id, 12u);
    EXPECT_EQ(doc.m_cen_time, 1000);
    // Virtual interfaces of every kind in one list, in array order.
    const cfgElement* vlans = find(doc.m_global, "cen_if_vlans");
    ASSERT_EQ(vlans->kind, CFG_OBJ_ARRAY);
    ASSERT_EQ(vlans->objArray.size(), 2u);
    EXPECT_EQ(vlans->objArray.front().elements.front().strValue, "vlan1");
    EXPECT_EQ(vlans->objArray.back().elements.front().strValue, "tun");
}

TEST(BuildDriver, RadiosMergeInIdOrderWithDeviceValuesWinning) {
    jsonCfgPlus doc;
    ASSERT_EQ(build(doc, kFullDocument).result, 0);
    ASSERT_EQ(doc.m_radios.size(), 2u);
    EXPECT_EQ(doc.m_radios[0].id, 1);
    const radio_entry& radio2 = doc.m_radios[1];
    EXPECT_EQ(radio2.id, 2);
    EXPECT_EQ(names(radio2.elements), (std::vector<std::string>{"cen_radio_id", "name", "power",
                                                                "channel", "cen_radio/placement"}));
    EXPECT_EQ(find(radio2.elements, "power")->intValue, 9);

    // w1 (bss 1), w2 (bss 2) from the profile; the device's w2 at bss 4 merges into the
    // existing service by SSID id, which keeps its first index.
    ASSERT_EQ(radio2.wlans.size(), 2u);
    EXPECT_EQ(radio2.wlans[0].index, 0);
    EXPECT_EQ(radio2.wlans[1].index, 1);
    EXPECT_EQ(radio2.wlans[1].ssidId, 2);

    const std::list<cfgElement>& w1 = radio2.wlans[0].elements;
    EXPECT_EQ(names(w1),
              (std::vector<std::string>{"cen_radio_id",
                                        "cen_ssid_id",
                                        "name",
                                        "ssid",
                                        "qos_policy/name",
                                        "qos_policy/wmm",
                                        "qos_policy/admission_control_voice_enable",
                                        "qos_policy/admission_control_video_enable",
                                        "qos_policy/admission_control_best_effort_enable",
                                        "qos_policy/admission_control_background_enable",
                                        "mac_in_acl/name",
                                        "mac_in_acl/mac_rules",
                                        "mac_out_acl/name",
                                        "mac_out_acl/mac_rules",
                                        "captive_portal/name",
                                        "captive_portal/mode",
                                        "captive_portal/dns_whitelist/name",
                                        "captive_portal/dns_whitelist/entry",
                                        "captive_portal/aaa_policy/name",
                                        "captive_portal/aaa_policy/server"}));
    EXPECT_EQ(find(w1, "cen_radio_id")->key, "name");
    // The WLAN's own "cen_ssid_id" member replaces the built one in place.
    EXPECT_EQ(find(w1, "cen_ssid_id")->key, "cen_ssid_id");
    // A WLAN without a QoS policy gets none of the radio's admission-control settings.
    EXPECT_EQ(find(radio2.wlans[1].elements, "qos_policy/admission_control_voice_enable"), nullptr);
}

TEST(BuildDriver, MissingDeviceFailsEvenWithRedisSource) {
    jsonCfgPlus doc;
    Built b = build(doc, R"({"ip": "127.0.0.1", "port": 1, "key": "k", "personality": "x"})");
    EXPECT_EQ(b.result, -1);
    EXPECT_NE(b.output.find("[ERR] not found mandatory device.\n"), std::string::npos);
    EXPECT_TRUE(doc.m_global.empty());
}

TEST(BuildDriver, UnresolvedReferencesPrintInformationAndGoOn) {
    jsonCfgPlus doc;
    Built b = build(doc, R"({"device": {"profile_name": "p", "rf_domain_name": 5, "x": 1},
                             "profile": [{"name": "p", "management_policy": "none"}],
                             "management_policy": [{"name": "m"}]})");
    ASSERT_EQ(b.result, 0);
    EXPECT_NE(b.output.find("device: profile resolved.\n[INFO] management policy not resolved.\n"
                            "[INFO] device: rf_domain not resolved\n"),
              std::string::npos)
        << b.output;
    EXPECT_EQ(names(doc.m_global), (std::vector<std::string>{"x"}));

    jsonCfgPlus noProfile;
    b = build(noProfile, R"({"device": {"profile_name": "q"}, "profile": [{"name": "p"}]})");
    EXPECT_NE(b.output.find("[INFO] device: profile not resolved\n"), std::string::npos);
}

TEST(BuildDriver, EmptyAssocAclYieldsEmptyRuleArray) {
    jsonCfgPlus doc;
    ASSERT_EQ(build(doc, R"({"assoc_acl": [], "device": {}})").result, 0);
    ASSERT_EQ(doc.m_global.size(), 1u);
    EXPECT_EQ(doc.m_global.front().name, "assoc_acl/rule");
    EXPECT_EQ(doc.m_global.front().kind, CFG_OBJ_ARRAY);
    EXPECT_TRUE(doc.m_global.front().objArray.empty());
}

int g_callbackCalls = 0;
int failingPipeline(jsonCfgPlus* doc) {
    ++g_callbackCalls;
    return doc->m_global.empty() ? 1 : 5;
}

TEST(BuildDriver, PipelineResultFailsTheBuildAndResetsTheLists) {
    jsonCfgPlus doc;
    doc.m_callback = failingPipeline;
    g_callbackCalls = 0;
    Built b = build(doc, R"({"key": "k", "ip": "h", "device": {"a": 1},
                             "profile": [{"name": "p", "interface": []}]})");
    EXPECT_EQ(b.result, 5);
    EXPECT_EQ(g_callbackCalls, 1);
    EXPECT_TRUE(doc.m_global.empty());
    EXPECT_EQ(doc.m_redis_key, "");
    EXPECT_EQ(doc.m_redis_ip, "h");
}

TEST(InterfaceBuild, SkipsWhatItCannotUse) {
    jsonCfgPlus doc;
    Built b = build(doc, R"({"device": {"interface": [
        5, "radio1", {"type": "radio"}, {"name": 3, "type": "radio"},
        {"name": "radioX", "type": "radio"}, {"name": "radio", "type": "radio"},
        {"name": "radio0", "type": "radio"},
        {"name": "radio99999999999999", "type": "radio"},
        {"name": "radio1", "type": "radio",
         "wlanbssmap": [7, {"wlan": "w"}, {"bss": 1}, {"bss": 2, "wlan": "nope"},
                        {"bss": 3, "wlan": 4}, {"bss": 4, "wlan": "noid"},
                        {"bss": 0, "wlan": "w"}],
         "meshpointbssmap": {"bss": 1}}]},
      "wlan": [{"name": "w", "cen_ssid_id": 3}, {"name": "noid"}]})");
    ASSERT_EQ(b.result, 0);
    EXPECT_NE(b.output.find("[ERROR] cen_ssid_id is not specified.\n"), std::string::npos);
    EXPECT_NE(b.output.find("[WARN] "), std::string::npos);
    ASSERT_EQ(doc.m_radios.size(), 2u);  // radio0 and radio1
    ASSERT_EQ(doc.m_radios[1].wlans.size(), 1u);
    EXPECT_EQ(doc.m_radios[1].wlans[0].index, -1);  // bss 0
    EXPECT_TRUE(doc.m_radios[1].meshpoints.empty());
}

TEST(InterfaceBuild, PortsAndIotBecomePseudoRadios) {
    jsonCfgPlus doc;
    ASSERT_EQ(build(doc, R"({"device": {"interface": [
        {"name": "p2", "type": "ethernet", "wlanbssmap": [{"bss": 1, "wlan": "w"}]},
        {"name": "br1", "type": "bridge"},
        {"name": "p0", "type": "ethernet"},
        {"name": "radio1", "type": "radio"},
        {"name": "bluetooth1", "type": "bluetooth", "shutdown": true, "mode": "beacon"},
        {"name": "uwb1", "type": "uwb", "enable": true},
        {"name": "port-channel1", "type": "ethernet",
         "switchport": {"native_vlan": 10, "native_vlan_tagged": true}},
        {"name": "ge1", "type": "ethernet", "static_channel_group": 1,
         "switchport": {"native_vlan": 99}}]},
      "wlan": [{"name": "w", "cen_ssid_id": 3}]})")
                  .result,
              0);
    std::vector<int> ids;
    for (const radio_entry& r : doc.m_radios) ids.push_back(r.id);
    EXPECT_EQ(ids, (std::vector<int>{-3, -1, 1, 5}));  // br1, bluetooth1, radio1, p2
    EXPECT_EQ(doc.m_radios[3].name, "p2");
    EXPECT_EQ(doc.m_radios[3].wlans.at(0).radioId, 5);
    EXPECT_TRUE(find(doc.m_radios[1].elements, "shutdown")->boolValue);
    EXPECT_EQ(find(doc.m_global, "iot/mode")->strValue, "beacon");
    EXPECT_TRUE(find(doc.m_global, "uwb/enable")->boolValue);
    // A channel-group member does not override the channel's native VLAN.
    EXPECT_EQ(find(doc.m_global, "ethernet_if/switchport/native_vlan")->intValue, 10);
    EXPECT_TRUE(find(doc.m_global, "ethernet_if/switchport/native_vlan_tagged")->boolValue);
}

TEST(MeshpointBuild, DeviceEntryOverridesProfileEntry) {
    jsonCfgPlus doc;
    ASSERT_EQ(build(doc, R"({
      "device": {"profile_name": "p", "meshpoint_device": [{"name": "m", "root": "dev"}]},
      "profile": [{"name": "p",
                   "meshpoint_device": [{"name": "m", "root": "prof", "hops": 2},
                                        {"name": "other", "root": "x"}],
                   "interface": [{"name": "radio1", "type": "radio",
                                  "meshpointbssmap": [{"bss": 2, "meshpoint": "m"},
                                                      {"bss": 3}]}]}],
      "meshpoint": [{"name": "m", "cen_ssid_id": 7, "meshid": "mesh"}]})")
                  .result,
              0);
    ASSERT_EQ(doc.m_radios.size(), 1u);
    ASSERT_EQ(doc.m_radios[0].meshpoints.size(), 1u);
    const vns_entry& mp = doc.m_radios[0].meshpoints[0];
    EXPECT_EQ(mp.index, 1);
    EXPECT_EQ(mp.ssidId, 7);
    EXPECT_EQ(find(mp.elements, "meshpoint_device/root")->strValue, "dev");
    EXPECT_EQ(find(mp.elements, "meshpoint_device/hops")->intValue, 2);
}

TEST(ServiceMerge, SameSsidOnOneRadioIsOneService) {
    std::vector<vns_entry> services;
    vns_entry first;
    first.index = 0;
    first.radioId = 1;
    first.ssidId = 4;
    first.elements = {cfgElement("a", 1, "a"), cfgElement("b", 2, "b")};
    vns_entry second = first;
    second.index = 5;
    second.elements = {cfgElement("b", 20, "b"), cfgElement("c", 3, "c")};
    vns_entry otherRadio = first;
    otherRadio.radioId = 2;
    jsonCfgPlus::mergeVnsCfgElement(services, first);
    jsonCfgPlus::mergeVnsCfgElement(services, second);
    jsonCfgPlus::mergeVnsCfgElement(services, otherRadio);
    ASSERT_EQ(services.size(), 2u);
    EXPECT_EQ(services[0].index, 0);
    EXPECT_EQ(names(services[0].elements), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(find(services[0].elements, "b")->intValue, 20);
}

}  // namespace
