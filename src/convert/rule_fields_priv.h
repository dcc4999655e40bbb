// Reading the keys every kind of filter rule shares: precedence, action and contain-to-VLAN,
// each checked for its JSON type before its value is used.
#ifndef JSONCFGPLUS_CONVERT_RULE_FIELDS_PRIV_H
#define JSONCFGPLUS_CONVERT_RULE_FIELDS_PRIV_H

#include <cstring>
#include <string>

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

// Converts one rule into a zeroed record and appends it when convert returns 0 (1 skips the
// rule); -1 when convert fails.
template <typename Convert>
int appendConverted(cfgElement& rule, cfgPlusApiConverter::FilterRuleList& out, Convert convert) {
    apiCfgPlusFilterRule record;
    std::memset(&record, 0, sizeof record);
    int result = convert(rule, record);
    if (result == 0) out.push_back(record);
    return result < 0 ? -1 : 0;
}

}  // namespace jcp

#endif
