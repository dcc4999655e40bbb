// SPDX-License-Identifier: MIT
// Equality of two JSON values as the AP would tell them apart: json-c's own comparison says
// NaN differs from itself, so a document compared with itself would show a change.
#ifndef JSONCFGPLUS_TOOLS_JSON_EQUAL_H
#define JSONCFGPLUS_TOOLS_JSON_EQUAL_H

#include <json-c/json.h>

namespace tool {

// Deep equality; doubles are equal when both are NaN, or equal with the same sign (0.0 and -0.0
// are different bytes on the AP), so infinities equal only themselves.
bool sameJson(json_object* a, json_object* b);

}  // namespace tool

#endif
