// SPDX-License-Identifier: MIT
// Text rendering of the "cen_topologies" records and of the VLAN word, in the indented
// JSON-like shape of the standard rendering.
#include "convert/topology_print.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "addr/ip_addr.h"
#include "convert/element_print.h"
#include "convert/record_print_priv.h"
#include "model/entry_items.h"

namespace {

// Where a fourth endpoint lies: right after the three slots, over the name.
constexpr size_t kFourthEndpointOffset =
    offsetof(TOPOLOGY_ENTRY, remote_endpoint) + kTopologyEndpointSlots * sizeof(GRE_END_POINT);
// Address, secure byte and the 32 key bytes the converter writes there.
constexpr size_t kFourthEndpointBytes = offsetof(GRE_END_POINT, ikev2_psk) + 32;
constexpr uint32_t kMaxShownEndpoints = kTopologyEndpointSlots + 1;

using jcp::block;
using jcp::indentOf;

std::string field(unsigned int indent, const char* name, const std::string& value) {
    return indentOf(indent) + "\"" + name + "\": " + value;
}

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

std::string boundedText(const char* text, size_t capacity) {
    return std::string(text, strnlen(text, capacity));
}

const char* typeName(uint8_t type) {
    switch (type) {
        case 7:
            return "vlan";
        case 8:
            return "virtual_network";
        case 9:
            return "gre";
        default:
            return "marlin";  // the converter's mapping for the tunnel and unknown types
    }
}

GRE_END_POINT endpointAt(const TOPOLOGY_ENTRY& topology, size_t slot) {
    if (slot < kTopologyEndpointSlots) return topology.remote_endpoint[slot];
    GRE_END_POINT fourth;
    std::memset(&fourth, 0, sizeof fourth);
    std::memcpy(&fourth, reinterpret_cast<const unsigned char*>(&topology) + kFourthEndpointOffset,
                kFourthEndpointBytes);
    return fourth;
}

}  // namespace

char* printApiCfgPlusTopologies(apiCfgPlusEntry* entry, unsigned int indent) {
    return jcp::printRecords<TOPOLOGY_ENTRY>(entry, indent, printApiCfgPlusOneTopology);
}

std::string printApiCfgPlusOneTopology(const TOPOLOGY_ENTRY& topology, unsigned int indent) {
    unsigned int inner = indent + 1;
    size_t rules = std::min<size_t>(topology.multicast_acl_count, kTopologyMcastAclRules);
    size_t endpoints = std::min(topology.remote_endpoint_count, kMaxShownEndpoints);
    const std::string lines[] = {
        field(inner, "name", quoted(boundedText(topology.name, sizeof topology.name))),
        field(inner, "internal_key", std::to_string(static_cast<uint32_t>(topology.internal_key))),
        field(inner, "type",
              quoted(typeName(topology.type)) + " (" + std::to_string(topology.type) + ")"),
        field(inner, "vlan", std::to_string(topology.vlan)),
        field(inner, "vxlan_vni", std::to_string(topology.vxlan_vni)),
        field(inner, "remote_endpoint_vxlan_ipaddress",
              quoted(IPAddr(topology.remote_endpoint_vxlan_ipaddress).toString())),
        field(inner, "proxy_arp", std::to_string(topology.proxy_arp)),
        field(inner, "multicast_acl_enable", std::to_string(topology.multicast_acl_enable)),
        field(inner, "multicast_acl",
              block(rules, inner,
                    [&](size_t i, unsigned int at) {
                        return printApiCfgPlusTopologyAcl(topology.multicast_acl[i], at);
                    })),
        field(inner, "remote_endpoint",
              block(endpoints, inner,
                    [&](size_t i, unsigned int at) {
                        GRE_END_POINT endpoint = endpointAt(topology, i);
                        return printApiCfgPlusTopologyGre(endpoint, at);
                    })),
    };
    std::string out = indentOf(indent) + "{\n";
    for (const std::string& line : lines) {
        if (&line != &lines[0]) out += ",\n";
        out += line;
    }
    return out + "\n" + indentOf(indent) + "}";
}

std::string printApiCfgPlusTopologyAcl(const FILTER_RULE_ENTRY& rule, unsigned int indent) {
    static const char kHex[] = "0123456789ABCDEF";
    const auto* bytes = reinterpret_cast<const unsigned char*>(&rule);
    std::string out = indentOf(indent) + "0x";
    for (size_t i = 0; i < sizeof rule; ++i) {
        out += kHex[bytes[i] >> 4];
        out += kHex[bytes[i] & 0x0F];
    }
    return out;
}

std::string printApiCfgPlusTopologyGre(const GRE_END_POINT& endpoint, unsigned int indent) {
    unsigned int inner = indent + 1;
    return indentOf(indent) + "{\n" +
           field(inner, "addr", quoted(IPAddr(endpoint.addr).toString())) + ",\n" +
           field(inner, "secure", std::to_string(endpoint.secure)) + ",\n" +
           field(inner, "ikev2_psk",
                 quoted(boundedText(endpoint.ikev2_psk, sizeof endpoint.ikev2_psk))) +
           "\n" + indentOf(indent) + "}";
}

std::string printApiCfgPlusContainToVlan(uint16_t word) {
    auto flag = [word](uint16_t bit) { return (word & bit) != 0 ? "true" : "false"; };
    return std::to_string(word) + " <vlan:" + std::to_string(word & 0x0FFF) +
           ", bridged:" + flag(0x8000) + ", tagged:" + flag(0x4000) + ", egress:" + flag(0x2000) +
           ">";
}
