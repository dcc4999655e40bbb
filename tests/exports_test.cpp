// The shared library exports exactly the C entries callers link against, under plain names.
#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <string>

namespace {

std::set<std::string> plainExports() {
    std::string command = std::string("nm -D --defined-only ") + JCP_SHARED_LIBRARY + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::set<std::string> names;
    char line[4096];
    while (pipe != nullptr && std::fgets(line, sizeof line, pipe) != nullptr) {
        std::string text(line);
        std::string name = text.substr(text.find_last_of(' ') + 1);
        name.erase(name.find_last_not_of("\n") + 1);
        if (name.rfind("_Z", 0) == 0 || name.rfind("_", 0) == 0) continue;  // C++ and runtime
        names.insert(name);
    }
    if (pipe != nullptr) pclose(pipe);
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
                                           "jsonCfgPlusParserCallback",
                                           "jsonCfgPlusRates2WirelessMode",
                                           "apCfgVlanVIDGet",
                                           "apCfgBoardSubTypeGet"};
    std::set<std::string> exported = plainExports();
    ASSERT_FALSE(exported.empty());
    for (const std::string& name : exported) {
        bool known = entries.count(name) != 0 || name.rfind("addrchk", 0) == 0;
        EXPECT_TRUE(known) << "unexpected export " << name;
    }
    for (const char* core : {"parseJsonCfgPlus", "parseJsonCfgPlusFile", "freeJsonCfgPlus",
                             "getJsonCfgPlusReqId", "checkJsonCfgPlus", "printJsonCfgPlus"})
        EXPECT_EQ(exported.count(core), 1u) << core;
}

}  // namespace
