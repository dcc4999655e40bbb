// SPDX-License-Identifier: MIT
// Printers that in-place conversions install on the elements they change. Each renders an
// entry with its indentation and name, like the standard rendering, and returns a heap
// string (strdup) that the caller frees.
#ifndef JSONCFGPLUS_CONVERT_ELEMENT_PRINT_H
#define JSONCFGPLUS_CONVERT_ELEMENT_PRINT_H

#include <string>

#include "../base/records.h"

char* printApiCfgPlusNetworkIpAddr(apiCfgPlusEntry* entry, unsigned int indent);
char* printApiCfgPlusLocalIpAddr(apiCfgPlusEntry* entry, unsigned int indent);
char* printApiCfgPlusMacAddr(apiCfgPlusEntry* entry, unsigned int indent);
char* printApiCfgPlusStrAsOctets(apiCfgPlusEntry* entry, unsigned int indent);
// An empty list renders "[ ]", as the standard rendering does.
char* printApiCfgPlusNetworkIpAddrList(apiCfgPlusEntry* entry, unsigned int indent);

namespace jcp {

// Indentation, the entry's name in double quotes and "\": " — the start of every line.
std::string entryPrefix(const apiCfgPlusEntry* entry, unsigned int indent);
// Dotted text of an IPv4 address stored in network byte order at bytes.
std::string networkOrderIpText(const unsigned char* bytes);
// The finished text as the heap string a printer returns.
char* printed(const std::string& text);

}  // namespace jcp

#endif
