// SPDX-License-Identifier: MIT
// The debug settings file with any content: loaded and shown through the exported entries,
// never a crash. The file lives in a directory of the fuzzer's own.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "api/debug_cfg.h"

namespace {

std::string g_settingsPath;

void removeSettings() {
    std::remove(g_settingsPath.c_str());
    std::string dir = g_settingsPath.substr(0, g_settingsPath.rfind('/'));
    rmdir(dir.c_str());
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    char dir[] = "/tmp/jcp_debug_fuzz_XXXXXX";
    if (mkdtemp(dir) == nullptr) std::abort();
    g_settingsPath = std::string(dir) + "/cap.conf.xml";
    std::atexit(removeSettings);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FILE* file = std::fopen(g_settingsPath.c_str(), "wb");
    if (file == nullptr) std::abort();
    std::fwrite(data, 1, size, file);
    std::fclose(file);

    // Through the exported entries, which catch nothing here: an exception out of one is a
    // finding.
    jsonCfgPlusDebugCfg::m_inst.setPath(g_settingsPath);
    getJsonCfgPlusDebugCfg();
    printJsonCfgPlusDebugCfg();
    return 0;
}
