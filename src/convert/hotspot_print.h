// SPDX-License-Identifier: MIT
// Printers of the Hotspot 2.0 record lists and the OSU provider list's release. Each printer
// renders an entry with its indentation and name, then its records as an array of objects
// with their fields by name ("[ ]" when it holds none; a trailing partial record is not
// shown), and returns a heap string (strdup) that the caller frees.
#ifndef JSONCFGPLUS_CONVERT_HOTSPOT_PRINT_H
#define JSONCFGPLUS_CONVERT_HOTSPOT_PRINT_H

#include "../base/records.h"

// _3GPP_CELL_NET records: "mcc", "mnc".
char* printApiCfgPlusCellNet(apiCfgPlusEntry* entry, unsigned int indent);
// NAI_REALM records: "realm_name" and "eap_method", the rows in use.
char* printApiCfgPlusNaiRealm(apiCfgPlusEntry* entry, unsigned int indent);
// NAME_LANG records (venue and operator names): "code", "name".
char* printApiCfgPlusVenueName(apiCfgPlusEntry* entry, unsigned int indent);
// CONN_CAP records: "protocol", "port", "status".
char* printApiCfgPlusConnCap(apiCfgPlusEntry* entry, unsigned int indent);
// The OSU provider list: its head, then each OSU_SP with its names, descriptions, icons,
// NAI, server URI and methods. Counts are bounded by the record's arrays, and icon data that
// would lie outside the value shows as out of range.
char* printApiCfgPlusOsuSp(apiCfgPlusEntry* entry, unsigned int indent);
// jsonHS2Icon records: "width", "height", "code", "icon_name", and "icon_data" as its length
// and offset.
char* printApiCfgPlusOsuIcons(apiCfgPlusEntry* entry, unsigned int indent);
// Releases an OSU provider list entry whole: its name and its value block, in which the icon
// bytes the records point to by offset live.
void releaseCfgPlusOsuIcons(apiCfgPlusEntry* entry);

#endif
