// SPDX-License-Identifier: MIT
// The parts of a rule beyond its addresses: ToS match and class of service; application-policy
// and captive-portal rules; and the merge of a service's inbound and outbound lists.
#include <cstring>

#include "base/build_events_priv.h"
#include "base/diag.h"
#include "convert/rule_fields_priv.h"
#include "signature/signature_maps.h"

namespace {

using jcp::field;
using jcp::RuleFields;

int invalidCos(const cfgElement& element, uint32_t precedence) {
    jcp::failure("Class of service in the rule is not valid: ", element.name, ": ",
                 jcp::elementText(element), " in rule with precedence: ", precedence);
    return -1;
}

// A field in [low, high], or -1 after the class-of-service message; absent gives 1.
int readCos(const RuleFields& fields, const char* name, int high, uint32_t precedence, int& value) {
    const cfgElement* element = field(fields, name);
    if (element == nullptr) return 1;
    return jcp::integerIn(*element, 0, high, value) ? 0 : invalidCos(*element, precedence);
}

// A boolean enable switch; -1 after the message when it is not a boolean.
int readEnable(const RuleFields& fields, const char* name, uint32_t precedence, bool& on) {
    const cfgElement* element = field(fields, name);
    if (element == nullptr) return 0;
    if (element->kind != CFG_BOOL) return invalidCos(*element, precedence);
    on = element->boolValue;
    return 0;
}

constexpr uint16_t kCaptivePortalFlags =
    kFilterInDir | kFilterOutDir | kFilterDestIpIn | kFilterSourceIpOut;

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusVnsAclTosMatch(const ElementList& fields,
                                                   apiCfgPlusFilterRule& out) {
    FILTER_RULE_ENTRY& rule = out.rule;
    const cfgElement* dot1p = field(fields, "match_dot1p");
    const cfgElement* tos = field(fields, "cen_match_tos");
    const cfgElement* tosMask = field(fields, "cen_match_tosmask");
    int value = 0;
    int mask = 0xFF;  // a ToS without a mask matches exactly
    bool valid = (dot1p == nullptr || jcp::integerIn(*dot1p, 0, 7, value)) &&
                 (tos == nullptr || jcp::integerIn(*tos, 0, 255, value)) &&
                 (tosMask == nullptr || jcp::integerIn(*tosMask, 0, 255, mask));
    // Priority and ToS mask share one byte of the record, so a rule matches on one of them.
    if (!valid || (dot1p != nullptr && tos != nullptr)) {
        jcp::failure("ToS match in the rule is not valid: in rule with precedence: ",
                     rule.precedence);
        return -1;
    }
    if (dot1p != nullptr) {
        rule.r_tosmask_prio = static_cast<uint8_t>(dot1p->intValue);
        rule.r_filter_flags |= kFilterUp;
    } else if (tos != nullptr) {
        rule.r_tos = static_cast<uint8_t>(tos->intValue);
        rule.r_tosmask_prio = static_cast<uint8_t>(mapTosMask(mask));
        rule.r_filter_flags |= kFilterTos;
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsAclCos(const ElementList& fields,
                                              apiCfgPlusFilterRule& out) {
    FILTER_RULE_ENTRY& rule = out.rule;
    const uint32_t precedence = rule.precedence;
    uint16_t flags = 0;
    int priority = 0;
    int queue = 0;
    int tos = 0;
    int tosMask = 0;
    int ingress = 0xF;  // 15: no rate limit
    int egress = 0xF;
    bool ingressOn = false;
    bool egressOn = false;
    int results[] = {
        readCos(fields, "mark_8021p", 7, precedence, priority),
        readCos(fields, "cen_mark_tos", 255, precedence, tos),
        readCos(fields, "cen_mark_tosmask", 255, precedence, tosMask),
        readCos(fields, "transmit_queue", 15, precedence, queue),
        readCos(fields, "ingress_rate", 15, precedence, ingress),
        readCos(fields, "egress_rate", 15, precedence, egress),
        readEnable(fields, "ingress_enable", precedence, ingressOn),
        readEnable(fields, "egress_enable", precedence, egressOn),
    };
    for (int result : results) {
        if (result < 0) return -1;
    }
    if (results[0] == 0) flags |= kActionCosUp;
    if (results[1] == 0) flags |= kActionCosTos;
    if (results[3] == 0) flags |= kActionCosTxq;
    // Unlike a policy's default class of service, a rule's switch is read for its value.
    if (ingressOn) flags |= kActionCosIrl;
    if (egressOn) flags |= kActionCosOrl;
    if (flags != 0) flags |= kActionCosDefined;
    rule.r_action_flags |= flags;
    rule.cos_tos = static_cast<uint8_t>(tos);
    rule.cos_tosmask = static_cast<uint8_t>(tosMask);
    rule.cos_prio_txq = static_cast<uint8_t>((priority << 4) | queue);
    rule.cos_rates = static_cast<uint8_t>((ingress << 4) | egress);
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsAppPolicy(cfgElement& rule, apiCfgPlusFilterRule& out) {
    const RuleFields& fields = rule.elements;
    FILTER_RULE_ENTRY& record = out.rule;
    jcp::startRecord(out);
    record.r_eth_type = 0x0800;
    // An application is recognised on its flows, whichever way they go.
    record.r_filter_flags = kFilterInDir | kFilterOutDir;
    if (jcp::readPrecedence(fields, record) != 0 || jcp::readAction(fields, out, false) != 0)
        return -1;
    const cfgElement* app = field(fields, "canned_app");
    const cfgElement* category = field(fields, "app_category");
    for (const cfgElement* name : {app, category}) {
        if (name != nullptr && (name->kind != CFG_STRING || name->strValue.empty())) {
            jcp::failure("Application in the policy rule is not valid: ", jcp::elementText(*name),
                         " in rule with precedence: ", record.precedence);
            return -1;
        }
    }
    if (app == nullptr && category == nullptr) {
        jcp::failure("Application in the policy rule is not valid: no canned_app or app_category",
                     " in rule with precedence: ", record.precedence);
        return -1;
    }
    cfgPlusSignatureMaps& maps = cfgPlusSignatureMaps::m_inst;
    if (app != nullptr) record.r_app_sig_disp_id = uint32_t(maps.findDisplayId(app->strValue));
    if (category != nullptr)
        record.r_app_sig_group_id = uint32_t(maps.findGroupId(category->strValue));
    // An unknown name keeps its rule with id 0, as the maps answer: the manager decides what its
    // rules mean, and the warning tells that the AP's signature files do not know the name.
    auto warnUnknown = [&record](const cfgElement* name, uint32_t id) {
        if (name == nullptr || id != 0) return;
        jcp::diag("[WARN] application policy: no signature for ", name->strValue,
                  " in rule with precedence: ", record.precedence, ", kept with id 0");
        jcp::reportEvent(jcp::EventKind::reinterpreted, name->name,
                         "no signature for " + name->strValue +
                             "; the rule is kept with id 0 and matches no known application");
    };
    warnUnknown(app, record.r_app_sig_disp_id);
    warnUnknown(category, record.r_app_sig_group_id);
    if (jcp::readContainToVlan(fields, record) != 0 || jsonCfgPlusVnsAclCos(fields, out) != 0)
        return -1;
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsDnsWhiteListToIpAcl(cfgElement& entry,
                                                           FILTER_RULE_ENTRY& out) {
    jcp::startRecord(out);
    // A white-list entry names its server by "host"; it becomes a host-name rule like
    // "dns_name", its ids from the manager's DNS signatures.
    const cfgElement* host = field(entry.elements, "host");
    if (host == nullptr || host->kind != CFG_STRING || host->strValue.empty()) {
        jcp::failure("DNS white-list entry of the captive portal is not valid: ",
                     host != nullptr ? jcp::elementText(*host) : std::string("no host"));
        return -1;
    }
    // Precedence 0, the empty record's: what the portal lets through before login comes first.
    out.r_eth_type = 0x0800;
    out.r_filter_flags = kCaptivePortalFlags;
    out.r_action_flags = kActionAccessCtrl;
    cfgPlusExtendedSig signature = cfgPlusSignatureMaps::m_inst.findDnsEntry(host->strValue);
    if (signature.dispId == 0) {
        jcp::diag("warning: the specified FQDN rule not found its definition.");
        return 0;
    }
    out.r_app_sig_disp_id = static_cast<uint32_t>(signature.dispId);
    out.r_app_sig_group_id = static_cast<uint32_t>(signature.groupId);
    out.r_fixed_app_id = static_cast<uint32_t>(signature.appId);
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsCaptivePortalIpAcl(ElementList& entries,
                                                          std::list<int>& ports,
                                                          std::list<FILTER_RULE_ENTRY>& out) {
    for (cfgElement& entry : entries) {
        FILTER_RULE_ENTRY rule;
        std::memset(&rule, 0, sizeof rule);
        if (jsonCfgPlusVnsDnsWhiteListToIpAcl(entry, rule) != 0) return -1;
        out.push_back(rule);
    }
    // The client's web requests to these ports pass to the AP's portal redirect.
    for (int port : ports) {
        FILTER_RULE_ENTRY rule;
        std::memset(&rule, 0, sizeof rule);
        rule.r_eth_type = 0x0800;
        rule.r_protocol = 6;  // TCP
        rule.r_filter_flags = kFilterInDir | kFilterDestPortIn | kFilterProtType;
        rule.r_action_flags = kActionAccessCtrl;
        rule.r_port_min = static_cast<uint16_t>(port);
        rule.r_port_max = static_cast<uint16_t>(port);
        out.push_back(rule);
    }
    return 0;
}

void cfgPlusApiConverter::jsonCfgPlusMergeVnsFilters(FilterRuleList& inbound,
                                                     FilterRuleList& outbound,
                                                     FilterRuleList& merged) {
    // Ascending precedence, as the data path applies them; on equal precedence the inbound
    // rule first, and each list keeps its own order (both steps are stable).
    auto before = [](const apiCfgPlusFilterRule& a, const apiCfgPlusFilterRule& b) {
        return a.rule.precedence < b.rule.precedence;
    };
    inbound.sort(before);
    outbound.sort(before);
    inbound.merge(outbound, before);
    merged.splice(merged.end(), inbound);
}
