// Calls into the AP's product-environment library. Off the AP, weak defaults answer 0; the
// AP's library (or a test) supplies the real ones.
#ifndef JSONCFGPLUS_PLATFORM_PLATFORM_H
#define JSONCFGPLUS_PLATFORM_PLATFORM_H

#include "api/export.h"

extern "C" {
// The value stored on the AP for a radio's WLAN slot (radio 0-based, slot 0 to 7).
JCP_EXPORT int apCfgVlanVIDGet(int radio, int slot);
JCP_EXPORT int apCfgBoardSubTypeGet(void);
}

#endif
