// A daemon that links the shared library and the AP's platform library gets the AP's answers
// inside the library, not the library's weak defaults.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

#include "convert/converter.h"
#include "platform/platform.h"

namespace {

std::string objectOf(const void* address) {
    Dl_info info = {};
    return dladdr(address, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname : "";
}

TEST(PlatformOverride, TheApsDefinitionsWinInsideTheSharedLibrary) {
    // The converter must come from libjsoncfgplus.so, or this would prove nothing.
    EXPECT_NE(
        objectOf(reinterpret_cast<void*>(&jsonCfgPlusParserCallback)).find("libjsoncfgplus.so"),
        std::string::npos);
    EXPECT_NE(objectOf(reinterpret_cast<void*>(&apCfgVlanVIDGet)).find("libap_platform"),
              std::string::npos);

    // The AP stores SSID 105 in slot 5 of its first radio; the reorder keeps the WLAN there.
    jsonCfgPlus doc;
    radio_entry radio;
    radio.id = 1;
    radio.name = "radio1";
    vns_entry wlan;
    wlan.index = 0;
    wlan.radioId = 1;
    wlan.ssidId = 105;
    wlan.elements.push_back(cfgElement("cen_ssid_id", 105, "ssid_id"));
    radio.wlans.push_back(wlan);
    doc.m_radios.push_back(radio);

    testing::internal::CaptureStdout();
    cfgPlusApiConverter().jsonCfgPlusVnsReorderWlans(doc);
    std::string out = testing::internal::GetCapturedStdout();

    ASSERT_EQ(doc.m_radios.at(0).id, 1);
    const std::vector<vns_entry>& slots = doc.m_radios[0].wlans;
    ASSERT_EQ(slots.size(), 8u);
    EXPECT_EQ(slots[5].ssidId, 105);
    EXPECT_EQ(slots[5].index, 5);
    EXPECT_NE(out.find("VNS[0,0] ssid=105 found existing VNS[0,5]"), std::string::npos) << out;
}

}  // namespace
