// AP name, management route, ARP-guard record, location and sensor-server converters.
#include <gtest/gtest.h>

#include <cstring>

#include "convert/converter.h"
#include "test_support.h"

namespace {

using List = std::list<cfgElement>;

std::string dump(const List& list) {
    std::string out;
    for (const cfgElement& e : list) out += e.toString(0) + "\n";
    return out;
}

// An element rendered as the caller's entry is rendered (through its print function).
std::string rendered(const cfgElement& element, unsigned int indent) {
    apiCfgPlusEntry entry{};
    element.toApiCfgPlusEntry(entry);
    std::string text = cfgElement::printApiCfgPlusEntry(entry, indent);
    cfgElement::freeApiCfgPlusEntry(entry);
    return text;
}

// Built from JSON, so the converters see the names the build really gives; the example's
// golden dump shows the usual case, this the limits: three sensor servers, the first route,
// an ARP-guard entry without an IPv4 address.
TEST(DeviceLocationConverters, WhatIsKeptOfLongerLists) {
    const std::string text = R"({"profile": [{"name": "p"}],
      "device": {"profile_name": "p", "rf_domain_name": "rf",
        "route": [{"gateway": "10.0.0.254", "metric": 1}, {"gateway": "10.9.9.9"}],
        "arp_guard_acl": [{"ip": "fe80::1"}, {"ip": "192.168.1.2"}]},
      "rf_domain": [{"name": "rf", "sensor_server": [{"host": "10.0.0.5"},
                     {"port": 80, "host": "s2"}, {"host": "s3"}, {"host": "s4"}]}]})";
    jsonCfgPlus doc;
    testsupport::captureStdout([&] { ASSERT_EQ(doc.buildConfig(text.data(), text.size()), 0); });
    cfgPlusApiConverter c;
    testsupport::captureStdout([&] {
        for (auto step :
             {&cfgPlusApiConverter::jsonCfgPlusAdspServer,
              &cfgPlusApiConverter::jsonCfgPlusRouteCfg, &cfgPlusApiConverter::jsonCfgPlusArpGuard})
            EXPECT_EQ((c.*step)(doc), 0);
    });
    std::string all = dump(doc.m_global);
    for (const char* expected :
         {"\"rf_domain/sensor_server_addresses\": [\"10.0.0.5:443\",\"s2:80\",\"s3:443\"]\n",
          "\"route/gateway\": \"10.0.0.254\"\n\"route/metric\": 1\n\"route\": [",
          "\"cen_arp_guard_acl\": 0x0200000000000000C0A80102"})
        EXPECT_NE(all.find(expected), std::string::npos) << expected << "\nin\n" << all;
    EXPECT_EQ(all.find("10.9.9.9\"\n\"route\""), std::string::npos);
}

TEST(DeviceConverters, ArpGuardKeepsTheFirst32Of40) {
    cfgObjArray entries;
    for (int i = 1; i <= 40; ++i)
        entries.emplace_back("",
                             List{cfgElement("arp_guard_acl/ip", "10.1.0." + std::to_string(i))});
    jsonCfgPlus doc;
    doc.m_trace = 1;
    doc.m_global = {cfgElement("arp_guard_acl", entries)};
    cfgPlusApiConverter c;
    EXPECT_EQ(testsupport::captureStdout([&] { c.jsonCfgPlusArpGuard(doc); }),
              "jsonCfgPlusArpGuard: Processing ARP Guard ACL... \n"
              "ARP Guard ACL list(size: 40) reached max size: 32, ignore them\n"
              "ARP Guard ACL entries:32\n");
    const std::vector<uint8_t>& bytes = doc.m_global.front().bytesValue;
    ASSERT_EQ(bytes.size(), 132u);
    std::vector<uint8_t> expected = {32, 0, 0, 0};
    for (uint8_t i = 1; i <= 32; ++i) expected.insert(expected.end(), {10, 1, 0, i});
    EXPECT_EQ(bytes, expected);
    EXPECT_NE(rendered(doc.m_global.front(), 0).find("  \"32\": \"10.1.0.32\"\n}"),
              std::string::npos);
}

TEST(DeviceLocationConverters, DefaultsAndWhatIsKept) {
    jsonCfgPlus doc;
    doc.m_trace = 1;
    doc.m_global = {cfgElement("rf_domain/sensor_server", cfgObjArray{}),
                    cfgElement("device/location_engine/loc_auto_collect", true),
                    cfgElement("hostname", "ap-1"), cfgElement("cen_ap_name", "mine"),
                    cfgElement("arp_guard_acl", "odd")};
    cfgPlusApiConverter c;
    EXPECT_EQ(testsupport::captureStdout([&] {
                  for (auto step : {&cfgPlusApiConverter::jsonCfgPlusApName,
                                    &cfgPlusApiConverter::jsonCfgPlusLocation,
                                    &cfgPlusApiConverter::jsonCfgPlusPositioning,
                                    &cfgPlusApiConverter::jsonCfgPlusAdspServer,
                                    &cfgPlusApiConverter::jsonCfgPlusArpGuard})
                      (c.*step)(doc);
              }),
              "jsonCfgPlusVnsVlan: Processing Quorra Location. \n"
              "jsonCfgPlusVnsVlan: Processing Quorra Positioning. \n"
              "jsonCfgPlusAdspServer: Processing ADSP server list. \n"
              "jsonCfgPlusArpGuard: Processing ARP Guard ACL... \n"
              "ARP Guard ACL entries:0\n");
    EXPECT_EQ(dump(doc.m_global),
              "\"rf_domain/sensor_server\": [ ]\n\"location_engine/loc_auto_collect\": true\n"
              "\"hostname\": \"ap-1\"\n\"cen_ap_name\": \"mine\"\n\"cen_arp_guard_acl\": 0x" +
                  std::string(264, '0') +
                  "\n\"arp_guard_acl\": \"odd\"\n\"rf_domain/location_server/host\": \"\"\n"
                  "\"rf_domain/location_tenantid\": \"\"\n"
                  "\"rf_domain/sensor_server_addresses\": [\"\",\"\",\"\"]\n");
}

}  // namespace
