// SPDX-License-Identifier: MIT
// The shared library's platform calls reach the AP's platform library however the daemon links
// or loads it, and a process without one gets the library's defaults with a warning, once.
// Built once per way of linking (see tests/CMakeLists.txt): JCP_PLATFORM_ANSWERS says whether
// the AP's definitions must answer, JCP_PLATFORM_DLOPEN how to open the platform library before
// the first call, JCP_PLATFORM_LINKED that the program calls the platform itself,
// JCP_PLATFORM_STATIC that the program links the static library instead.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

#include "api/jsoncfgplus.h"
#include "convert/converter.h"
#include "platform/platform.h"

namespace {

std::string objectOf(const void* address) {
    Dl_info info = {};
    return dladdr(address, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname : "";
}

size_t count(const std::string& text, const std::string& part) {
    size_t n = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++n;
    return n;
}

// One WLAN of SSID 105, which the AP's platform library stores in slot 5 of the first radio.
void addOneWlan(jsonCfgPlus& doc) {
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
}

TEST(PlatformCalls, AnsweredByTheProcessWhateverTheLinkOrder) {
#ifndef JCP_PLATFORM_STATIC
    // The converter must come from libjsoncfgplus.so, or this would prove nothing.
    EXPECT_NE(
        objectOf(reinterpret_cast<void*>(&jsonCfgPlusParserCallback)).find("libjsoncfgplus.so"),
        std::string::npos);
    void* libraryHandle = dlopen(JCP_SHARED_LIBRARY, RTLD_NOW | RTLD_NOLOAD);
    ASSERT_NE(libraryHandle, nullptr);
    EXPECT_EQ(dlsym(libraryHandle, "apCfgVlanVIDGet"), nullptr) << "the library defines it";
    dlclose(libraryHandle);
#endif
#ifdef JCP_PLATFORM_LINKED
    // The daemon's own platform calls reach the platform library too.
    EXPECT_EQ(apCfgBoardSubTypeGet(), 7);
    EXPECT_NE(objectOf(reinterpret_cast<void*>(&apCfgVlanVIDGet)).find("libap_platform"),
              std::string::npos);
#endif
#ifdef JCP_PLATFORM_DLOPEN
    ASSERT_NE(dlopen(JCP_PLATFORM_LIBRARY, JCP_PLATFORM_DLOPEN), nullptr) << dlerror();
#endif

    std::string out;
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE(round);
        jsonCfgPlus doc;
        addOneWlan(doc);
        testing::internal::CaptureStdout();
        cfgPlusApiConverter().jsonCfgPlusVnsReorderWlans(doc);
        out += testing::internal::GetCapturedStdout();
        ASSERT_EQ(doc.m_radios.at(0).wlans.size(), 8u);
        const vns_entry& slot5 = doc.m_radios[0].wlans[5];
        EXPECT_EQ(slot5.ssidId, JCP_PLATFORM_ANSWERS ? 105 : 0);
        EXPECT_EQ(slot5.index, 5);
    }
    EXPECT_EQ(count(out, "VNS[0,0] ssid=105 found existing VNS[0,5]\n"),
              JCP_PLATFORM_ANSWERS ? 2u : 0u)
        << out;
    EXPECT_EQ(count(out,
                    "[WARN] apCfgVlanVIDGet: no platform library in the process defines "
                    "it; the library's default answers 0.\n"),
              JCP_PLATFORM_ANSWERS ? 0u : 1u)
        << out;
}

}  // namespace
