// SPDX-License-Identifier: MIT
// Topologies: the "cen_if_vlans" interfaces as packed TOPOLOGY_ENTRY records, the WLAN
// services' VLAN elements and VLAN word, session availability and the failover address lists.
#include <algorithm>
#include <cstddef>
#include <cstring>

#include "addr/ip_addr.h"
#include "base/build_events_priv.h"
#include "base/diag.h"
#include "convert/converter.h"
#include "convert/topology_print.h"

namespace {

using ElementList = cfgPlusApiConverter::ElementList;

// Longest name or pre-shared key the records keep; the fields leave room for the terminator.
constexpr size_t kTopologyTextMax = 32;
// The endpoint loop stops only once this many are stored, one more than the record's slots.
constexpr unsigned kEndpointLimit = 4;

constexpr size_t kEndpointOffset = offsetof(TOPOLOGY_ENTRY, remote_endpoint);
// The fourth endpoint (addr, secure, 32 key bytes) ends on the low byte of the ACL count.
static_assert(kEndpointOffset + kTopologyEndpointSlots * sizeof(GRE_END_POINT) ==
                  offsetof(TOPOLOGY_ENTRY, name),
              "a fourth endpoint starts on the name");
static_assert(kEndpointOffset + (kEndpointLimit - 1) * sizeof(GRE_END_POINT) +
                      offsetof(GRE_END_POINT, ikev2_psk) + kTopologyTextMax ==
                  offsetof(TOPOLOGY_ENTRY, multicast_acl_count) + 1,
              "a fourth endpoint stays inside the record");

template <typename... Parts>
void trace(const jsonCfgPlus& doc, const Parts&... parts) {
    if (doc.m_trace != 0) jcp::progress(parts...);
}

// IPv4 text as a host-order number; 0 for anything else, IPv6 included.
uint32_t ipv4HostOrder(const cfgElement& field) {
    IPAddr addr;
    if (addr.assignFromString(field.strValue.c_str()) != 0 || !addr.isV4()) return 0;
    return addr.v4();
}

// Writes exactly kTopologyTextMax bytes, zero-padded, so text written over a fourth endpoint
// leaves none of the endpoint's bytes behind within them.
void copyText(unsigned char* field, const std::string& text) {
    size_t length = std::min(text.size(), kTopologyTextMax);
    std::memcpy(field, text.data(), length);
    std::memset(field + length, 0, kTopologyTextMax - length);
}

std::string recordName(const TOPOLOGY_ENTRY& entry) {
    return std::string(entry.name, strnlen(entry.name, sizeof entry.name));
}

void warnNoInternalKey(const TOPOLOGY_ENTRY& entry) {
    jcp::diag("[WARN] topology: ", recordName(entry), " no internal_key, default to -1");
}

// Writes endpoint number `slot` through the record's bytes, where slot 3 lies over the name.
void writeEndpoint(TOPOLOGY_ENTRY& entry, unsigned slot, const ElementList& fields) {
    unsigned char* at =
        reinterpret_cast<unsigned char*>(&entry) + kEndpointOffset + slot * sizeof(GRE_END_POINT);
    for (const cfgElement& field : fields) {
        if (field.name == "remote_endpoint/addr") {
            uint32_t addr = ipv4HostOrder(field);
            std::memcpy(at + offsetof(GRE_END_POINT, addr), &addr, sizeof addr);
        } else if (field.name == "remote_endpoint/secure") {
            at[offsetof(GRE_END_POINT, secure)] = field.boolValue ? 1 : 0;
        } else if (field.name == "remote_endpoint/ikev2_psk") {
            copyText(at + offsetof(GRE_END_POINT, ikev2_psk), field.strValue);
        }
    }
}

// Any value other than an array of endpoints holds none.
void fillEndpoints(TOPOLOGY_ENTRY& entry, const cfgElement& field) {
    unsigned count = 0;
    for (const cfgElement& endpoint : field.objArray) {
        // Deliberate: the limit is 4 against 3 slots, so a fourth endpoint lands over the name.
        if (count == kEndpointLimit) {
            jcp::diag("topology: ", field.name, " has more than ", kTopologyEndpointSlots,
                      " remote endpoints, ignore them");
            count = kTopologyEndpointSlots;
            break;
        }
        writeEndpoint(entry, count, endpoint.elements);
        ++count;
    }
    entry.remote_endpoint_count = count;
}

uint8_t topologyType(const std::string& type) {
    if (type == "vlan") return 7;
    if (type == "virtual_network") return 8;
    if (type == "gre") return 9;
    return 6;  // "marlin", the manager's own tunnel, and anything unknown
}

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusTopologies(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusTopologies: Processing Topologies. ");
    // Every element has every value member, zero or empty unless its kind selects it: a value
    // of another kind reads as 0, false or "", here and in every field below.
    int nativeVlan = -1;
    bool nativeTagged = false;
    auto native = findCfgElement(doc.m_global, "ethernet_if/switchport/native_vlan");
    if (native != doc.m_global.end()) nativeVlan = native->intValue;
    auto tagged = findCfgElement(doc.m_global, "ethernet_if/switchport/native_vlan_tagged");
    if (tagged != doc.m_global.end()) nativeTagged = tagged->boolValue;

    auto vlans = findCfgElement(doc.m_global, "cen_if_vlans");
    if (vlans == doc.m_global.end()) return 0;
    // Present, the list always reaches the AP, even empty: "[]", null or a scalar hold no
    // topology and give zero records.
    const ElementList& topologies =
        vlans->kind == CFG_OBJ_ARRAY ? vlans->objArray : vlans->elements;
    trace(doc, "sizeof(TOPOLOGY_ENTRY) = ", sizeof(TOPOLOGY_ENTRY));

    std::vector<uint8_t> records;
    records.reserve(topologies.size() * sizeof(TOPOLOGY_ENTRY));
    for (const cfgElement& topology : topologies) {
        TOPOLOGY_ENTRY entry;
        std::memset(&entry, 0, sizeof entry);
        // Every topology yields a record, whatever its fields say.
        jsonCfgPlusTopology(topology.elements, entry, nativeVlan, nativeTagged);
        const auto* bytes = reinterpret_cast<const uint8_t*>(&entry);
        records.insert(records.end(), bytes, bytes + sizeof entry);
    }
    doc.m_global.push_back(
        cfgElement("cen_topologies", std::move(records), "", nullptr, printApiCfgPlusTopologies));
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusTopology(const ElementList& fields, TOPOLOGY_ENTRY& entry,
                                             int nativeVlan, bool nativeTagged) {
    entry.internal_key = -1;
    if (fields.empty()) {
        warnNoInternalKey(entry);
        return 0;
    }
    for (const cfgElement& field : fields) {
        const std::string& name = field.name;
        // A field of another kind than its own reads as 0, false or "" (see the caller).
        if (name == "name") {
            copyText(reinterpret_cast<unsigned char*>(entry.name), field.strValue);
        } else if (name == "internal_key") {
            entry.internal_key = field.intValue;
        } else if (name == "type") {
            entry.type = topologyType(field.strValue);
        } else if (name == "vlan" || name == "tenant_vlan") {
            entry.vlan = static_cast<uint16_t>(field.intValue);
            // A VLAN other than the port's native one always travels tagged.
            entry.tagged = (entry.vlan != nativeVlan || nativeTagged) ? 1 : 0;
        } else if (name == "vxlan_vni") {
            entry.vxlan_vni = static_cast<uint32_t>(field.intValue);
        } else if (name == "remote_endpoint_vxlan_internal_management_vni") {
            entry.remote_endpoint_vxlan_int_mgmt_vni = static_cast<uint32_t>(field.intValue);
        } else if (name == "remote_endpoint_vxlan_ipaddress") {
            entry.remote_endpoint_vxlan_ipaddress = ipv4HostOrder(field);
        } else if (name == "remote_endpoint_vxlan_internal_management_IP") {
            entry.remote_endpoint_vxlan_int_mgmt_ip = ipv4HostOrder(field);
        } else if (name == "proxy_arp") {
            entry.proxy_arp = field.boolValue ? 1 : 0;
        } else if (name == "multicast_acl_enable") {
            entry.multicast_acl_enable = field.boolValue ? 1 : 0;
        } else if (name == "multicast_acl") {
            cfgElement acl = field;
            jsonCfgPlusTopologyMcastAcl(entry, acl);
        } else if (name == "remote_endpoint") {
            fillEndpoints(entry, field);
        }
    }
    if (entry.internal_key == -1) warnNoInternalKey(entry);
    return 0;
}

// The document may carry a multicast ACL, but the AP does not filter topology multicast by it
// yet, so the record keeps an empty rule list.
int cfgPlusApiConverter::jsonCfgPlusTopologyMcastAcl(TOPOLOGY_ENTRY&, cfgElement&) {
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsVlan(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusVnsVlan: Processing VNS vlans. ");
    for (radio_entry& radio : doc.m_radios) {
        for (vns_entry& wlan : radio.wlans) {
            auto vlans = findCfgElement(wlan.elements, "vlans");
            if (vlans == wlan.elements.end() || vlans->kind != CFG_OBJ_ARRAY ||
                vlans->objArray.empty()) {
                continue;
            }
            const cfgElement& first = vlans->objArray.front();
            if (first.kind != CFG_OBJECT) continue;
            // The children keep their "vlans/..." names: later converters look them up so.
            ElementList children = first.elements;
            wlan.elements.splice(vlans, children);
            wlan.elements.erase(vlans);
        }
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsVlan(const ElementList& list, int& word) {
    // A value of another kind reads as 0 or false: a present "cen_bridged" of null, 0 or
    // "false" is not bridged.
    int id = 0;
    auto vlan = findCfgElement(list, "vlans/vlan");
    if (vlan != list.end()) id = vlan->intValue & 0x0FFF;
    if (vlan != list.end() && id != vlan->intValue)
        jcp::reportEvent(jcp::EventKind::masked, "vlans/vlan",
                         "vlan " + std::to_string(vlan->intValue) +
                             " is masked to 12 bits and stored as pvid " + std::to_string(id));
    bool tagged = false;
    auto taggedFlag = findCfgElement(list, "vlans/cen_tagged");
    if (taggedFlag != list.end()) tagged = taggedFlag->boolValue;
    // Deliberate: without the flag a WLAN's VLAN counts as bridged, while tagged stays off.
    bool bridged = true;
    auto bridgedFlag = findCfgElement(list, "vlans/cen_bridged");
    if (bridgedFlag != list.end()) bridged = bridgedFlag->boolValue;
    word = 0x2000 | (tagged ? 0x4000 : 0) | (bridged ? 0x8000 : 0) | id;
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsSessionAvail(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusVnsSessionAvail: Processing VNS Session Availability flag.");
    // Read before jsonCfgPlusFailoverCfg turns the list into numbers, later in the pipeline.
    auto foreign = findCfgElement(doc.m_global, "cen_failover_foreign_ip_addr");
    bool available =
        foreign != doc.m_global.end() && foreign->kind == CFG_STR_LIST && !foreign->strList.empty();
    for (radio_entry& radio : doc.m_radios) {
        for (vns_entry& wlan : radio.wlans) {
            wlan.elements.push_back(cfgElement("cen_session_avail", available));
        }
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusFailoverCfg(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusFailoverCfg: Processing Failover IP addresses. ");
    jsonCfgPlusElementIPStrList2NetworkList(doc.m_global, "cen_failover_home_ip_addr");
    jsonCfgPlusElementIPStrList2NetworkList(doc.m_global, "cen_failover_foreign_ip_addr");
    return 0;
}
