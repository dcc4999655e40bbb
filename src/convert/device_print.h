// SPDX-License-Identifier: MIT
// Printers of the device converters' records. Each renders an entry with its indentation and
// name, like the standard rendering, and returns a heap string (strdup) that the caller frees.
#ifndef JSONCFGPLUS_CONVERT_DEVICE_PRINT_H
#define JSONCFGPLUS_CONVERT_DEVICE_PRINT_H

#include "../base/records.h"

// The ARP-guard record: its count and the addresses in use, numbered from 1, as an object.
// A value shorter than the record renders "{ }".
char* printApiCfgPlusArpGuard(apiCfgPlusEntry* entry, unsigned int indent);
// One ARP-guard address: the entry's first 4 bytes in network byte order as a dotted address
// in double quotes; "" when the value is shorter.
char* printApiCfgPlusArpGuardEntry(apiCfgPlusEntry* entry, unsigned int indent);

#endif
