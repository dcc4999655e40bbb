/* SPDX-License-Identifier: MIT */
/* The AP's platform library as a separate shared object: the slot values the AP has stored.
 * Built from the library's own declarations, which a C compiler must accept. */
#include "platform/platform.h"

__attribute__((visibility("default"))) int apCfgVlanVIDGet(int radio, int slot) {
    return radio == 0 && slot == 5 ? 105 : 0;
}

__attribute__((visibility("default"))) int apCfgBoardSubTypeGet(void) {
    return 7;
}
