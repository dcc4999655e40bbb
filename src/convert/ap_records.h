// The AP's fixed binary records, exactly as its data path and daemon read them: fixed-width
// fields, explicit padding, little-endian, zero-filled before use.
#ifndef JSONCFGPLUS_CONVERT_AP_RECORDS_H
#define JSONCFGPLUS_CONVERT_AP_RECORDS_H

#include <cstddef>
#include <cstdint>

// One filter rule as the AP's data path reads it; 72 bytes, little-endian, every field at its
// natural alignment. This layout is the contract with the daemon:
//   off size field
//     0    4 precedence          rules apply in ascending precedence
//     4    6 r_mac               MAC address of a MAC rule
//    10    6 r_macmask           its mask
//    16   16 r_ip6addr           IPv6 address, network byte order
//    32    4 r_ipaddr            IPv4 address, network byte order (first octet at offset 32)
//    36    2 r_filter_flags      kFilter* bits
//    38    2 r_action_flags      kAction* bits
//    40    2 r_eth_type          0x0800, 0x86DD or the MAC rule's Ether type
//    42    1 r_ipmasklen         prefix length of the address
//    43    1 r_protocol          IP protocol number
//    44    1 r_tos               ToS value to match
//    45    1 r_tosmask_prio      ToS mask code (kFilterTos) or 802.1p priority (kFilterUp)
//    46    2 r_port_min          port range, host order
//    48    2 r_port_max
//    50    2 r_action_vlanid     VLAN word of contain-to-VLAN: id 0-11, 0x2000, 0x4000 tagged,
//                                0x8000 bridged
//    52    4 r_app_sig_disp_id   application-signature display id
//    56    4 r_app_sig_group_id  application-signature group id
//    60    4 r_fixed_app_id      fixed application id
//    64    1 cos_tos             class of service to apply: ToS to mark,
//    65    1 cos_tosmask           its mask,
//    66    1 cos_prio_txq          802.1p priority (high nibble) and transmit queue (low),
//    67    1 cos_rates             ingress (high nibble) and egress (low) rate-limit index
//    68    4 pad                 zero
struct FILTER_RULE_ENTRY {
    uint32_t precedence;
    uint8_t r_mac[6];
    uint8_t r_macmask[6];
    uint8_t r_ip6addr[16];
    uint32_t r_ipaddr;
    uint16_t r_filter_flags;
    uint16_t r_action_flags;
    uint16_t r_eth_type;
    uint8_t r_ipmasklen;
    uint8_t r_protocol;
    uint8_t r_tos;
    uint8_t r_tosmask_prio;
    uint16_t r_port_min;
    uint16_t r_port_max;
    uint16_t r_action_vlanid;
    uint32_t r_app_sig_disp_id;
    uint32_t r_app_sig_group_id;
    uint32_t r_fixed_app_id;
    uint8_t cos_tos;
    uint8_t cos_tosmask;
    uint8_t cos_prio_txq;
    uint8_t cos_rates;
    uint8_t pad[4];
};
static_assert(sizeof(FILTER_RULE_ENTRY) == 72, "FILTER_RULE_ENTRY is 72 bytes");
static_assert(offsetof(FILTER_RULE_ENTRY, precedence) == 0, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_mac) == 4, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_macmask) == 10, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_ip6addr) == 16, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_ipaddr) == 32, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_filter_flags) == 36, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_action_flags) == 38, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_eth_type) == 40, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_ipmasklen) == 42, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_protocol) == 43, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_tos) == 44, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_tosmask_prio) == 45, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_port_min) == 46, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_port_max) == 48, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_action_vlanid) == 50, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_app_sig_disp_id) == 52, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_app_sig_group_id) == 56, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, r_fixed_app_id) == 60, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, cos_tos) == 64, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, cos_tosmask) == 65, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, cos_prio_txq) == 66, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, cos_rates) == 67, "FILTER_RULE_ENTRY layout");
static_assert(offsetof(FILTER_RULE_ENTRY, pad) == 68, "FILTER_RULE_ENTRY layout");

// A rule as the converters build it and as "cen_filter_rules" carries it, so the redirect
// and mirror bits reach the daemon: the data path's record, then the extended action word.
struct apiCfgPlusFilterRule {
    FILTER_RULE_ENTRY rule;
    uint16_t r_ext_action_flags;  // kExtAction* bits
    uint8_t pad[2];
};
static_assert(sizeof(apiCfgPlusFilterRule) == 76, "apiCfgPlusFilterRule is 76 bytes");
static_assert(offsetof(apiCfgPlusFilterRule, r_ext_action_flags) == 72,
              "apiCfgPlusFilterRule layout");

// Filter flags (r_filter_flags).
constexpr uint16_t kFilterEtherType = 0x0001;
constexpr uint16_t kFilterSourceIpOut = 0x0002;
constexpr uint16_t kFilterDestIpIn = 0x0004;
constexpr uint16_t kFilterProtType = 0x0008;
constexpr uint16_t kFilterSourcePortOut = 0x0010;
constexpr uint16_t kFilterDestPortIn = 0x0020;
constexpr uint16_t kFilterShadowFrag = 0x0040;
constexpr uint16_t kFilterOutDir = 0x0080;
constexpr uint16_t kFilterInDir = 0x0100;
constexpr uint16_t kFilterSourceIpIn = 0x0200;
constexpr uint16_t kFilterSourcePortIn = 0x0400;
constexpr uint16_t kFilterDestIpOut = 0x0800;
constexpr uint16_t kFilterDestPortOut = 0x1000;
constexpr uint16_t kFilterUp = 0x2000;
constexpr uint16_t kFilterTos = 0x4000;
constexpr uint16_t kFilterShadowArp = 0x8000;

// Action flags (r_action_flags).
constexpr uint16_t kActionDeny = 0x0001;
constexpr uint16_t kActionReplicate = 0x0002;
constexpr uint16_t kActionAccessCtrl = 0x0008;
constexpr uint16_t kActionCosDefined = 0x0010;
constexpr uint16_t kActionCosUp = 0x0040;
constexpr uint16_t kActionCosTos = 0x0080;
constexpr uint16_t kActionCosTxq = 0x0100;
constexpr uint16_t kActionCosIrl = 0x0200;
constexpr uint16_t kActionCosOrl = 0x0400;
constexpr uint16_t kActionVlan = 0x0800;

// Extended action flags (r_ext_action_flags).
constexpr uint16_t kExtActionRedirection = 0x2000;
constexpr uint16_t kExtActionMirrorN = 0x4000;
constexpr uint16_t kExtActionMirrorNDefined = 0x8000;

// A policy's default class of service; 5 bytes.
struct ap_cos_entry {
    uint8_t r_flags;     // kCos* bits
    uint8_t r_tos;       // ToS to mark
    uint8_t r_tosmask;   // its mask
    uint8_t r_prio_txq;  // 802.1p priority (high nibble), transmit queue (low nibble)
    uint8_t r_rates;     // ingress (high nibble) and egress (low nibble) rate-limit index
};
static_assert(sizeof(ap_cos_entry) == 5, "ap_cos_entry is 5 bytes");
static_assert(offsetof(ap_cos_entry, r_flags) == 0, "ap_cos_entry layout");
static_assert(offsetof(ap_cos_entry, r_tos) == 1, "ap_cos_entry layout");
static_assert(offsetof(ap_cos_entry, r_tosmask) == 2, "ap_cos_entry layout");
static_assert(offsetof(ap_cos_entry, r_prio_txq) == 3, "ap_cos_entry layout");
static_assert(offsetof(ap_cos_entry, r_rates) == 4, "ap_cos_entry layout");

constexpr uint8_t kCosUp = 0x02;
constexpr uint8_t kCosTos = 0x04;
constexpr uint8_t kCosTxq = 0x08;
constexpr uint8_t kCosIrl = 0x10;
constexpr uint8_t kCosOrl = 0x20;
constexpr uint8_t kCosWlanMarking = 0x40;

constexpr size_t kExtAppNameMax = 32;
constexpr size_t kExtAppMatchMax = 64;

// One manager-defined application; 112 bytes.
struct EXT_APP_CONFIG {
    char dispName[kExtAppNameMax + 1];   // zero-terminated
    char matchStr[kExtAppMatchMax + 1];  // zero-terminated
    uint8_t pad[2];
    uint32_t dispId;
    uint32_t appId;
    uint32_t groupId;
};
static_assert(sizeof(EXT_APP_CONFIG) == 112, "EXT_APP_CONFIG is 112 bytes");
static_assert(offsetof(EXT_APP_CONFIG, dispName) == 0, "EXT_APP_CONFIG layout");
static_assert(offsetof(EXT_APP_CONFIG, matchStr) == 33, "EXT_APP_CONFIG layout");
static_assert(offsetof(EXT_APP_CONFIG, pad) == 98, "EXT_APP_CONFIG layout");
static_assert(offsetof(EXT_APP_CONFIG, dispId) == 100, "EXT_APP_CONFIG layout");
static_assert(offsetof(EXT_APP_CONFIG, appId) == 104, "EXT_APP_CONFIG layout");
static_assert(offsetof(EXT_APP_CONFIG, groupId) == 108, "EXT_APP_CONFIG layout");

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
