// SPDX-License-Identifier: MIT
// The static library's fallback: the AP's names as the link resolved them. They are weak
// references, never definitions: a definition in an archive member would beat the AP's shared
// library at link time and answer even the program's own calls. A program that defines the
// calls without exporting them (a test, a daemon with its platform linked in statically) gets
// its own; a program with none gets the library's defaults.
#include "platform/platform.h"
#include "platform/platform_calls_priv.h"

extern "C" {
__attribute__((weak)) int apCfgVlanVIDGet(int radio, int slot);
__attribute__((weak)) int apCfgBoardSubTypeGet(void);
}

namespace jcp {

int fallbackVlanVid(int radio, int slot) {
    return apCfgVlanVIDGet != nullptr ? apCfgVlanVIDGet(radio, slot) : defaultVlanVid(radio, slot);
}

int fallbackBoardSubType() {
    return apCfgBoardSubTypeGet != nullptr ? apCfgBoardSubTypeGet() : defaultBoardSubType();
}

}  // namespace jcp
