// SPDX-License-Identifier: MIT
// Printers of the filter rules, the default class of service, the resource table and the
// external applications, in the indented JSON-like shape of the standard rendering.
#ifndef JSONCFGPLUS_CONVERT_FILTER_PRINT_H
#define JSONCFGPLUS_CONVERT_FILTER_PRINT_H

#include <cstdint>
#include <string>

#include "../base/records.h"
#include "ap_records.h"

// The set flag names, each followed by ",", in the order the daemon's tools list them.
std::string actionFlagsToString(uint16_t flags);
std::string extActionFlagsToString(uint16_t flags);
std::string filterFlagsToString(uint16_t flags);

// Entry printers: indentation and name, then the value; each returns a heap string (strdup)
// that the caller frees. A trailing partial record is not shown.
char* printApiCfgPlusFilterRules(apiCfgPlusEntry* entry, unsigned int indent);
char* printApiCfgPlusDefaultCoS(apiCfgPlusEntry* entry, unsigned int indent);
char* printApiCfgPlusResourceTable(apiCfgPlusEntry* entry, unsigned int indent);
char* printApiCfgPlusExtAppl(apiCfgPlusEntry* entry, unsigned int indent);

// One record as an object opened at indent.
std::string printApiCfgPlusFilterRule(const apiCfgPlusFilterRule& rule, unsigned int indent);
std::string printApiCfgPlusFilterOneExtAppl(const EXT_APP_CONFIG& app, unsigned int indent);

#endif
