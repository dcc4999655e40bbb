// SPDX-License-Identifier: MIT
// The library's answers to the platform calls where the process has no platform library.
#include <atomic>

#include "base/diag.h"
#include "platform/platform_calls_priv.h"

namespace jcp {

namespace {

// Off the AP this is expected; on the AP it means every WLAN reorder drops its services, so it
// is never silent.
void warnOnce(std::atomic<bool>& warned, const char* call) {
    if (warned.exchange(true)) return;
    diag("[WARN] ", call,
         ": no platform library in the process defines it; the library's default answers 0.");
}

std::atomic<bool> g_vlanVidWarned{false};
std::atomic<bool> g_boardSubTypeWarned{false};

}  // namespace

int defaultVlanVid(int, int) {
    warnOnce(g_vlanVidWarned, "apCfgVlanVIDGet");
    return 0;
}

int defaultBoardSubType() {
    warnOnce(g_boardSubTypeWarned, "apCfgBoardSubTypeGet");
    return 0;
}

}  // namespace jcp
