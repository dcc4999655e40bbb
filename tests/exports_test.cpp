// SPDX-License-Identifier: MIT
// The shared library exports exactly what its version script lists: the C entries under plain
// names, and the members, vtables and typeinfo of the exported classes with the tables outside
// callers read. No template instance, internal helper or platform call leaves the library.
#include <fnmatch.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

// Names as nm prints them after the address and the symbol type; demangled with -C.
std::vector<std::string> dynamicExports(bool demangle) {
    std::string command = std::string("nm -D --defined-only ") + (demangle ? "-C " : "") +
                          JCP_SHARED_LIBRARY + " 2>&1";
    FILE* pipe = popen(command.c_str(), "r");
    std::vector<std::string> names;
    char line[8192];
    while (pipe != nullptr && std::fgets(line, sizeof line, pipe) != nullptr) {
        std::string text(line);
        text.erase(text.find_last_not_of('\n') + 1);
        size_t type = text.find(' ');
        if (type == std::string::npos || type + 3 > text.size()) continue;
        names.push_back(text.substr(type + 3));
    }
    if (pipe != nullptr) pclose(pipe);
    return names;
}

struct VersionScript {
    std::set<std::string> cEntries;
    std::vector<std::string> cxxExact;  // quoted: matched as written
    std::vector<std::string> cxxGlobs;  // unquoted: glob patterns

    bool exportsCxx(const std::string& demangled) const {
        for (const std::string& exact : cxxExact)
            if (demangled == exact) return true;
        for (const std::string& glob : cxxGlobs)
            if (fnmatch(glob.c_str(), demangled.c_str(), 0) == 0) return true;
        return false;
    }
};

VersionScript readVersionScript() {
    std::ifstream file(JCP_VERSION_SCRIPT);
    std::stringstream content;
    content << file.rdbuf();
    std::string text = std::regex_replace(content.str(), std::regex(R"re(/\*[\s\S]*?\*/)re"), "");
    VersionScript script;
    bool inCxx = false;
    std::istringstream lines(text);
    std::string line;
    static const std::regex kQuoted(R"re(^\s*"([^"]+)";\s*$)re");
    static const std::regex kPlain(R"re(^\s*([A-Za-z_][A-Za-z0-9_:*\[\]]*);\s*$)re");
    std::smatch m;
    while (std::getline(lines, line)) {
        if (line.find("extern \"C++\"") != std::string::npos) inCxx = true;
        if (inCxx && line.find("};") != std::string::npos) inCxx = false;
        if (std::regex_match(line, m, kQuoted)) {
            script.cxxExact.push_back(m[1]);
        } else if (std::regex_match(line, m, kPlain)) {
            if (inCxx)
                script.cxxGlobs.push_back(m[1]);
            else if (m[1] != "local" && m[1] != "global")
                script.cEntries.insert(m[1]);
        }
    }
    return script;
}

TEST(Exports, PlainNamesAreExactlyTheListedCEntries) {
    VersionScript script = readVersionScript();
    std::set<std::string> plain;
    for (const std::string& name : dynamicExports(false))
        if (name.rfind("_Z", 0) != 0) plain.insert(name);
    ASSERT_FALSE(plain.empty());
    EXPECT_EQ(plain, script.cEntries);
    // The documented interface, which the list must keep whatever is added to it.
    for (const char* entry :
         {"parseJsonCfgPlus", "parseJsonCfgPlusFile", "freeJsonCfgPlus", "getJsonCfgPlusReqId",
          "checkJsonCfgPlus", "printJsonCfgPlus", "sendJsonCfgPlus", "testJsonCfgPlusRedis",
          "getJsonCfgPlusDebugCfg", "getJsonCfgPlusDebugApplyCfg", "setJsonCfgPlusDebugApplyCfg",
          "printJsonCfgPlusDebugCfg", "jsonCfgPlusParserCallback", "jsonCfgPlusRates2WirelessMode",
          "addrchk", "addrchk_ipv4", "addrchk_ipv6"})
        EXPECT_EQ(plain.count(entry), 1u) << entry;
    // The platform calls are the AP's to define; the library never offers its own.
    for (const char* platform : {"apCfgVlanVIDGet", "apCfgBoardSubTypeGet"})
        EXPECT_EQ(plain.count(platform), 0u) << platform;
}

TEST(Exports, CxxNamesAreTheExportedClassesAndTablesOnly) {
    VersionScript script = readVersionScript();
    std::vector<std::string> exported = dynamicExports(true);
    std::set<std::string> cxx;
    for (const std::string& name : exported) {
        if (script.cEntries.count(name) != 0) continue;
        cxx.insert(name);
        EXPECT_TRUE(script.exportsCxx(name)) << "unlisted export " << name;
        // A template instance of the standard library: its qualified name (before the
        // arguments, after any return type) lies in std.
        std::string qualified = name.substr(0, name.find('('));
        EXPECT_TRUE(qualified.rfind("std::", 0) != 0 &&
                    qualified.find(" std::") == std::string::npos)
            << "standard library instance exported: " << name;
    }
    // Every exported class and table is there, as outside callers use them.
    for (const char* prefix :
         {"cfgElement::", "jsonCfgPlus::", "cfgPlusApiConverter::", "MACAddr::", "IPAddr::",
          "redisClient::", "cfgPlusSignatureMaps::m_inst", "vtable for cfgElement",
          "typeinfo for jsonCfgPlus", "naiEapMethod", "naiEapAuthType", "naiEapAuthValId2",
          "naiEapAuthValId5", "jcp::dataRates24wbg", "jcp::dataRates5wacstrict"}) {
        bool found = false;
        for (const std::string& name : cxx) found = found || name.rfind(prefix, 0) == 0;
        EXPECT_TRUE(found) << prefix;
    }
}

}  // namespace
