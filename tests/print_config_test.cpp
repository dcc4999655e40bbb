// The element-side dump of a built document: global list, radios, services and meshpoints.
#include <gtest/gtest.h>

#include "document/json_cfg_plus.h"
#include "test_support.h"

namespace {

TEST(PrintConfig, ShowsEveryListUnderItsHeader) {
    const std::string text = R"({"device": {"interface": [
        {"name": "radio2", "type": "radio", "power": 3,
         "wlanbssmap": [{"bss": 2, "wlan": "w"}], "meshpointbssmap": [{"bss": 1, "meshpoint": "m"}]}]},
      "wlan": [{"name": "w", "cen_ssid_id": 5}], "meshpoint": [{"name": "m", "cen_ssid_id": 6}]})";
    jsonCfgPlus doc;
    testsupport::captureStdout([&] { ASSERT_EQ(doc.buildConfig(text.data(), text.size()), 0); });
    std::string out = testsupport::captureStdout([&] { doc.printConfig(); });
    EXPECT_EQ(out,
              "Global Config.\n"
              "\"interface\": [\n  \"\": {\n    \"interface/name\": \"radio2\",\n"
              "    \"interface/type\": \"radio\",\n    \"interface/power\": 3,\n"
              "    \"interface/wlanbssmap\": [\n      \"\": {\n"
              "        \"interface/wlanbssmap/bss\": 2,\n"
              "        \"interface/wlanbssmap/wlan\": \"w\"\n      }\n    ],\n"
              "    \"interface/meshpointbssmap\": [\n      \"\": {\n"
              "        \"interface/meshpointbssmap/bss\": 1,\n"
              "        \"interface/meshpointbssmap/meshpoint\": \"m\"\n      }\n    ]\n  }\n]\n"
              "[Radio#0] radio_id=2\n  \"cen_radio_id\": 2\n  \"name\": \"radio2\"\n"
              "  \"power\": 3\n"
              "  [VNS#1, ssid_id=5]\n    \"cen_radio_id\": 2\n    \"cen_ssid_id\": 5\n"
              "    \"name\": \"w\"\n"
              "  [MP#0, ssid_id=6]\n    \"cen_radio_id\": 2\n    \"cen_ssid_id\": 6\n"
              "    \"name\": \"m\"\n");
}

}  // namespace
