// SPDX-License-Identifier: MIT
// Reading the keys every kind of filter rule shares: precedence, action and contain-to-VLAN,
// each checked for its JSON type before its value is used.
#ifndef JSONCFGPLUS_CONVERT_RULE_FIELDS_PRIV_H
#define JSONCFGPLUS_CONVERT_RULE_FIELDS_PRIV_H

#include <cstring>
#include <string>
#include <type_traits>

#include "convert/ap_records.h"
#include "convert/converter.h"

namespace jcp {

using RuleFields = cfgPlusApiConverter::ElementList;

// The element's value as a message shows it.
std::string elementText(const cfgElement& element);
// True when the element is an integer in [low, high]; value receives it.
bool integerIn(const cfgElement& element, int low, int high, int& value);
// The first field of that name, or null.
const cfgElement* field(const RuleFields& fields, const char* name);

// "precedence"; -1 after a message when it is not a non-negative integer.
int readPrecedence(const RuleFields& fields, FILTER_RULE_ENTRY& rule);
// "allow" into the action word; with redirect, the value "redirect" also sets the extended
// REDIRECTION bit. -1 when it is not a string.
int readAction(const RuleFields& fields, apiCfgPlusFilterRule& rule, bool redirect);
// The VLAN word of a contain-to-VLAN action; nothing for other actions.
int readContainToVlan(const RuleFields& fields, FILTER_RULE_ENTRY& rule);

// The one-rule forms are exported and take the caller's record as it comes: each starts from an
// empty one, so no byte of an earlier rule reaches the data path.
template <typename Record>
void startRecord(Record& record) {
    static_assert(std::is_trivially_copyable<Record>::value, "a fixed record");
    std::memset(&record, 0, sizeof record);
}

// Converts one rule and appends its record; -1 when convert fails.
template <typename Convert>
int appendConverted(cfgElement& rule, cfgPlusApiConverter::FilterRuleList& out, Convert convert) {
    apiCfgPlusFilterRule record;
    if (convert(rule, record) != 0) return -1;
    out.push_back(record);
    return 0;
}

}  // namespace jcp

#endif
