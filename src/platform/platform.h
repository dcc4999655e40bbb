/* SPDX-License-Identifier: MIT */
/** @file
 * Calls into the AP's product-environment library, which defines them. The library exports
 * no symbol of these names: it looks the process's definitions up at its first call, so link
 * and load order do not matter (a platform library opened with dlopen must be opened
 * RTLD_GLOBAL, before that call). Where the process has none, the library answers 0 and says
 * so once with a "[WARN]" line. */
#ifndef JSONCFGPLUS_PLATFORM_PLATFORM_H
#define JSONCFGPLUS_PLATFORM_PLATFORM_H

#ifdef __cplusplus
extern "C" {
#endif

/** The value stored on the AP for a radio's WLAN slot.
 * @param radio the radio, 0-based
 * @param slot the WLAN slot, 0 to 7
 * @return the stored value; 0 when the slot is unused */
int apCfgVlanVIDGet(int radio, int slot);
/** The AP board's sub-type.
 * @return the sub-type code */
int apCfgBoardSubTypeGet(void);

#ifdef __cplusplus
}
#endif

#endif
