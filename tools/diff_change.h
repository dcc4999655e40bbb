// SPDX-License-Identifier: MIT
// One change that diff reports: what changed where, with the values before and after.
#ifndef JSONCFGPLUS_TOOLS_DIFF_CHANGE_H
#define JSONCFGPLUS_TOOLS_DIFF_CHANGE_H

#include <json-c/json.h>

#include <string>

namespace tool {

struct Change {
    // "added", "removed", "changed"; for rules and list items also "inserted", "moved" and
    // "reordered".
    const char* change;
    std::string where;    // "global", "radio[R]", "radio[R]/vns[V]", "radio[R]/meshpoint[V]"
    std::string path;     // entry name, then ".field", "[index]" steps
    json_object* before;  // borrowed; unused for "added" and "inserted"
    json_object* after;   // borrowed; unused for "removed"
    std::string detail;   // when set, said instead of the values
    std::string to;       // a slot's new place, for a WLAN that moved
};

// Compact JSON text of a value, as diff prints it.
const char* compactJson(json_object* value);

}  // namespace tool

#endif
