// SPDX-License-Identifier: MIT
// Filter rule records compared as a person reads an ACL: by identity (precedence and what the
// rule matches, in which direction), not by position, so that one inserted, removed or moved
// rule is one line, whatever it does to the positions of the others.
#ifndef JSONCFGPLUS_TOOLS_DIFF_RULES_H
#define JSONCFGPLUS_TOOLS_DIFF_RULES_H

#include <json-c/json.h>

#include <string>
#include <vector>

#include "diff_change.h"

namespace tool {

// True when both values are arrays of decoded filter rule records.
bool areRuleRecords(json_object* before, json_object* after);

// One line per rule inserted, removed, moved (same match, other precedence) or changed (same
// identity or precedence, other action or fields), and one when the same rules only changed
// order.
void compareRuleRecords(const std::string& where, const std::string& path, json_object* before,
                        json_object* after, std::vector<Change>& out);

}  // namespace tool

#endif
