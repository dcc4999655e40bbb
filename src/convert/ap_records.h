// The AP's fixed binary records, exactly as its data path and daemon read them: fixed-width
// fields, explicit padding, little-endian, zero-filled before use.
#ifndef JSONCFGPLUS_CONVERT_AP_RECORDS_H
#define JSONCFGPLUS_CONVERT_AP_RECORDS_H

#include <cstddef>
#include <cstdint>

// One filter rule; 72 bytes. Topologies carry an array of them as their multicast ACL, which
// is accepted but never filled, so only the size matters here.
struct FILTER_RULE_ENTRY {
    uint8_t bytes[72];
};
static_assert(sizeof(FILTER_RULE_ENTRY) == 72, "FILTER_RULE_ENTRY is 72 bytes");

// One remote tunnel endpoint of a topology.
struct GRE_END_POINT {
    uint32_t addr;  // IPv4, host order
    uint8_t secure;
    char ikev2_psk[35];  // zero-terminated, at most 32 characters
};
static_assert(sizeof(GRE_END_POINT) == 40, "GRE_END_POINT is 40 bytes");
static_assert(offsetof(GRE_END_POINT, secure) == 4, "GRE_END_POINT layout");
static_assert(offsetof(GRE_END_POINT, ikev2_psk) == 5, "GRE_END_POINT layout");

constexpr int kTopologyEndpointSlots = 3;
constexpr int kTopologyMcastAclRules = 65;

// One topology (VLAN, VXLAN network, GRE tunnel or the manager's tunnel).
struct TOPOLOGY_ENTRY {
    int32_t internal_key;
    uint16_t vlan;
    uint8_t pad0[2];
    uint32_t vxlan_vni;
    uint32_t remote_endpoint_vxlan_ipaddress;    // IPv4, host order
    uint32_t remote_endpoint_vxlan_int_mgmt_ip;  // IPv4, host order
    uint32_t remote_endpoint_vxlan_int_mgmt_vni;
    uint8_t type;  // 6 marlin (and unknown), 7 vlan, 8 virtual_network, 9 gre
    uint8_t tagged;
    uint8_t proxy_arp;
    uint8_t multicast_acl_enable;
    uint32_t remote_endpoint_count;
    GRE_END_POINT remote_endpoint[kTopologyEndpointSlots];
    char name[36];  // zero-terminated, at most 32 characters
    uint16_t multicast_acl_count;
    uint8_t pad1[2];
    FILTER_RULE_ENTRY multicast_acl[kTopologyMcastAclRules];
};
static_assert(sizeof(TOPOLOGY_ENTRY) == 4872, "TOPOLOGY_ENTRY is 4872 bytes");
static_assert(offsetof(TOPOLOGY_ENTRY, vlan) == 4, "TOPOLOGY_ENTRY layout");
static_assert(offsetof(TOPOLOGY_ENTRY, vxlan_vni) == 8, "TOPOLOGY_ENTRY layout");
static_assert(offsetof(TOPOLOGY_ENTRY, remote_endpoint_vxlan_ipaddress) == 12, "layout");
static_assert(offsetof(TOPOLOGY_ENTRY, remote_endpoint_vxlan_int_mgmt_ip) == 16, "layout");
static_assert(offsetof(TOPOLOGY_ENTRY, remote_endpoint_vxlan_int_mgmt_vni) == 20, "layout");
static_assert(offsetof(TOPOLOGY_ENTRY, type) == 24, "TOPOLOGY_ENTRY layout");
static_assert(offsetof(TOPOLOGY_ENTRY, tagged) == 25, "TOPOLOGY_ENTRY layout");
static_assert(offsetof(TOPOLOGY_ENTRY, proxy_arp) == 26, "TOPOLOGY_ENTRY layout");
static_assert(offsetof(TOPOLOGY_ENTRY, multicast_acl_enable) == 27, "TOPOLOGY_ENTRY layout");
static_assert(offsetof(TOPOLOGY_ENTRY, remote_endpoint_count) == 28, "TOPOLOGY_ENTRY layout");
static_assert(offsetof(TOPOLOGY_ENTRY, remote_endpoint) == 32, "TOPOLOGY_ENTRY layout");
static_assert(offsetof(TOPOLOGY_ENTRY, name) == 152, "TOPOLOGY_ENTRY layout");
static_assert(offsetof(TOPOLOGY_ENTRY, multicast_acl_count) == 188, "TOPOLOGY_ENTRY layout");
static_assert(offsetof(TOPOLOGY_ENTRY, multicast_acl) == 192, "TOPOLOGY_ENTRY layout");

constexpr int kArpGuardMaxEntries = 32;

// The ARP-guard address list.
struct ARP_GUARD_ACL {
    uint16_t count;  // at most 32
    uint8_t pad[2];
    uint32_t addr[kArpGuardMaxEntries];  // IPv4, network byte order; 0 when unused or not IPv4
};
static_assert(sizeof(ARP_GUARD_ACL) == 132, "ARP_GUARD_ACL is 132 bytes");
static_assert(offsetof(ARP_GUARD_ACL, addr) == 4, "ARP_GUARD_ACL layout");

#endif
