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

// Hotspot 2.0 / 802.11u advertisement records. Each list element's value is its records back to
// back (the OSU provider list has a head, see OSU_SP_LIST). Texts are zero-terminated and
// zero-padded; a text field is one byte longer than the longest text the air format carries.

// Language code: ISO 639, 2 or 3 letters (802.11u name duple: 3-octet code, a 2-letter code
// padded with a zero octet).
constexpr int kHs2LangCodeSize = 4;
// Venue, operator, OSU friendly name and description: at most 252 octets (802.11u name duple:
// one length octet covers the 3-octet code and the name).
constexpr int kHs2NameSize = 253;
// NAI realm: at most 255 octets (802.11u NAI Realm Length is one octet).
constexpr int kHs2RealmSize = 256;
// EAP rows per realm: at most 255 (802.11u EAP Method Count is one octet; a row adds at most
// one method).
constexpr int kHs2MaxEapRows = 255;
// MCC: 3 digits; MNC: 2 or 3 digits (3GPP TS 23.003).
constexpr int kHs2MccSize = 4;
constexpr int kHs2MncSize = 4;
// OSU server URI, OSU NAI, icon file name: at most 255 octets (Hotspot 2.0 OSU Provider and
// Icon Metadata: one length octet each).
constexpr int kHs2UriSize = 256;
// Icon data: at most 65535 bytes (Hotspot 2.0 Icon Binary File: two-octet data length).
constexpr uint32_t kHs2MaxIconBytes = 65535;
// Friendly names and descriptions per OSU provider: 8 languages (our bound; the air format
// allows more, a manager offers far fewer).
constexpr int kHs2MaxOsuNames = 8;
// Icons per OSU provider: 4 (our bound: up to 64 KiB each is what the AP holds per provider).
constexpr int kHs2MaxOsuIcons = 4;
// OSU methods: 0 OMA-DM, 1 SOAP-XML SPP (Hotspot 2.0 OSU Method List); both fit.
constexpr int kHs2MaxOsuMethods = 2;

// How many records each list holds at most; later items are dropped with a warning.
// PLMNs: 84 (3GPP Cellular Network PLMN List: one length octet, 1 + 3 octets per PLMN).
constexpr int kHs2MaxPlmns = 84;
// Realms: 64 (our bound, about 80 KiB of records per WLAN).
constexpr int kHs2MaxRealms = 64;
// Venue and operator names: 32 languages (our bound).
constexpr int kHs2MaxNames = 32;
// Connection capabilities: 64 (our bound).
constexpr int kHs2MaxConnCaps = 64;
// OSU providers: 8 (our bound: with their icons up to about 2 MiB per WLAN).
constexpr int kHs2MaxOsuProviders = 8;

// One PLMN of the 3GPP Cellular Network list ("passpoint_policy/cen_plmnid"), as digit texts
// so that an MNC of "01" and one of "001" stay different.
struct _3GPP_CELL_NET {
    char mcc[kHs2MccSize];  // 3 decimal digits
    char mnc[kHs2MncSize];  // 2 or 3 decimal digits
};
static_assert(sizeof(_3GPP_CELL_NET) == 8, "_3GPP_CELL_NET is 8 bytes");
static_assert(offsetof(_3GPP_CELL_NET, mnc) == 4, "_3GPP_CELL_NET layout");

// One authentication parameter of one EAP method of an NAI realm. Rows with the same index
// describe one EAP method; a row with auth_type 0 is a method without parameters.
struct EAP_METHOD {
    uint8_t index;      // the document's "index", rows sorted by it
    uint8_t method;     // IANA EAP method number: 13 TLS, 18 SIM, 21 TTLS, 23 AKA, 50 AKA'
    uint8_t auth_type;  // authentication parameter id: 2 non-EAP inner, 5 credential, 0 none
    uint8_t auth_val;   // for type 2: 1 PAP, 2 CHAP, 3 MSCHAP, 4 MSCHAPv2; for type 5:
                        // 1 SIM, 2 USIM, 6 certificate, 7 username/password; 0 for none
};
static_assert(sizeof(EAP_METHOD) == 4, "EAP_METHOD is 4 bytes");
static_assert(offsetof(EAP_METHOD, method) == 1, "EAP_METHOD layout");
static_assert(offsetof(EAP_METHOD, auth_type) == 2, "EAP_METHOD layout");
static_assert(offsetof(EAP_METHOD, auth_val) == 3, "EAP_METHOD layout");

// One NAI realm ("passpoint_policy/cen_nai_realm") and the EAP methods it accepts.
struct NAI_REALM {
    char realm_name[kHs2RealmSize];  // 1 to 255 octets
    uint8_t eap_count;               // rows in use in eap_method; the rest is zero
    uint8_t pad[3];
    EAP_METHOD eap_method[kHs2MaxEapRows];
};
static_assert(sizeof(NAI_REALM) == 1280, "NAI_REALM is 1280 bytes");
static_assert(offsetof(NAI_REALM, eap_count) == 256, "NAI_REALM layout");
static_assert(offsetof(NAI_REALM, eap_method) == 260, "NAI_REALM layout");

// One name in one language: venue names ("passpoint_policy/cen_venue_name_lang"), operator
// names ("passpoint_policy/cen_operator_name_lang"), OSU friendly names and descriptions.
struct NAME_LANG {
    char code[kHs2LangCodeSize];  // 2 or 3 letters
    char name[kHs2NameSize];      // at most 252 octets, UTF-8
    uint8_t pad[3];
};
static_assert(sizeof(NAME_LANG) == 260, "NAME_LANG is 260 bytes");
static_assert(offsetof(NAME_LANG, name) == 4, "NAME_LANG layout");
static_assert(offsetof(NAME_LANG, pad) == 257, "NAME_LANG layout");

// One connection capability ("passpoint_policy/cen_cc_variable"): Hotspot 2.0 Proto Port Tuple.
struct CONN_CAP {
    uint8_t protocol;  // IP protocol number: 1 ICMP, 6 TCP, 17 UDP, 50 ESP, ...
    uint8_t pad0;
    uint16_t port;   // 0 to 65535
    uint8_t status;  // 0 closed, 1 open
    uint8_t pad1;
};
static_assert(sizeof(CONN_CAP) == 6, "CONN_CAP is 6 bytes");
static_assert(offsetof(CONN_CAP, port) == 2, "CONN_CAP layout");
static_assert(offsetof(CONN_CAP, status) == 4, "CONN_CAP layout");

// One icon of an OSU provider: Hotspot 2.0 Icon Metadata plus where its bytes are. The bytes
// live in the same value block as the records (see OSU_SP_LIST), so the record holds an
// offset, not a pointer: it reads the same on the 32-bit AP and survives every copy.
struct jsonHS2Icon {
    uint16_t width;               // pixels
    uint16_t height;              // pixels
    char code[kHs2LangCodeSize];  // 2 or 3 letters; "zxx" for an icon without language
    char icon_name[kHs2UriSize];  // the file name a station asks for, 1 to 255 octets
    uint32_t icon_data;           // offset of the icon bytes from the first byte of the value
    uint32_t icon_data_len;       // 1 to 65535
};
static_assert(sizeof(jsonHS2Icon) == 272, "jsonHS2Icon is 272 bytes");
static_assert(offsetof(jsonHS2Icon, height) == 2, "jsonHS2Icon layout");
static_assert(offsetof(jsonHS2Icon, code) == 4, "jsonHS2Icon layout");
static_assert(offsetof(jsonHS2Icon, icon_name) == 8, "jsonHS2Icon layout");
static_assert(offsetof(jsonHS2Icon, icon_data) == 264, "jsonHS2Icon layout");
static_assert(offsetof(jsonHS2Icon, icon_data_len) == 268, "jsonHS2Icon layout");

// One OSU provider ("passpoint_policy/cen_osu_provider").
struct OSU_SP {
    uint8_t name_count;                           // entries in use in name_lang
    uint8_t description_count;                    // entries in use in description_lang
    uint8_t icon_count;                           // entries in use in icons
    uint8_t osu_method_count;                     // entries in use in osu_method_list
    NAME_LANG name_lang[kHs2MaxOsuNames];         // OSU friendly names
    NAME_LANG description_lang[kHs2MaxOsuNames];  // OSU service descriptions
    jsonHS2Icon icons[kHs2MaxOsuIcons];
    char osu_nai[kHs2UriSize];                   // may be empty
    char osu_server_uri[kHs2UriSize];            // 1 to 255 octets
    uint8_t osu_method_list[kHs2MaxOsuMethods];  // 0 OMA-DM, 1 SOAP-XML SPP; preferred first
    uint8_t pad[2];
};
static_assert(sizeof(OSU_SP) == 5768, "OSU_SP is 5768 bytes");
static_assert(offsetof(OSU_SP, description_count) == 1, "OSU_SP layout");
static_assert(offsetof(OSU_SP, icon_count) == 2, "OSU_SP layout");
static_assert(offsetof(OSU_SP, osu_method_count) == 3, "OSU_SP layout");
static_assert(offsetof(OSU_SP, name_lang) == 4, "OSU_SP layout");
static_assert(offsetof(OSU_SP, description_lang) == 2084, "OSU_SP layout");
static_assert(offsetof(OSU_SP, icons) == 4164, "OSU_SP layout");
static_assert(offsetof(OSU_SP, osu_nai) == 5252, "OSU_SP layout");
static_assert(offsetof(OSU_SP, osu_server_uri) == 5508, "OSU_SP layout");
static_assert(offsetof(OSU_SP, osu_method_list) == 5764, "OSU_SP layout");

// Head of the OSU provider list's value: `count` OSU_SP records follow it, then
// `icon_bytes` bytes of icon data that the records' icons point into by offset.
struct OSU_SP_LIST {
    uint32_t count;
    uint32_t icon_bytes;
};
static_assert(sizeof(OSU_SP_LIST) == 8, "OSU_SP_LIST is 8 bytes");
static_assert(offsetof(OSU_SP_LIST, icon_bytes) == 4, "OSU_SP_LIST layout");

#endif
