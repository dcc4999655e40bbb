// SPDX-License-Identifier: MIT
// Filter rule records matched by identity; see diff_rules.h.
#include "diff_rules.h"

#include <cstring>
#include <functional>
#include <unordered_map>

#include "convert/ap_records.h"
#include "item_pairing.h"
#include "json_equal.h"

namespace tool {

namespace {

// What a rule does rather than what it matches: an action may change and it is the same rule.
const char* const kActionFields[] = {"r_action_flags", "r_ext_action_flags", "r_action_vlanid",
                                     "cos_tos",        "cos_tosmask",        "cos_prio_txq",
                                     "cos_rates"};

// The shadow bits follow the action (an allow rule also passes ARP), not the match.
constexpr int kActionShadowFlags = kFilterShadowFrag | kFilterShadowArp;

bool isActionField(const char* name) {
    for (const char* action : kActionFields) {
        if (std::strcmp(name, action) == 0) return true;
    }
    return false;
}

json_object* field(json_object* rule, const char* name) {
    json_object* value = nullptr;
    json_object_object_get_ex(rule, name, &value);
    return value;
}

bool isRuleRecord(json_object* rule) {
    return json_object_is_type(rule, json_type_object) && field(rule, "precedence") != nullptr &&
           field(rule, "r_filter_flags") != nullptr;
}

// What the rule matches and in which direction, with or without its precedence.
std::string identity(json_object* rule, bool withPrecedence) {
    std::string key;
    json_object_object_foreach(rule, name, value) {
        if (isActionField(name)) continue;
        if (!withPrecedence && std::strcmp(name, "precedence") == 0) continue;
        key += name;
        key += '=';
        if (std::strcmp(name, "r_filter_flags") == 0) {
            key += std::to_string(json_object_get_int(value) & ~kActionShadowFlags);
        } else {
            key += compactJson(value);
        }
        key += ';';
    }
    return key;
}

std::string precedenceOf(json_object* rule) {
    return compactJson(field(rule, "precedence"));
}

// A zero number, or an all-zero address: a field the rule leaves unset.
bool isUnset(json_object* value) {
    if (json_object_is_type(value, json_type_int)) return json_object_get_int64(value) == 0;
    if (!json_object_is_type(value, json_type_string)) return false;
    const char* text = json_object_get_string(value);
    return std::strspn(text, "0.:") == std::strlen(text);
}

// The fields the rule sets, as one compact object.
std::string describe(json_object* rule) {
    json_object* shown = json_object_new_object();
    json_object_object_foreach(rule, name, value) {
        if (!isUnset(value)) json_object_object_add(shown, name, json_object_get(value));
    }
    std::string text = compactJson(shown);
    json_object_put(shown);
    return text;
}

// "field: old -> new" for every field that differs, in field order.
std::string fieldChanges(json_object* before, json_object* after) {
    std::string text;
    json_object_object_foreach(before, name, value) {
        json_object* other = field(after, name);
        if (sameJson(value, other)) continue;
        if (!text.empty()) text += ", ";
        text += std::string(name) + ": " + compactJson(value) + " -> " + compactJson(other);
    }
    return text;
}

size_t length(json_object* array) {
    return json_object_is_type(array, json_type_array) ? json_object_array_length(array) : 0;
}

}  // namespace

bool areRuleRecords(json_object* before, json_object* after) {
    for (json_object* records : {before, after}) {
        if (!json_object_is_type(records, json_type_array)) return false;
        for (size_t i = 0; i < length(records); ++i) {
            if (!isRuleRecord(json_object_array_get_idx(records, i))) return false;
        }
    }
    return true;
}

void compareRuleRecords(const std::string& where, const std::string& path, json_object* before,
                        json_object* after, std::vector<Change>& out) {
    // From the closest likeness to the loosest.
    ItemPairing pairing(before, after);
    pairing.pairBy([](json_object* rule) { return identity(rule, true); });
    pairing.pairBy([](json_object* rule) { return identity(rule, false); });
    pairing.pairBy(precedenceOf);

    for (size_t i = 0; i < pairing.oldCount(); ++i) {
        json_object* rule = pairing.oldItem(i);
        if (!pairing.oldPaired(i))
            out.push_back(Change{"removed", where, path, rule, nullptr, describe(rule), ""});
    }
    std::vector<size_t> keptOrder;  // old positions of the rules that kept their precedence
    std::unordered_map<std::string, int> keptPrecedences;
    for (size_t j = 0; j < pairing.newCount(); ++j) {
        json_object* rule = pairing.newItem(j);
        if (pairing.pairOf(j) == ItemPairing::kNone) {
            out.push_back(Change{"inserted", where, path, nullptr, rule, describe(rule), ""});
            continue;
        }
        json_object* old = pairing.oldItem(pairing.pairOf(j));
        bool samePrecedence = precedenceOf(old) == precedenceOf(rule);
        if (samePrecedence) {
            keptOrder.push_back(pairing.pairOf(j));
            ++keptPrecedences[precedenceOf(rule)];
        }
        if (sameJson(old, rule)) continue;
        out.push_back(Change{samePrecedence ? "changed" : "moved", where, path, old, rule,
                             describe(old) + ": " + fieldChanges(old, rule), ""});
    }
    for (size_t k = 1; k < keptOrder.size(); ++k) {
        if (keptOrder[k] > keptOrder[k - 1]) continue;
        bool distinct = keptPrecedences.size() == keptOrder.size();
        out.push_back(Change{"reordered", where, path, before, after,
                             distinct ? "the same rules in another order; each keeps its "
                                        "precedence, so the AP applies them as before"
                                      : "rules of equal precedence in another order, which the "
                                        "AP may apply differently",
                             ""});
        break;
    }
}

}  // namespace tool
