// The shared library exports exactly the C entries callers link against, under plain names.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>

namespace {

std::set<std::string> dynamicExports() {
    std::string command = std::string("nm -D --defined-only ") + JCP_SHARED_LIBRARY + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::set<std::string> names;
    char line[4096];
    while (pipe != nullptr && std::fgets(line, sizeof line, pipe) != nullptr) {
        std::string text(line);
        std::string name = text.substr(text.find_last_of(' ') + 1);
        name.erase(name.find_last_not_of("\n") + 1);
        names.insert(name);
    }
    if (pipe != nullptr) pclose(pipe);
    return names;
}

std::set<std::string> plainExports() {
    std::set<std::string> names;
    for (const std::string& name : dynamicExports()) {
        if (name.rfind("_", 0) != 0) names.insert(name);  // not C++ or runtime
    }
    return names;
}

TEST(Exports, PlainNamesAreExactlyTheCEntries) {
    const std::set<std::string> entries = {"parseJsonCfgPlus",
                                           "parseJsonCfgPlusFile",
                                           "freeJsonCfgPlus",
                                           "getJsonCfgPlusReqId",
                                           "checkJsonCfgPlus",
                                           "printJsonCfgPlus",
                                           "sendJsonCfgPlus",
                                           "testJsonCfgPlusRedis",
                                           "getJsonCfgPlusDebugCfg",
                                           "getJsonCfgPlusDebugApplyCfg",
                                           "setJsonCfgPlusDebugApplyCfg",
                                           "printJsonCfgPlusDebugCfg",
                                           "setJsonCfgPlusElementBudget",
                                           "jsonCfgPlusParserCallback",
                                           "jsonCfgPlusRates2WirelessMode",
                                           "setJsonCfgPlusDiagHandler",
                                           "setJsonCfgPlusIconDir"};
    // Not the platform calls either: a definition here would answer for the AP's own.
    std::set<std::string> exported = plainExports();
    ASSERT_FALSE(exported.empty());
    for (const std::string& name : exported) {
        bool known = entries.count(name) != 0 || name.rfind("addrchk", 0) == 0;
        EXPECT_TRUE(known) << "unexpected export " << name;
    }
    // The signature maps' single instance is part of the exported C++ interface.
    std::string nm = std::string("nm -D --defined-only ") + JCP_SHARED_LIBRARY +
                     " | grep -qx '.* _ZN20cfgPlusSignatureMaps6m_instE'";
    EXPECT_EQ(std::system(nm.c_str()), 0);
    for (const char* core : {"parseJsonCfgPlus", "parseJsonCfgPlusFile", "freeJsonCfgPlus",
                             "getJsonCfgPlusReqId", "checkJsonCfgPlus", "printJsonCfgPlus"})
        EXPECT_EQ(exported.count(core), 1u) << core;
    // The EAP name tables are globals an outside caller reads.
    std::set<std::string> all = dynamicExports();
    for (const char* table :
         {"naiEapMethod", "naiEapAuthType", "naiEapAuthValId2", "naiEapAuthValId5"}) {
        EXPECT_TRUE(std::any_of(all.begin(), all.end(), [&](const std::string& name) {
            return name.find(table) != std::string::npos;
        })) << table;
    }
}

}  // namespace
