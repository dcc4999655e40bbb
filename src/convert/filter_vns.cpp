// SPDX-License-Identifier: MIT
// The filter step of the pipeline: the external applications, then each WLAN service's ACLs,
// application policy and captive portal as its rule array, with the default action and class
// of service, the rate limits and the service's VLAN values.
#include <cstring>

#include "base/build_events_priv.h"
#include "base/diag.h"
#include "convert/filter_print.h"
#include "convert/rule_fields_priv.h"
#include "signature/signature_maps.h"

namespace {

using ElementList = cfgPlusApiConverter::ElementList;
using FilterRuleList = cfgPlusApiConverter::FilterRuleList;

// Rules one service hands the data path; past it the rest are dropped with a warning. 256
// records (19 KB) cover large MAC, IP and application lists and keep the copy to the data
// path small.
constexpr size_t kMaxFilterRules = 256;
constexpr size_t kResourceSlots = 18;

// Where a WLAN's policy keeps its default action, class of service and rate limits: the
// application policy is the one policy object a WLAN names as a whole.
const char kDefaultActionTree[] = "app_policy/default_action";
const char kDefaultCosTree[] = "app_policy/default_cos";
const char kPolicyPrefix[] = "app_policy/";

// The rules of the object array arrayName, with arrayName + "/" stripped from their keys.
ElementList rulesUnder(const cfgPlusApiConverter& converter, const ElementList& list,
                       const std::string& arrayName) {
    auto it = converter.findCfgElement(list, arrayName);
    if (it == list.end() || it->kind != CFG_OBJ_ARRAY) return ElementList();
    return converter.jsonCfgPlusRemovePrefix(it->objArray, arrayName + "/");
}

// The elements named prefix + "/..." as one element list with plain keys; a null element
// when there are none.
cfgElement subTree(const ElementList& list, const std::string& prefix) {
    const std::string lead = prefix + "/";
    ElementList children;
    for (const cfgElement& element : list) {
        if (element.name.compare(0, lead.size(), lead) != 0) continue;
        children.push_back(element);
        children.back().name.erase(0, lead.size());
    }
    if (children.empty()) return cfgElement();
    return cfgElement(prefix, std::move(children), prefix);
}

// "captive_portal/cen_http_ports" (a "80,8080" text, a number or a list of numbers) as the
// integer list "cen_http_ports"; -1 after a message for a port that is not one.
int httpPorts(const cfgPlusApiConverter& converter, ElementList& list, std::list<int>& ports) {
    auto source = converter.findCfgElement(list, "captive_portal/cen_http_ports");
    if (source == list.end()) return 0;
    jcp::EventKeyScope key("captive_portal/cen_http_ports");
    if (source->kind == CFG_STRING) {
        // A piece that is not a number throws, as every decimal text of the document does.
        ports = converter.jsonCfgPlusStr2IntList(source->strValue, ',');
    } else if (source->kind == CFG_INT_LIST) {
        ports = source->intList;
    } else if (source->kind == CFG_INT) {
        ports = {source->intValue};
    } else {
        jcp::failure("HTTP port of the captive portal is not valid: ", jcp::elementText(*source));
        return -1;
    }
    for (int port : ports) {
        if (port < 0 || port > 65535) {
            jcp::failure("HTTP port of the captive portal is not valid: ", port);
            return -1;
        }
    }
    jsonCfgPlus::addCfgElement(list, cfgElement("cen_http_ports", ports, "cen_http_ports"), true);
    return 0;
}

// The object array arrayName, or null.
cfgObjArray* ruleArray(cfgPlusApiConverter& converter, ElementList& list,
                       const std::string& arrayName) {
    auto it = converter.findCfgElement(list, arrayName);
    return it != list.end() && it->kind == CFG_OBJ_ARRAY ? &it->objArray : nullptr;
}

// While alive, the rule's children go by their plain keys: a prefix every child's name starts
// with is cut from the front and put back at the end. The rule converters only read, and this
// spares a copy of every rule of every service; the names keep their buffers both ways.
class PlainKeys {
  public:
    PlainKeys(cfgElement& rule, const std::string& prefix) : m_rule(rule), m_prefix(prefix) {
        for (const cfgElement& child : rule.elements) {
            if (child.name.compare(0, prefix.size(), prefix) != 0) return;
        }
        for (cfgElement& child : rule.elements) child.name.erase(0, prefix.size());
        m_stripped = true;
    }
    ~PlainKeys() {
        if (!m_stripped) return;
        for (cfgElement& child : m_rule.elements) child.name.insert(0, m_prefix);
    }
    PlainKeys(const PlainKeys&) = delete;
    PlainKeys& operator=(const PlainKeys&) = delete;

    // False when some child lacks the prefix, and the names are as they were.
    bool stripped() const { return m_stripped; }

  private:
    cfgElement& m_rule;
    const std::string& m_prefix;
    bool m_stripped = false;
};

// Converts each rule of the array under its plain keys (the array's two key components cut
// from each child's name). convert returns 0 to keep the record, -1 to fail.
template <typename Convert>
int convertRules(cfgPlusApiConverter& converter, ElementList& list, const char* arrayName,
                 FilterRuleList& out, Convert convert) {
    cfgObjArray* rules = ruleArray(converter, list, arrayName);
    if (rules == nullptr) return 0;
    const std::string prefix = std::string(arrayName) + "/";
    size_t index = 0;
    for (cfgElement& item : *rules) {
        jcp::EventKeyScope key(arrayName, index++);
        if (item.kind != CFG_OBJECT) continue;
        PlainKeys plain(item, prefix);
        if (plain.stripped()) {
            if (jcp::appendConverted(item, out, convert) < 0) return -1;
            continue;
        }
        // Names outside the array's path (never from the walk) take the general strip.
        cfgElement rule = converter.jsonCfgPlusRemovePrefix(item, 2);
        if (jcp::appendConverted(rule, out, convert) < 0) return -1;
    }
    return 0;
}

template <typename Convert>
int convertPair(cfgPlusApiConverter& converter, ElementList& list, const char* inbound,
                const char* outbound, FilterRuleList& merged, Convert convert) {
    FilterRuleList in;
    FilterRuleList out;
    auto inward = [&](cfgElement& rule, apiCfgPlusFilterRule& record) {
        return convert(rule, cfgPlusApiConverter::FILTER_INBOUND, record);
    };
    auto outward = [&](cfgElement& rule, apiCfgPlusFilterRule& record) {
        return convert(rule, cfgPlusApiConverter::FILTER_OUTBOUND, record);
    };
    if (convertRules(converter, list, inbound, in, inward) != 0 ||
        convertRules(converter, list, outbound, out, outward) != 0)
        return -1;
    converter.jsonCfgPlusMergeVnsFilters(in, out, merged);
    return 0;
}

// Whole 76-byte apiCfgPlusFilterRule records, not 72-byte FILTER_RULE_ENTRYs: the extended
// action word carries REDIRECTION to the AP.
void appendRule(std::vector<uint8_t>& bytes, const apiCfgPlusFilterRule& rule) {
    const auto* at = reinterpret_cast<const uint8_t*>(&rule);
    bytes.insert(bytes.end(), at, at + sizeof rule);
}

template <typename Record>
std::vector<uint8_t> recordBytes(const Record* records, size_t count) {
    const auto* at = reinterpret_cast<const uint8_t*>(records);
    return std::vector<uint8_t>(at, at + count * sizeof(Record));
}

std::string serviceName(const cfgPlusApiConverter& converter, const vns_entry& wlan) {
    std::string name = converter.getCfgElementString(wlan.elements, "name");
    return "\"" + name + "\" (radio " + std::to_string(wlan.radioId) + ", ssid id " +
           std::to_string(wlan.ssidId) + ")";
}

// The rules in their array order: merged MAC, IPv4 and IPv6 rules, the captive portal's,
// then the application policy's, which refine the others; cut at kMaxFilterRules.
std::vector<uint8_t> concatenate(const std::string& service, const FilterRuleList& mac,
                                 const FilterRuleList& ipv4, const FilterRuleList& ipv6,
                                 const std::list<FILTER_RULE_ENTRY>& portal,
                                 const FilterRuleList& apps) {
    size_t total = mac.size() + ipv4.size() + ipv6.size() + portal.size() + apps.size();
    if (total > kMaxFilterRules) {
        jcp::diag("[WARN] jsonCfgPlusVnsFilters: service ", service, " has ", total,
                  " filter rules, only the first ", kMaxFilterRules, " are kept");
        jcp::reportEvent(jcp::EventKind::dropped, "",
                         "the service has " + std::to_string(total) +
                             " filter rules; only the first " + std::to_string(kMaxFilterRules) +
                             " are kept, the rest are dropped");
    }
    std::vector<uint8_t> bytes;
    bytes.reserve(std::min(total, kMaxFilterRules) * sizeof(apiCfgPlusFilterRule));
    size_t kept = 0;
    auto add = [&](const apiCfgPlusFilterRule& rule) {
        if (kept++ < kMaxFilterRules) appendRule(bytes, rule);
    };
    for (const FilterRuleList* list : {&mac, &ipv4, &ipv6}) {
        for (const apiCfgPlusFilterRule& rule : *list) add(rule);
    }
    for (const FILTER_RULE_ENTRY& entry : portal) {
        apiCfgPlusFilterRule rule;
        std::memset(&rule, 0, sizeof rule);
        rule.rule = entry;
        add(rule);
    }
    for (const apiCfgPlusFilterRule& rule : apps) add(rule);
    return bytes;
}

// The WLAN's own "cen_rate_limit", else its policy's, as the object array "cen_rate_limit".
cfgElement rateLimits(const cfgPlusApiConverter& converter, ElementList& list) {
    auto own = converter.findCfgElement(list, "cen_rate_limit");
    if (own != list.end()) return *own;
    auto policy = converter.findCfgElement(list, std::string(kPolicyPrefix) + "cen_rate_limit");
    if (policy == list.end() || policy->kind != CFG_OBJ_ARRAY) return cfgElement();
    ElementList items = converter.jsonCfgPlusRemovePrefix(policy->objArray, kPolicyPrefix);
    cfgObjArray array;
    array.splice(array.end(), items);
    cfgElement element("cen_rate_limit", std::move(array), "cen_rate_limit");
    list.push_back(element);
    return element;
}

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusVnsFilters(jsonCfgPlus& doc) {
    if (doc.m_trace != 0) jcp::progress("jsonCfgPlusVnsFilters converting...");
    cfgPlusSignatureMaps& maps = cfgPlusSignatureMaps::m_inst;
    // Picks up a live update before any rule is looked up; silent when there is none.
    maps.reload();

    // The document is the whole configuration: without a table no custom signature remains.
    std::list<cfgPlusExtendedSig> signatures;
    auto table = findCfgElement(doc.m_global, "cen_ext_app_cfg_tbl");
    if (table != doc.m_global.end() && table->kind == CFG_OBJ_ARRAY) {
        std::vector<EXT_APP_CONFIG> apps;
        jsonCfgPlusExtAppl(table->objArray, apps);
        for (const EXT_APP_CONFIG& app : apps) {
            cfgPlusExtendedSig signature;
            signature.appId = static_cast<int32_t>(app.appId);
            signature.dispId = static_cast<int32_t>(app.dispId);
            signature.groupId = static_cast<int32_t>(app.groupId);
            signature.name = std::string(app.dispName, strnlen(app.dispName, sizeof app.dispName));
            signature.matchStr =
                std::string(app.matchStr, strnlen(app.matchStr, sizeof app.matchStr));
            signatures.push_back(std::move(signature));
        }
        doc.m_global.push_back(cfgElement("cen_ext_applications",
                                          recordBytes(apps.data(), apps.size()), "", nullptr,
                                          printApiCfgPlusExtAppl));
    }
    maps.reloadExtended(signatures);

    for (radio_entry& radio : doc.m_radios) {
        for (vns_entry& wlan : radio.wlans) {
            jcp::EventPlaceScope place(wlan);
            if (jsonCfgPlusVnsServiceFilters(wlan) != 0) return -1;
        }
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsServiceFilters(vns_entry& wlan) {
    ElementList& list = wlan.elements;
    std::list<int> ports;
    if (httpPorts(*this, list, ports) != 0) return -1;
    bool enforced = captivePortal(list);

    auto mac = [this](cfgElement& rule, apiCfgPlusFilterDirection direction,
                      apiCfgPlusFilterRule& out) {
        return jsonCfgPlusVnsMacAcl(rule, direction, out);
    };
    auto ip = [this](cfgElement& rule, apiCfgPlusFilterDirection direction,
                     apiCfgPlusFilterRule& out) {
        return jsonCfgPlusVnsIpAcl(rule, direction, out);
    };
    FilterRuleList macRules;
    FilterRuleList ipv4Rules;
    FilterRuleList ipv6Rules;
    FilterRuleList appRules;
    std::list<FILTER_RULE_ENTRY> portalRules;
    if (convertPair(*this, list, "mac_in_acl/mac_rules", "mac_out_acl/mac_rules", macRules, mac) !=
            0 ||
        convertPair(*this, list, "ip_in_acl/ip_rules", "ip_out_acl/ip_rules", ipv4Rules, ip) != 0)
        return -1;
    // The white list stands whatever the portal does; only the HTTP ports lead to the portal's
    // redirect, which exists only when it is enforced.
    ElementList entries = rulesUnder(*this, list, "captive_portal/dns_whitelist/entry");
    if (!enforced) ports.clear();
    if (jsonCfgPlusVnsCaptivePortalIpAcl(entries, ports, portalRules) != 0) return -1;
    if (convertPair(*this, list, "ipv6_in_acl/ip_rules", "ipv6_out_acl/ip_rules", ipv6Rules, ip) !=
        0)
        return -1;
    auto app = [this](cfgElement& rule, apiCfgPlusFilterRule& out) {
        return jsonCfgPlusVnsAppPolicy(rule, out);
    };
    if (convertRules(*this, list, "app_policy/rule_entry", appRules, app) != 0) return -1;

    std::vector<uint8_t> rules = concatenate(serviceName(*this, wlan), macRules, ipv4Rules,
                                             ipv6Rules, portalRules, appRules);
    bool filtering = !rules.empty();
    jsonCfgPlus::addCfgElement(
        list,
        cfgElement("cen_filter_rules", std::move(rules), "", nullptr, printApiCfgPlusFilterRules),
        true);

    std::string action = "deny";
    int actionVlan = 0;
    cfgElement actionTree = subTree(list, kDefaultActionTree);
    jsonCfgPlusVnsDefaultAction(actionTree, action, actionVlan);
    filtering = filtering || actionTree.kind == CFG_OBJECT;
    jsonCfgPlus::addCfgElement(list, cfgElement("cen_default_action", action), true);
    ap_cos_entry cos = {0, 0, 0, 0, 0xFF};
    jsonCfgPlusVnsDefaultCoS(subTree(list, kDefaultCosTree), cos);
    jsonCfgPlus::addCfgElement(
        list,
        cfgElement("cen_default_cos", recordBytes(&cos, 1), "", nullptr, printApiCfgPlusDefaultCoS),
        true);
    if (action == "contain-to-vlan") {
        jsonCfgPlus::addCfgElement(
            list, cfgElement("cen_contain_to_vlan/vlan", actionVlan & 0x0FFF), true);
        jsonCfgPlus::addCfgElement(
            list, cfgElement("cen_contain_to_vlan/cen_bridged", (actionVlan & 0x8000) != 0), true);
    }

    std::vector<unsigned int> slots(kResourceSlots, 0);
    jsonCfgPlusVnsResourceTable(rateLimits(*this, list), slots);
    jsonCfgPlus::addCfgElement(
        list,
        cfgElement("cen_resource_table", recordBytes(slots.data(), slots.size()), "", nullptr,
                   printApiCfgPlusResourceTable),
        true);

    // The VLAN values only for a service that names its VLAN.
    if (findCfgElement(list, "vlans/vlan") != list.end()) {
        int word = 0;
        jsonCfgPlusVnsVlan(static_cast<const ElementList&>(list), word);
        jsonCfgPlus::addCfgElement(list, cfgElement("vlans/cen_wlan_vlan", word), true);
        jsonCfgPlus::addCfgElement(list, cfgElement("pvid", word & 0x0FFF), true);
    }
    // The data path redirects a client's web traffic exactly when the portal is enforced.
    jsonCfgPlus::addCfgElement(list, cfgElement("cen_captive_portal_redirect", enforced), true);
    // The data path filters a service only when it has rules or a policy's explicit default.
    jsonCfgPlus::addCfgElement(list, cfgElement("cen_ap_filtering", filtering), true);
    // Flow export: the WLAN's own switch stands; else the policy's; else off.
    if (findCfgElement(list, "netflow") == list.end()) {
        auto policyFlow = findCfgElement(list, std::string(kPolicyPrefix) + "netflow");
        bool netflow =
            policyFlow != list.end() && policyFlow->kind == CFG_BOOL && policyFlow->boolValue;
        list.push_back(cfgElement("netflow", netflow));
    }
    return 0;
}
