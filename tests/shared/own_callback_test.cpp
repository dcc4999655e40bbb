// SPDX-License-Identifier: MIT
// A daemon's own callback, run by parseJsonCfgPlus from libjsoncfgplus.so, finds the document
// whole: the object table as the build left it, and itself as the document's callback.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <string>

#include "document/json_cfg_plus.h"
#include "shared_support.h"

namespace {

struct Seen {
    bool root = false;
    bool device = false;
    bool wlan = false;
    jsonCfgPlusCallback callback = nullptr;
};
Seen g_seen;

void look(jsonCfgPlus* document) {
    g_seen.root = document->m_all.root() != nullptr;
    g_seen.device = document->m_all.findCfgObject("device") != nullptr;
    g_seen.wlan = document->m_all.resolveRelationship("w1", "wlan") != nullptr;
    g_seen.callback = document->m_callback;
}

int lookOnly(jsonCfgPlus* document) {
    look(document);
    return 0;
}

// The library's pipeline runs first: it must not take the table from the callback around it.
int convertThenLook(jsonCfgPlus* document) {
    int result = jsonCfgPlusParserCallback(document);
    look(document);
    return result;
}

std::string objectOf(const void* address) {
    Dl_info info = {};
    return dladdr(address, &info) != 0 && info.dli_fname != nullptr ? info.dli_fname : "";
}

TEST(OwnCallback, FindsTheObjectTableAndItself) {
    ASSERT_NE(objectOf(reinterpret_cast<void*>(&parseJsonCfgPlus)).find("libjsoncfgplus.so"),
              std::string::npos);
    const std::string text = R"({"device": {"name": "ap", "interface": [{"name": "radio1",
        "type": "radio", "wlanbssmap": [{"bss": 1, "wlan": "w1"}]}]},
        "wlan": [{"name": "w1", "cen_ssid_id": 1}]})";
    for (jsonCfgPlusCallback callback : {&lookOnly, &convertThenLook}) {
        SCOPED_TRACE(callback == &lookOnly ? "lookOnly" : "convertThenLook");
        g_seen = Seen();
        std::string output;
        apiCfgPlusResult* result = shared::parse(text, output, callback);
        EXPECT_NE(result, nullptr) << output;
        shared::release(result);
        EXPECT_TRUE(g_seen.root);
        EXPECT_TRUE(g_seen.device);
        EXPECT_TRUE(g_seen.wlan);
        EXPECT_EQ(g_seen.callback, callback);
    }
}

}  // namespace
