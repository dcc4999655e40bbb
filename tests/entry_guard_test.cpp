// SPDX-License-Identifier: MIT
// No exception crosses a C entry but allocation failure: a value the decimal conversion
// refuses ends the entry with its failure value and one "[ERR]" line naming the value (the
// value's escaping and cut are golden: filter_rules/refused_http_port_*).
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "api/debug_cfg.h"
#include "api/jsoncfgplus.h"
#include "document/json_cfg_plus.h"
#include "test_support.h"

namespace {

std::string httpPortsDocument(const std::string& ports) {
    return R"({"device": {"name": "ap", "interface": [{"name": "radio1", "type": "radio",
        "wlanbssmap": [{"bss": 1, "wlan": "w"}]}]},
        "wlan": [{"name": "w", "cen_ssid_id": 1, "captive_portal": "cp"}],
        "captive_portal": [{"name": "cp", "cen_http_ports": ")" +
           ports + R"("}]})";
}

int throwsBareStoi(jsonCfgPlus*) {
    throw std::invalid_argument("stoi");
}

int throwsBadAlloc(jsonCfgPlus*) {
    throw std::bad_alloc();
}

TEST(EntryGuard, AConversionThatNamesNothingIsStillOneReadableLine) {
    std::string out;
    EXPECT_EQ(testsupport::parseText(R"({"device": {}})", throwsBareStoi, &out), nullptr);
    EXPECT_EQ(testsupport::occurrences(out, "[ERR]"), 1u) << out;
    EXPECT_NE(out.find("[ERR] parseJsonCfgPlus: a number does not convert (stoi)\n"),
              std::string::npos)
        << out;
}

TEST(EntryGuard, AllocationFailureStillPropagates) {
    testing::internal::CaptureStdout();
    EXPECT_THROW(parseJsonCfgPlus("{\"device\": {}}", 14, throwsBadAlloc, 0, 0, 0), std::bad_alloc);
    testing::internal::GetCapturedStdout();
}

// A document a C++ caller builds keeps its object table after the library's pipeline, which
// drops it early only inside the parse entry.
TEST(EntryGuard, PipelineOnACallersDocumentFailsAndKeepsTheTable) {
    jsonCfgPlus doc;
    doc.m_callback = jsonCfgPlusParserCallback;
    const std::string good = R"({"device": {"name": "ap"}})";
    const std::string bad = httpPortsDocument("80,http");
    std::string out = testsupport::captureStdout([&] {
        EXPECT_EQ(doc.buildConfig(good.data(), static_cast<unsigned int>(good.size())), 0);
        EXPECT_NE(doc.m_all.findCfgObject("device"), nullptr);
        EXPECT_EQ(doc.buildConfig(bad.data(), static_cast<unsigned int>(bad.size())), -1);
    });
    EXPECT_NE(doc.m_all.findCfgObject("captive_portal"), nullptr);
    EXPECT_EQ(testsupport::occurrences(out, "[ERR]"), 1u) << out;
}

TEST(EntryGuard, DebugSwitchThatIsNotANumberChangesNoSwitch) {
    testsupport::TempDir dir;
    jsonCfgPlusDebugCfg& settings = jsonCfgPlusDebugCfg::m_inst;
    settings.setPath(dir.file("cap.xml"));
    jsonCfgPlusDebug* switches = nullptr;
    testsupport::writeFile(dir.file("cap.xml"), "<config><debug><cap>2</cap></debug></config>");
    testsupport::captureStdout([&] { switches = getJsonCfgPlusDebugCfg(); });
    ASSERT_NE(switches, nullptr);

    testsupport::writeFile(dir.file("cap.xml"),
                           "<config><debug><cap>9</cap><tproxy>on</tproxy></debug></config>");
    std::string out =
        testsupport::captureStdout([&] { EXPECT_EQ(getJsonCfgPlusDebugCfg(), switches); });
    EXPECT_EQ(switches->cap, 2);
    EXPECT_EQ(switches->tproxy, 0);
    EXPECT_EQ(testsupport::occurrences(out, "[ERR]"), 1u) << out;
    EXPECT_NE(out.find("[ERR] getJsonCfgPlusDebugCfg: not a decimal number: \"on\"\n"),
              std::string::npos)
        << out;
    settings.setPath("/home/config/cap.conf.xml");
}

}  // namespace
