// SPDX-License-Identifier: MIT
// MAC and IP ACL rules into the data path's rule records, with the keys all rules share.
#include <cstring>
#include <sstream>

#include "addr/ip_addr.h"
#include "addr/mac_addr.h"
#include "base/build_events_priv.h"
#include "base/diag.h"
#include "convert/rule_fields_priv.h"
#include "signature/signature_maps.h"

namespace jcp {

std::string elementText(const cfgElement& element) {
    switch (element.kind) {
        case CFG_STRING:
            return element.strValue;
        case CFG_INT:
            return std::to_string(element.intValue);
        case CFG_BOOL:
            return element.boolValue ? "true" : "false";
        case CFG_DOUBLE: {
            std::ostringstream text;
            text << element.doubleValue;
            return text.str();
        }
        case CFG_NULL:
            return "null";
        default:
            return "(kind " + std::to_string(int(element.kind)) + ")";
    }
}

bool integerIn(const cfgElement& element, int low, int high, int& value) {
    if (element.kind != CFG_INT || element.intValue < low || element.intValue > high) return false;
    value = element.intValue;
    return true;
}

const cfgElement* field(const RuleFields& fields, const char* name) {
    // Lengths first: every rule reads each of its keys this way.
    const size_t length = std::strlen(name);
    for (const cfgElement& element : fields) {
        if (element.name.size() == length && std::memcmp(element.name.data(), name, length) == 0)
            return &element;
    }
    return nullptr;
}

int readPrecedence(const RuleFields& fields, FILTER_RULE_ENTRY& rule) {
    const cfgElement* precedence = field(fields, "precedence");
    if (precedence == nullptr) return 0;
    int value = 0;
    if (!integerIn(*precedence, 0, INT32_MAX, value)) {
        failure("Precedence in the ACL rule is not valid: ", elementText(*precedence));
        return -1;
    }
    rule.precedence = static_cast<uint32_t>(value);
    return 0;
}

int readAction(const RuleFields& fields, apiCfgPlusFilterRule& rule, bool redirect) {
    const cfgElement* allow = field(fields, "allow");
    if (allow == nullptr) {
        reportEvent(EventKind::defaulted, "",
                    "the rule has no \"allow\"; it carries no access control");
        return 0;
    }
    if (allow->kind != CFG_STRING) {
        failure("Action in the ACL rule is not valid: ", elementText(*allow),
                " in rule with precedence: ", rule.rule.precedence);
        return -1;
    }
    const std::string& action = allow->strValue;
    if (action == "none") return 0;
    uint16_t flags = kActionAccessCtrl;
    if (action == "contain-to-vlan") flags |= kActionVlan;
    if (action == "deny") flags |= kActionDeny;
    if (redirect && action == "redirect") rule.r_ext_action_flags |= kExtActionRedirection;
    if (action != "allow" && action != "deny" && action != "contain-to-vlan" &&
        !(redirect && action == "redirect"))
        reportEvent(EventKind::reinterpreted, "allow",
                    "\"" + action + "\" is not an action; treated as allow");
    rule.rule.r_action_flags |= flags;
    return 0;
}

int readContainToVlan(const RuleFields& fields, FILTER_RULE_ENTRY& rule) {
    if ((rule.r_action_flags & kActionVlan) == 0) return 0;
    const cfgElement* vlan = field(fields, "cen_contain_to_vlan/vlan");
    int id = 0;
    // 0 and 4095 are reserved by 802.1Q; a contain-to-VLAN rule without a VLAN contains nowhere.
    if (vlan == nullptr || !integerIn(*vlan, 1, 4094, id)) {
        diag("vlan: ", vlan != nullptr ? elementText(*vlan) : std::string("0"),
             " is not valid in rule with precedence: ", rule.precedence);
        return -1;
    }
    bool tagged = false;
    bool bridged = true;
    const cfgElement* taggedField = field(fields, "cen_contain_to_vlan/cen_tagged");
    const cfgElement* bridgedField = field(fields, "cen_contain_to_vlan/cen_bridged");
    for (const cfgElement* flag : {taggedField, bridgedField}) {
        if (flag != nullptr && flag->kind != CFG_BOOL) {
            diag("vlan: ", id, " is not valid in rule with precedence: ", rule.precedence);
            return -1;
        }
    }
    if (taggedField != nullptr) tagged = taggedField->boolValue;
    if (bridgedField != nullptr) bridged = bridgedField->boolValue;
    rule.r_action_vlanid =
        static_cast<uint16_t>(0x2000 | (tagged ? 0x4000 : 0) | (bridged ? 0x8000 : 0) | id);
    return 0;
}

}  // namespace jcp

namespace {

using jcp::field;
using jcp::RuleFields;
using Direction = cfgPlusApiConverter::apiCfgPlusFilterDirection;

// The flags a source or destination match adds in a direction.
uint16_t addressFlags(bool source, Direction direction) {
    bool out = direction == cfgPlusApiConverter::FILTER_OUTBOUND;
    if (source)
        return out ? (kFilterSourceIpOut | kFilterOutDir) : (kFilterSourceIpIn | kFilterInDir);
    return out ? (kFilterDestIpOut | kFilterOutDir) : (kFilterDestIpIn | kFilterInDir);
}

uint16_t directionFlag(Direction direction) {
    return direction == cfgPlusApiConverter::FILTER_OUTBOUND ? kFilterOutDir : kFilterInDir;
}

// A MAC address or mask in the rules' "-" form; -1 after message when it is not one.
int readMac(const cfgElement& element, const char* message, uint8_t (&out)[6]) {
    if (element.kind != CFG_STRING || !MACAddr2::isValid(element.strValue.c_str(), '-')) {
        jcp::diag(message, jcp::elementText(element));
        return -1;
    }
    MACAddr mac;
    mac.assignFromString(element.strValue.c_str(), '-');
    std::memcpy(out, mac.bytes(), sizeof out);
    return 0;
}

// An Ether type by name; -1 after message when unknown or wider than 16 bits.
int readEtherType(const cfgPlusApiConverter& converter, const cfgElement& element,
                  const char* message, uint16_t& out) {
    int type = element.kind == CFG_STRING ? converter.ethProtocol(element.strValue) : -1;
    if (type < 0 || type > 0xFFFF) {
        jcp::diag(message, jcp::elementText(element));
        return -1;
    }
    out = static_cast<uint16_t>(type);
    return 0;
}

// One rule address "addr[/prefix]" with its prefix length; the address alone is a host.
struct RuleAddress {
    IPAddr addr;
    int prefix = 0;
    bool operator==(const RuleAddress& other) const {
        return addr == other.addr && prefix == other.prefix;
    }
};

bool allDigits(const std::string& text) {
    if (text.empty() || text.size() > 3) return false;
    for (char c : text) {
        if (c < '0' || c > '9') return false;
    }
    return true;
}

// An address that does not parse fails the service: kept without it, the rule would match every
// host.
int readAddress(const cfgPlusApiConverter& converter, const cfgElement& element, RuleAddress& out) {
    bool valid = element.kind == CFG_STRING;
    if (valid) {
        std::string text;
        std::string prefix;
        converter.parseIpAddress(element.strValue, text, prefix);
        valid = out.addr.assignFromString(text.c_str()) == 0;
        int width = out.addr.isV4() ? 32 : 128;
        out.prefix = width;
        if (valid && !prefix.empty()) {
            valid = allDigits(prefix) && std::stoi(prefix) <= width;
            if (valid) out.prefix = std::stoi(prefix);
        } else if (valid && element.strValue.find('/') != std::string::npos) {
            valid = false;  // "10.0.0.1/" names no prefix
        }
    }
    if (!valid) jcp::failure("IP address in the IP ACL is not valid: ", jcp::elementText(element));
    return valid ? 0 : -1;
}

void storeAddress(const RuleAddress& address, FILTER_RULE_ENTRY& rule) {
    rule.r_ipmasklen = static_cast<uint8_t>(address.prefix);
    if (address.addr.isV4()) {
        uint32_t host = address.addr.v4();
        const uint8_t bytes[4] = {uint8_t(host >> 24), uint8_t(host >> 16), uint8_t(host >> 8),
                                  uint8_t(host)};
        std::memcpy(&rule.r_ipaddr, bytes, sizeof bytes);
        rule.r_eth_type = 0x0800;
    } else {
        address.addr.v6Bytes(rule.r_ip6addr);
        rule.r_eth_type = 0x86DD;
    }
}

struct PortRange {
    int low = 0;
    int high = 0;
    bool operator==(const PortRange& other) const { return low == other.low && high == other.high; }
};

// A "low_*"/"high_*" pair, each key filling only its own end (the other stays 0). 0 when absent
// (present false), -1 after a message when out of range or, with both ends given, reversed:
// such a rule fails the service, since kept without its ports it would filter other traffic.
int readPorts(const RuleFields& fields, const char* lowName, const char* highName,
              uint32_t precedence, PortRange& range, bool& present) {
    const cfgElement* low = field(fields, lowName);
    const cfgElement* high = field(fields, highName);
    present = low != nullptr || high != nullptr;
    if (!present) return 0;
    for (const cfgElement* port : {low, high}) {
        int value = 0;
        if (port != nullptr && !jcp::integerIn(*port, 0, 65535, value)) {
            jcp::failure("Port in the IP ACL is not valid: ", jcp::elementText(*port),
                         " in rule with precedence: ", precedence);
            return -1;
        }
    }
    range.low = low != nullptr ? low->intValue : 0;
    range.high = high != nullptr ? high->intValue : 0;
    if (low != nullptr && high != nullptr && range.low > range.high) {
        jcp::failure("Port in the IP ACL is not valid: ", range.low, "-", range.high,
                     " in rule with precedence: ", precedence);
        return -1;
    }
    return 0;
}

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusVnsMacAcl(cfgElement& rule, apiCfgPlusFilterDirection direction,
                                              apiCfgPlusFilterRule& out) {
    const RuleFields& fields = rule.elements;
    FILTER_RULE_ENTRY& record = out.rule;
    jcp::startRecord(out);
    record.r_filter_flags = directionFlag(direction);
    if (jcp::readPrecedence(fields, record) != 0 || jcp::readAction(fields, out, false) != 0)
        return -1;
    const cfgElement* dmac = field(fields, "dmac");
    const cfgElement* smac = field(fields, "smac");
    uint8_t source[6] = {};
    if (dmac != nullptr) {
        if (readMac(*dmac, "MAC address in the MAC ACL is not valid: ", record.r_mac) != 0)
            return -1;
        record.r_filter_flags |= addressFlags(false, direction);
    }
    if (smac != nullptr) {
        if (readMac(*smac, "MAC address in the MAC ACL is not valid: ", source) != 0) return -1;
        // The record holds one address: a rule naming both must name the same one.
        if (dmac != nullptr && std::memcmp(source, record.r_mac, sizeof source) != 0) {
            jcp::diag("Source and Dest MAC not the same: in rule with precedence: ",
                      record.precedence);
            return -1;
        }
        std::memcpy(record.r_mac, source, sizeof source);
        record.r_filter_flags |= addressFlags(true, direction);
    }
    for (const char* maskName : {"dmac_mask", "smac_mask"}) {
        const cfgElement* mask = field(fields, maskName);
        if (mask != nullptr &&
            readMac(*mask, "MAC mask in the MAC ACL is not valid: ", record.r_macmask) != 0)
            return -1;
    }
    if (const cfgElement* type = field(fields, "match_type")) {
        if (readEtherType(*this, *type,
                          "Ether type in the MAC ACL is not valid: ", record.r_eth_type) != 0)
            return -1;
        record.r_filter_flags |= kFilterProtType;
    }
    return jcp::readContainToVlan(fields, record);
}

int cfgPlusApiConverter::jsonCfgPlusVnsIpAcl(cfgElement& rule, apiCfgPlusFilterDirection direction,
                                             apiCfgPlusFilterRule& out) {
    const RuleFields& fields = rule.elements;
    FILTER_RULE_ENTRY& record = out.rule;
    bool outbound = direction == FILTER_OUTBOUND;
    jcp::startRecord(out);
    record.r_eth_type = 0x0800;
    record.r_filter_flags = directionFlag(direction);
    if (jcp::readPrecedence(fields, record) != 0 || jcp::readAction(fields, out, true) != 0)
        return -1;

    const cfgElement* dip = field(fields, "dip");
    const cfgElement* sip = field(fields, "sip");
    RuleAddress destination;
    RuleAddress source;
    if (dip != nullptr && readAddress(*this, *dip, destination) != 0) return -1;
    if (sip != nullptr && readAddress(*this, *sip, source) != 0) return -1;
    if (dip != nullptr && sip != nullptr && !(destination == source)) {
        jcp::diag("Source and Dest IP address not the same: in rule with precedence: ",
                  record.precedence);
        return -1;
    }
    if (dip != nullptr) {
        storeAddress(destination, record);
        record.r_filter_flags |= addressFlags(false, direction);
    }
    if (sip != nullptr) {
        storeAddress(source, record);
        record.r_filter_flags |= addressFlags(true, direction);
    }

    PortRange destinationPorts;
    PortRange sourcePorts;
    bool hasDestinationPorts = false;
    bool hasSourcePorts = false;
    if (readPorts(fields, "low_dport", "high_dport", record.precedence, destinationPorts,
                  hasDestinationPorts) != 0 ||
        readPorts(fields, "low_sport", "high_sport", record.precedence, sourcePorts,
                  hasSourcePorts) != 0)
        return -1;
    // The record holds one port range, as it holds one address.
    if (hasDestinationPorts && hasSourcePorts && !(destinationPorts == sourcePorts)) {
        jcp::diag("Source and Dest port not the same: in rule with precedence: ",
                  record.precedence);
        return -1;
    }
    if (hasDestinationPorts) {
        record.r_filter_flags |= outbound ? kFilterDestPortOut : kFilterDestPortIn;
    }
    if (hasSourcePorts) {
        record.r_filter_flags |= outbound ? kFilterSourcePortOut : kFilterSourcePortIn;
    }
    if (hasDestinationPorts || hasSourcePorts) {
        const PortRange& range = hasDestinationPorts ? destinationPorts : sourcePorts;
        record.r_port_min = static_cast<uint16_t>(range.low);
        record.r_port_max = static_cast<uint16_t>(range.high);
    }

    if (const cfgElement* protocol = field(fields, "protocol")) {
        int number = 0;
        if (!jcp::integerIn(*protocol, 0, 255, number)) {
            jcp::failure("Protocol in the IP ACL is not valid: ", jcp::elementText(*protocol),
                         " in rule with precedence: ", record.precedence);
            return -1;
        }
        record.r_protocol = static_cast<uint8_t>(number);
        record.r_filter_flags |= kFilterProtType;
    }
    if (const cfgElement* type = field(fields, "match_type")) {
        if (readEtherType(*this, *type,
                          "Ether type in the IP ACL is not valid: ", record.r_eth_type) != 0)
            return -1;
    }

    if (record.r_eth_type == 0x0800) {
        // Only the first fragment carries the ports: the rest follow its verdict.
        if (hasDestinationPorts || hasSourcePorts) record.r_filter_flags |= kFilterShadowFrag;
        // A host a rule explicitly lets through must also answer ARP, or the pass is useless
        // under a deny default.
        bool addressed = dip != nullptr || sip != nullptr;
        bool passes =
            (record.r_action_flags & (kActionAccessCtrl | kActionDeny)) == kActionAccessCtrl;
        if (addressed && passes) record.r_filter_flags |= kFilterShadowArp;
    }

    if (const cfgElement* dnsName = field(fields, "dns_name")) {
        if (dnsName->kind != CFG_STRING) {
            jcp::failure("DNS name in the IP ACL is not valid: ", jcp::elementText(*dnsName));
            return -1;
        }
        // A host name matches both ways: its address as destination going in, as source coming
        // back. After the address, port and protocol steps, so none of their flags remain.
        record.r_filter_flags = kFilterInDir | kFilterOutDir | kFilterDestIpIn | kFilterSourceIpOut;
        record.r_action_flags |= kActionAccessCtrl;
        // An empty name is no host: it matches no signature, not one without a match string.
        cfgPlusExtendedSig signature;
        if (!dnsName->strValue.empty())
            signature = cfgPlusSignatureMaps::m_inst.findDnsEntry(dnsName->strValue);
        if (signature.dispId == 0) {
            jcp::diag("warning: the specified FQDN rule not found its definition.");
        } else {
            record.r_app_sig_disp_id = static_cast<uint32_t>(signature.dispId);
            record.r_app_sig_group_id = static_cast<uint32_t>(signature.groupId);
            // The manager's application id is the fixed id of a custom signature.
            record.r_fixed_app_id = static_cast<uint32_t>(signature.appId);
        }
    }

    if (jcp::readContainToVlan(fields, record) != 0 ||
        jsonCfgPlusVnsAclTosMatch(fields, out) != 0 || jsonCfgPlusVnsAclCos(fields, out) != 0)
        return -1;
    return 0;
}

namespace {

// Runs one-rule conversion over each rule of a list, appending the records.
template <typename Convert>
int convertEach(cfgPlusApiConverter::ElementList& rules, cfgPlusApiConverter::FilterRuleList& out,
                Convert convert) {
    for (cfgElement& rule : rules) {
        if (jcp::appendConverted(rule, out, convert) < 0) return -1;
    }
    return 0;
}

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusVnsMacAcl(ElementList& rules,
                                              apiCfgPlusFilterDirection direction,
                                              FilterRuleList& out) {
    return convertEach(rules, out, [&](cfgElement& rule, apiCfgPlusFilterRule& record) {
        return jsonCfgPlusVnsMacAcl(rule, direction, record);
    });
}

int cfgPlusApiConverter::jsonCfgPlusVnsIpAcl(ElementList& rules,
                                             apiCfgPlusFilterDirection direction,
                                             FilterRuleList& out) {
    return convertEach(rules, out, [&](cfgElement& rule, apiCfgPlusFilterRule& record) {
        return jsonCfgPlusVnsIpAcl(rule, direction, record);
    });
}

int cfgPlusApiConverter::jsonCfgPlusVnsAppPolicy(ElementList& rules, FilterRuleList& out) {
    return convertEach(rules, out, [&](cfgElement& rule, apiCfgPlusFilterRule& record) {
        return jsonCfgPlusVnsAppPolicy(rule, record);
    });
}
