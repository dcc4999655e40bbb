/* SPDX-License-Identifier: MIT */
/* Build guard: the AP reads its fixed records as little-endian, and the records are written in
 * the host's byte order, so a big-endian build would hand the AP byte-swapped fields. */
#ifndef JSONCFGPLUS_PLATFORM_BYTE_ORDER_H
#define JSONCFGPLUS_PLATFORM_BYTE_ORDER_H

#if !defined(__BYTE_ORDER__) || __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error \
    "jsoncfgplus writes the AP's records in host byte order: build it for a little-endian target only"
#endif

#endif
