// SPDX-License-Identifier: MIT
// Text rendering of the filter-rule, class-of-service, resource-table and external-application
// records.
#include "convert/filter_print.h"

#include <cstdio>
#include <cstring>
#include <vector>

#include "addr/ip_addr.h"
#include "addr/mac_addr.h"
#include "convert/element_print.h"
#include "convert/record_print_priv.h"
#include "convert/topology_print.h"
#include "model/entry_items.h"

namespace {

struct FlagName {
    uint16_t bit;
    const char* name;
};

const FlagName kActionFlags[] = {
    {kActionAccessCtrl, "ACCESS_CTRL"},
    {kActionDeny, "DENY"},
    {kActionVlan, "VLAN"},
    {kActionReplicate, "REPLICATE"},
    {kActionCosDefined, "COS_DEFINED"},
    {kActionCosUp, "COS_UP"},
    {kActionCosTos, "COS_TOS"},
    {kActionCosTxq, "COS_TXQ"},
    {kActionCosIrl, "COS_IRL"},
    {kActionCosOrl, "COS_ORL"},
};
const FlagName kExtActionFlags[] = {
    {kExtActionRedirection, "REDIRECTION"},
    {kExtActionMirrorNDefined, "MIRRORN_DEFINED"},
    {kExtActionMirrorN, "MIRRORN"},
};
const FlagName kFilterFlags[] = {
    {kFilterEtherType, "ETHER_TYPE"},
    {kFilterSourceIpOut, "SOURCE_IP_OUT"},
    {kFilterDestIpIn, "DEST_IP_IN"},
    {kFilterProtType, "PROT_TYPE"},
    {kFilterSourcePortOut, "SOURCE_PORT_OUT"},
    {kFilterDestPortIn, "DEST_PORT_IN"},
    {kFilterOutDir, "OUT_DIR"},
    {kFilterInDir, "IN_DIR"},
    {kFilterSourceIpIn, "SOURCE_IP_IN"},
    {kFilterSourcePortIn, "SOURCE_PORT_IN"},
    {kFilterDestIpOut, "DEST_IP_OUT"},
    {kFilterDestPortOut, "DEST_PORT_OUT"},
    {kFilterUp, "UP"},
    {kFilterTos, "TOS"},
    {kFilterShadowFrag, "SHADOW_FRAG"},
    {kFilterShadowArp, "SHADOW_ARP"},
};
const FlagName kCosFlags[] = {
    {kCosUp, "UP"},   {kCosTos, "TOS"}, {kCosTxq, "TXQ"},
    {kCosIrl, "IRL"}, {kCosOrl, "ORL"}, {kCosWlanMarking, "WLAN_MARKING"},
};

template <size_t N>
std::string namesOf(uint16_t flags, const FlagName (&table)[N]) {
    std::string out;
    for (const FlagName& flag : table) {
        if ((flags & flag.bit) != 0) out += std::string(flag.name) + ",";
    }
    return out;
}

std::string hex(unsigned value, int digits) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%0*X", digits, value);
    return text;
}

std::string flagWord(uint16_t flags, const std::string& names) {
    return hex(flags, 4) + " (" + names + ")";
}

using jcp::indentOf;
using jcp::printRecords;

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

std::string nibbles(uint8_t byte, const char* high, const char* low) {
    return std::string("<") + high + ":" + std::to_string(byte >> 4) + ", " + low + ":" +
           std::to_string(byte & 0x0F) + ">";
}

std::string macText(const uint8_t* bytes) {
    return quoted(MACAddr(bytes).toString());
}

std::string ipv6Text(const uint8_t* bytes) {
    IPAddr addr;
    addr.assignV6NtwkOrder(bytes);
    return quoted(addr.toString());
}

}  // namespace

std::string actionFlagsToString(uint16_t flags) {
    return namesOf(flags, kActionFlags);
}

std::string extActionFlagsToString(uint16_t flags) {
    return namesOf(flags, kExtActionFlags);
}

std::string filterFlagsToString(uint16_t flags) {
    return namesOf(flags, kFilterFlags);
}

std::string printApiCfgPlusFilterRule(const apiCfgPlusFilterRule& full, unsigned int indent) {
    const FILTER_RULE_ENTRY& r = full.rule;
    const auto* ipv4 = reinterpret_cast<const unsigned char*>(&r.r_ipaddr);
    return jcp::object(
        indent,
        {
            {"precedence", std::to_string(r.precedence)},
            {"r_mac", macText(r.r_mac)},
            {"r_macmask", macText(r.r_macmask)},
            {"r_ip6addr", ipv6Text(r.r_ip6addr)},
            {"r_ipaddr", quoted(jcp::networkOrderIpText(ipv4))},
            {"r_filter_flags", flagWord(r.r_filter_flags, filterFlagsToString(r.r_filter_flags))},
            {"r_action_flags", flagWord(r.r_action_flags, actionFlagsToString(r.r_action_flags))},
            {"r_eth_type", hex(r.r_eth_type, 4)},
            {"r_ipmasklen", std::to_string(r.r_ipmasklen)},
            {"r_protocol", std::to_string(r.r_protocol)},
            {"r_tos", hex(r.r_tos, 2)},
            {"r_tosmask_prio", hex(r.r_tosmask_prio, 2)},
            {"r_port_min", std::to_string(r.r_port_min)},
            {"r_port_max", std::to_string(r.r_port_max)},
            {"r_action_vlanid", printApiCfgPlusContainToVlan(r.r_action_vlanid)},
            {"r_app_sig_disp_id", std::to_string(r.r_app_sig_disp_id)},
            {"r_app_sig_group_id", std::to_string(r.r_app_sig_group_id)},
            {"r_fixed_app_id", std::to_string(r.r_fixed_app_id)},
            {"cos:r_tos", hex(r.cos_tos, 2)},
            {"cos:r_tosmask", hex(r.cos_tosmask, 2)},
            {"cos:r_prio_txq", nibbles(r.cos_prio_txq, "UP", "TXQ")},
            {"cos:r_rates", nibbles(r.cos_rates, "IRL", "ORL")},
            {"r_ext_action_flags",
             flagWord(full.r_ext_action_flags, extActionFlagsToString(full.r_ext_action_flags))},
        });
}

char* printApiCfgPlusFilterRules(apiCfgPlusEntry* entry, unsigned int indent) {
    return printRecords<apiCfgPlusFilterRule>(entry, indent, printApiCfgPlusFilterRule);
}

char* printApiCfgPlusDefaultCoS(apiCfgPlusEntry* entry, unsigned int indent) {
    std::string out = jcp::entryPrefix(entry, indent);
    if (jcp::entryItemCount(*entry, sizeof(ap_cos_entry)) == 0) return jcp::printed(out + "{ }");
    ap_cos_entry cos;
    std::memcpy(&cos, entry->value, sizeof cos);
    std::string body = jcp::object(
        indent, {
                    {"r_flags", hex(cos.r_flags, 2) + " (" + namesOf(cos.r_flags, kCosFlags) + ")"},
                    {"r_tos", hex(cos.r_tos, 2)},
                    {"r_tosmask", hex(cos.r_tosmask, 2)},
                    {"r_prio_txq", nibbles(cos.r_prio_txq, "UP", "TXQ")},
                    {"r_rates", nibbles(cos.r_rates, "IRL", "ORL")},
                });
    // The object opens on the name's line.
    return jcp::printed(out + body.substr(indentOf(indent).size()));
}

char* printApiCfgPlusResourceTable(apiCfgPlusEntry* entry, unsigned int indent) {
    size_t pairs = jcp::entryItemCount(*entry, 2 * sizeof(unsigned int));
    const auto* bytes = static_cast<const unsigned char*>(entry->value);
    std::string out = jcp::entryPrefix(entry, indent);
    if (pairs == 0) return jcp::printed(out + "[ ]");
    out += "[\n";
    for (size_t i = 0; i < pairs; ++i) {
        unsigned int pair[2];
        std::memcpy(pair, bytes + i * sizeof pair, sizeof pair);
        char line[64];
        std::snprintf(line, sizeof line, "{\"irl\": %u, \"orl\": %u}", pair[0], pair[1]);
        out += (i > 0 ? ",\n" : "") + indentOf(indent + 1) + line;
    }
    return jcp::printed(out + "\n" + indentOf(indent) + "]");
}

std::string printApiCfgPlusFilterOneExtAppl(const EXT_APP_CONFIG& app, unsigned int indent) {
    auto text = [](const char* field, size_t capacity) {
        return quoted(std::string(field, strnlen(field, capacity)));
    };
    auto number = [](uint32_t value) { return std::to_string(static_cast<int32_t>(value)); };
    return jcp::object(indent, {
                                   {"dispName", text(app.dispName, sizeof app.dispName)},
                                   {"dispId", number(app.dispId)},
                                   {"matchStr", text(app.matchStr, sizeof app.matchStr)},
                                   {"appId", number(app.appId)},
                                   {"groupId", number(app.groupId)},
                               });
}

char* printApiCfgPlusExtAppl(apiCfgPlusEntry* entry, unsigned int indent) {
    return printRecords<EXT_APP_CONFIG>(entry, indent, printApiCfgPlusFilterOneExtAppl);
}
