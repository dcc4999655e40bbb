/* SPDX-License-Identifier: MIT */
/* Marks what the library exports; everything else is hidden. */
#ifndef JSONCFGPLUS_BASE_EXPORT_H
#define JSONCFGPLUS_BASE_EXPORT_H

#include "../platform/byte_order.h"

#define JCP_EXPORT __attribute__((visibility("default")))

#endif
