// SPDX-License-Identifier: MIT
// The NAI-realm EAP name tables: the names a Passpoint policy uses for EAP methods and their
// authentication parameters, with the numbers that go on the air.
#ifndef JSONCFGPLUS_CONVERT_EAP_TABLES_H
#define JSONCFGPLUS_CONVERT_EAP_TABLES_H

#include <string>
#include <utility>
#include <vector>

#include "../base/export.h"

// An ordered table of name and value pairs, looked up by exact name.
using naiEapTable = std::vector<std::pair<std::string, int>>;

// EAP method names to IANA EAP method numbers.
extern JCP_EXPORT const naiEapTable naiEapMethod;
// Authentication parameter names to their 802.11u ids.
extern JCP_EXPORT const naiEapTable naiEapAuthType;
// Values of authentication parameter 2 (non-EAP inner authentication).
extern JCP_EXPORT const naiEapTable naiEapAuthValId2;
// Values of authentication parameter 5 (credential type).
extern JCP_EXPORT const naiEapTable naiEapAuthValId5;

#endif
