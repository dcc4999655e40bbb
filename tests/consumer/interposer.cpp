// SPDX-License-Identifier: MIT
// A daemon with a class of its own that happens to be called MACAddr: its member has the same
// mangled name as one of the library's. The library's calls must stay inside the library, so
// the daemon's member is never called and the MAC addresses still convert.
#include <jsoncfgplus/api/jsoncfgplus.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

namespace {
int g_daemonCalls = 0;
}

class MACAddr {
  public:
    int assignFromString(const char* text, char separator);
};

int MACAddr::assignFromString(const char*, char) {
    ++g_daemonCalls;
    return -1;
}

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: interposer DOCUMENT\n");
        return 2;
    }
    std::ifstream file(argv[1]);
    std::stringstream text;
    text << file.rdbuf();
    const std::string document = text.str();
    // Keeps the daemon's member in its dynamic symbol table, as a real daemon's would be.
    MACAddr own;
    own.assignFromString("", ':');
    g_daemonCalls = 0;

    std::FILE* quiet = std::freopen("/dev/null", "w", stdout);
    apiCfgPlusResult* result =
        parseJsonCfgPlus(document.data(), static_cast<unsigned int>(document.size()),
                         jsonCfgPlusParserCallback, 0, 0, 0);
    (void)quiet;
    bool built = result != nullptr;
    freeJsonCfgPlus(result);
    if (!built || g_daemonCalls != 0) {
        std::fprintf(stderr, "interposer: built=%d, the daemon's MACAddr called %d times\n", built,
                     g_daemonCalls);
        return 1;
    }
    return 0;
}
