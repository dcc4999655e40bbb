// SPDX-License-Identifier: MIT
// The shared library's fallback: its own hidden defaults, never a symbol of the AP's names,
// which would answer for the AP in every process that loads the library ahead of the AP's.
#include "platform/platform_calls_priv.h"

namespace jcp {

int fallbackVlanVid(int radio, int slot) {
    return defaultVlanVid(radio, slot);
}

int fallbackBoardSubType() {
    return defaultBoardSubType();
}

}  // namespace jcp
