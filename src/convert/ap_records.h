/* SPDX-License-Identifier: MIT */
/** @file
 * The AP's fixed binary records, exactly as its data path and daemon read them: fixed-width
 * fields, explicit padding, little-endian, zero-filled before use. A converter hands each list
 * of records to the caller as one entry of kind CFG_BYTES (5) whose value holds the records
 * back to back; the entry's name says which record it holds (see the table in
 * base/records.h). The header compiles as C11 and as C++; every size and offset is checked
 * at compile time in both languages, so a daemon built with its own compiler reads the same
 * bytes the library wrote.
 */
#ifndef JSONCFGPLUS_CONVERT_AP_RECORDS_H
#define JSONCFGPLUS_CONVERT_AP_RECORDS_H

#include <stddef.h>
#include <stdint.h>

#include "../platform/byte_order.h"

/// @cond JCP_RECORD_MACROS
// One check for every size and offset, in the spelling each language has for it.
#ifdef __cplusplus
#define JCP_RECORD_ASSERT(condition, text) static_assert(condition, text)
// C++ keeps the constants' own types; C has no typed constant usable as an array bound.
#define JCP_RECORD_CONSTANT(type, name, value) constexpr type name = value
#else
#define JCP_RECORD_ASSERT(condition, text) _Static_assert(condition, text)
#define JCP_RECORD_CONSTANT(type, name, value) enum { name = value }
#endif
#define JCP_RECORD_SIZE(record, bytes) \
    JCP_RECORD_ASSERT(sizeof(record) == (bytes), #record " is " #bytes " bytes")
#define JCP_RECORD_OFFSET(record, field, at) \
    JCP_RECORD_ASSERT(offsetof(record, field) == (at), #record "." #field " at offset " #at)
/// @endcond

/** One filter rule as the AP's data path reads it; 72 bytes, every field at its natural
 * alignment. Offsets in brackets. */
typedef struct FILTER_RULE_ENTRY {
    uint32_t precedence;          ///< [0] rules apply in ascending precedence
    uint8_t r_mac[6];             ///< [4] MAC address of a MAC rule
    uint8_t r_macmask[6];         ///< [10] its mask
    uint8_t r_ip6addr[16];        ///< [16] IPv6 address, network byte order
    uint32_t r_ipaddr;            ///< [32] IPv4 address, network byte order (first octet at 32)
    uint16_t r_filter_flags;      ///< [36] kFilter* bits
    uint16_t r_action_flags;      ///< [38] kAction* bits
    uint16_t r_eth_type;          ///< [40] 0x0800, 0x86DD or the MAC rule's Ether type
    uint8_t r_ipmasklen;          ///< [42] prefix length of the address
    uint8_t r_protocol;           ///< [43] IP protocol number
    uint8_t r_tos;                ///< [44] ToS value to match
    uint8_t r_tosmask_prio;       ///< [45] ToS mask code (kFilterTos) or 802.1p priority
                                  ///< (kFilterUp)
    uint16_t r_port_min;          ///< [46] port range, host order
    uint16_t r_port_max;          ///< [48] end of the port range, host order
    uint16_t r_action_vlanid;     ///< [50] VLAN word of contain-to-VLAN: id in bits 0-11,
                                  ///< 0x2000 always, 0x4000 tagged, 0x8000 bridged
    uint32_t r_app_sig_disp_id;   ///< [52] application-signature display id
    uint32_t r_app_sig_group_id;  ///< [56] application-signature group id
    uint32_t r_fixed_app_id;      ///< [60] fixed application id
    uint8_t cos_tos;              ///< [64] class of service to apply: ToS to mark
    uint8_t cos_tosmask;          ///< [65] its mask
    uint8_t cos_prio_txq;         ///< [66] 802.1p priority (high nibble), transmit queue (low)
    uint8_t cos_rates;            ///< [67] ingress (high nibble), egress (low) rate-limit index
    uint8_t pad[4];               ///< [68] zero
} FILTER_RULE_ENTRY;
JCP_RECORD_SIZE(FILTER_RULE_ENTRY, 72);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, precedence, 0);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_mac, 4);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_macmask, 10);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_ip6addr, 16);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_ipaddr, 32);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_filter_flags, 36);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_action_flags, 38);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_eth_type, 40);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_ipmasklen, 42);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_protocol, 43);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_tos, 44);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_tosmask_prio, 45);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_port_min, 46);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_port_max, 48);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_action_vlanid, 50);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_app_sig_disp_id, 52);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_app_sig_group_id, 56);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, r_fixed_app_id, 60);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, cos_tos, 64);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, cos_tosmask, 65);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, cos_prio_txq, 66);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, cos_rates, 67);
JCP_RECORD_OFFSET(FILTER_RULE_ENTRY, pad, 68);

/** A rule as the converters build it and as "cen_filter_rules" carries it, so the redirect
 * and mirror bits reach the daemon: the data path's record, then the extended action word;
 * 76 bytes. */
typedef struct apiCfgPlusFilterRule {
    FILTER_RULE_ENTRY rule;       ///< [0] the data path's record
    uint16_t r_ext_action_flags;  ///< [72] kExtAction* bits
    uint8_t pad[2];               ///< [74] zero
} apiCfgPlusFilterRule;
JCP_RECORD_SIZE(apiCfgPlusFilterRule, 76);
JCP_RECORD_OFFSET(apiCfgPlusFilterRule, rule, 0);
JCP_RECORD_OFFSET(apiCfgPlusFilterRule, r_ext_action_flags, 72);
JCP_RECORD_OFFSET(apiCfgPlusFilterRule, pad, 74);

/** @name Filter flags (FILTER_RULE_ENTRY::r_filter_flags), with the names the dumps show */
///@{
/// ETHER_TYPE: match r_eth_type
JCP_RECORD_CONSTANT(uint16_t, kFilterEtherType, 0x0001);
/// SOURCE_IP_OUT: match the source address (or MAC), outbound
JCP_RECORD_CONSTANT(uint16_t, kFilterSourceIpOut, 0x0002);
/// DEST_IP_IN: match the destination address (or MAC), inbound
JCP_RECORD_CONSTANT(uint16_t, kFilterDestIpIn, 0x0004);
/// PROT_TYPE: match r_protocol
JCP_RECORD_CONSTANT(uint16_t, kFilterProtType, 0x0008);
/// SOURCE_PORT_OUT: match the source port range, outbound
JCP_RECORD_CONSTANT(uint16_t, kFilterSourcePortOut, 0x0010);
/// DEST_PORT_IN: match the destination port range, inbound
JCP_RECORD_CONSTANT(uint16_t, kFilterDestPortIn, 0x0020);
/// SHADOW_FRAG: set by the converter on some IPv4 rules
JCP_RECORD_CONSTANT(uint16_t, kFilterShadowFrag, 0x0040);
/// OUT_DIR: the rule applies to outbound traffic
JCP_RECORD_CONSTANT(uint16_t, kFilterOutDir, 0x0080);
/// IN_DIR: the rule applies to inbound traffic
JCP_RECORD_CONSTANT(uint16_t, kFilterInDir, 0x0100);
/// SOURCE_IP_IN: match the source address (or MAC), inbound
JCP_RECORD_CONSTANT(uint16_t, kFilterSourceIpIn, 0x0200);
/// SOURCE_PORT_IN: match the source port range, inbound
JCP_RECORD_CONSTANT(uint16_t, kFilterSourcePortIn, 0x0400);
/// DEST_IP_OUT: match the destination address (or MAC), outbound
JCP_RECORD_CONSTANT(uint16_t, kFilterDestIpOut, 0x0800);
/// DEST_PORT_OUT: match the destination port range, outbound
JCP_RECORD_CONSTANT(uint16_t, kFilterDestPortOut, 0x1000);
/// UP: r_tosmask_prio holds an 802.1p priority to match
JCP_RECORD_CONSTANT(uint16_t, kFilterUp, 0x2000);
/// TOS: match r_tos under the mask code in r_tosmask_prio
JCP_RECORD_CONSTANT(uint16_t, kFilterTos, 0x4000);
/// SHADOW_ARP: set by the converter on some IPv4 rules
JCP_RECORD_CONSTANT(uint16_t, kFilterShadowArp, 0x8000);
///@}

/** @name Action flags (FILTER_RULE_ENTRY::r_action_flags) */
///@{
/// DENY: drop matching traffic
JCP_RECORD_CONSTANT(uint16_t, kActionDeny, 0x0001);
/// REPLICATE
JCP_RECORD_CONSTANT(uint16_t, kActionReplicate, 0x0002);
/// ACCESS_CTRL: the rule acts (its "allow" is anything but "none")
JCP_RECORD_CONSTANT(uint16_t, kActionAccessCtrl, 0x0008);
/// COS_DEFINED: the rule carries a class of service
JCP_RECORD_CONSTANT(uint16_t, kActionCosDefined, 0x0010);
/// COS_UP: mark the 802.1p priority of cos_prio_txq
JCP_RECORD_CONSTANT(uint16_t, kActionCosUp, 0x0040);
/// COS_TOS: mark cos_tos under cos_tosmask
JCP_RECORD_CONSTANT(uint16_t, kActionCosTos, 0x0080);
/// COS_TXQ: use the transmit queue of cos_prio_txq
JCP_RECORD_CONSTANT(uint16_t, kActionCosTxq, 0x0100);
/// COS_IRL: apply the ingress rate limit of cos_rates
JCP_RECORD_CONSTANT(uint16_t, kActionCosIrl, 0x0200);
/// COS_ORL: apply the egress rate limit of cos_rates
JCP_RECORD_CONSTANT(uint16_t, kActionCosOrl, 0x0400);
/// VLAN: contain matching traffic to r_action_vlanid
JCP_RECORD_CONSTANT(uint16_t, kActionVlan, 0x0800);
///@}

/** @name Extended action flags (apiCfgPlusFilterRule::r_ext_action_flags) */
///@{
/// REDIRECTION: redirect matching traffic
JCP_RECORD_CONSTANT(uint16_t, kExtActionRedirection, 0x2000);
/// MIRRORN
JCP_RECORD_CONSTANT(uint16_t, kExtActionMirrorN, 0x4000);
/// MIRRORN_DEFINED
JCP_RECORD_CONSTANT(uint16_t, kExtActionMirrorNDefined, 0x8000);
///@}

/** A policy's default class of service ("cen_default_cos"); 5 bytes. */
typedef struct ap_cos_entry {
    uint8_t r_flags;     ///< [0] kCos* bits
    uint8_t r_tos;       ///< [1] ToS to mark
    uint8_t r_tosmask;   ///< [2] its mask
    uint8_t r_prio_txq;  ///< [3] 802.1p priority (high nibble), transmit queue (low nibble)
    uint8_t r_rates;     ///< [4] ingress (high nibble), egress (low nibble) rate-limit index
} ap_cos_entry;
JCP_RECORD_SIZE(ap_cos_entry, 5);
JCP_RECORD_OFFSET(ap_cos_entry, r_flags, 0);
JCP_RECORD_OFFSET(ap_cos_entry, r_tos, 1);
JCP_RECORD_OFFSET(ap_cos_entry, r_tosmask, 2);
JCP_RECORD_OFFSET(ap_cos_entry, r_prio_txq, 3);
JCP_RECORD_OFFSET(ap_cos_entry, r_rates, 4);

/** @name Class-of-service flags (ap_cos_entry::r_flags) */
///@{
/// UP: mark the 802.1p priority of r_prio_txq
JCP_RECORD_CONSTANT(uint8_t, kCosUp, 0x02);
/// TOS: mark r_tos under r_tosmask
JCP_RECORD_CONSTANT(uint8_t, kCosTos, 0x04);
/// TXQ: use the transmit queue of r_prio_txq
JCP_RECORD_CONSTANT(uint8_t, kCosTxq, 0x08);
/// IRL: apply the ingress rate limit of r_rates
JCP_RECORD_CONSTANT(uint8_t, kCosIrl, 0x10);
/// ORL: apply the egress rate limit of r_rates
JCP_RECORD_CONSTANT(uint8_t, kCosOrl, 0x20);
/// WLAN_MARKING: set by other converters
JCP_RECORD_CONSTANT(uint8_t, kCosWlanMarking, 0x40);
///@}

/// Longest display name of an external application, without its terminating zero.
JCP_RECORD_CONSTANT(size_t, kExtAppNameMax, 32);
/// Longest match text of an external application, without its terminating zero.
JCP_RECORD_CONSTANT(size_t, kExtAppMatchMax, 64);

/** One manager-defined application ("cen_ext_applications"); 112 bytes. */
typedef struct EXT_APP_CONFIG {
    char dispName[kExtAppNameMax + 1];   ///< [0] zero-terminated
    char matchStr[kExtAppMatchMax + 1];  ///< [33] zero-terminated
    uint8_t pad[2];                      ///< [98] zero
    uint32_t dispId;                     ///< [100] display id
    uint32_t appId;                      ///< [104] application id
    uint32_t groupId;                    ///< [108] group id (from the signature maps by name)
} EXT_APP_CONFIG;
JCP_RECORD_SIZE(EXT_APP_CONFIG, 112);
JCP_RECORD_OFFSET(EXT_APP_CONFIG, dispName, 0);
JCP_RECORD_OFFSET(EXT_APP_CONFIG, matchStr, 33);
JCP_RECORD_OFFSET(EXT_APP_CONFIG, pad, 98);
JCP_RECORD_OFFSET(EXT_APP_CONFIG, dispId, 100);
JCP_RECORD_OFFSET(EXT_APP_CONFIG, appId, 104);
JCP_RECORD_OFFSET(EXT_APP_CONFIG, groupId, 108);

/** One remote tunnel endpoint of a topology; 40 bytes. */
typedef struct GRE_END_POINT {
    uint32_t addr;       ///< [0] IPv4, host order
    uint8_t secure;      ///< [4] 1 when the tunnel is secured with IKEv2
    char ikev2_psk[35];  ///< [5] zero-terminated, at most 32 characters
} GRE_END_POINT;
JCP_RECORD_SIZE(GRE_END_POINT, 40);
JCP_RECORD_OFFSET(GRE_END_POINT, addr, 0);
JCP_RECORD_OFFSET(GRE_END_POINT, secure, 4);
JCP_RECORD_OFFSET(GRE_END_POINT, ikev2_psk, 5);

/// Remote endpoints a topology record holds.
JCP_RECORD_CONSTANT(int, kTopologyEndpointSlots, 3);
/// Multicast ACL rules a topology record holds.
JCP_RECORD_CONSTANT(int, kTopologyMcastAclRules, 65);

/** One topology ("cen_topologies"): a VLAN, VXLAN network, GRE tunnel or the manager's
 * tunnel; 4872 bytes. */
typedef struct TOPOLOGY_ENTRY {
    int32_t internal_key;                         ///< [0] the manager's key; -1 when absent
    uint16_t vlan;                                ///< [4] VLAN id
    uint8_t pad0[2];                              ///< [6] zero
    uint32_t vxlan_vni;                           ///< [8] VXLAN network identifier
    uint32_t remote_endpoint_vxlan_ipaddress;     ///< [12] IPv4, host order
    uint32_t remote_endpoint_vxlan_int_mgmt_ip;   ///< [16] IPv4, host order
    uint32_t remote_endpoint_vxlan_int_mgmt_vni;  ///< [20] VXLAN id of the management network
    uint8_t type;       ///< [24] 6 marlin (and unknown), 7 vlan, 8 virtual_network, 9 gre
    uint8_t tagged;     ///< [25] 1 when the VLAN is tagged
    uint8_t proxy_arp;  ///< [26] 1 when proxy ARP is on
    uint8_t multicast_acl_enable;    ///< [27] 1 when the multicast ACL applies
    uint32_t remote_endpoint_count;  ///< [28] endpoints in use
    GRE_END_POINT remote_endpoint[kTopologyEndpointSlots];  ///< [32] GRE endpoints
    char name[36];                 ///< [152] zero-terminated, at most 32 characters
    uint16_t multicast_acl_count;  ///< [188] rules in use in multicast_acl
    uint8_t pad1[2];               ///< [190] zero
    FILTER_RULE_ENTRY multicast_acl[kTopologyMcastAclRules];  ///< [192] multicast ACL rules
} TOPOLOGY_ENTRY;
JCP_RECORD_SIZE(TOPOLOGY_ENTRY, 4872);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, internal_key, 0);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, vlan, 4);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, pad0, 6);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, vxlan_vni, 8);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, remote_endpoint_vxlan_ipaddress, 12);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, remote_endpoint_vxlan_int_mgmt_ip, 16);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, remote_endpoint_vxlan_int_mgmt_vni, 20);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, type, 24);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, tagged, 25);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, proxy_arp, 26);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, multicast_acl_enable, 27);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, remote_endpoint_count, 28);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, remote_endpoint, 32);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, name, 152);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, multicast_acl_count, 188);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, pad1, 190);
JCP_RECORD_OFFSET(TOPOLOGY_ENTRY, multicast_acl, 192);

/// Addresses the ARP-guard record holds.
JCP_RECORD_CONSTANT(int, kArpGuardMaxEntries, 32);

/** The ARP-guard address list ("cen_arp_guard_acl"); 132 bytes. */
typedef struct ARP_GUARD_ACL {
    uint16_t count;                      ///< [0] addresses in use, at most 32
    uint8_t pad[2];                      ///< [2] zero
    uint32_t addr[kArpGuardMaxEntries];  ///< [4] IPv4, network byte order; 0 when unused or
                                         ///< not IPv4
} ARP_GUARD_ACL;
JCP_RECORD_SIZE(ARP_GUARD_ACL, 132);
JCP_RECORD_OFFSET(ARP_GUARD_ACL, count, 0);
JCP_RECORD_OFFSET(ARP_GUARD_ACL, pad, 2);
JCP_RECORD_OFFSET(ARP_GUARD_ACL, addr, 4);

/** @name Hotspot 2.0 / 802.11u advertisement records
 * Each list element's value is its records back to back (the OSU provider list has a head, see
 * OSU_SP_LIST). Texts are zero-terminated and zero-padded; a text field is one byte longer than
 * the longest text the air format carries. */
///@{

/// Language code: ISO 639, 2 or 3 letters (802.11u name duple: 3-octet code, a 2-letter code
/// padded with a zero octet).
JCP_RECORD_CONSTANT(int, kHs2LangCodeSize, 4);
/// Venue, operator, OSU friendly name and description: at most 252 octets (802.11u name duple:
/// one length octet covers the 3-octet code and the name).
JCP_RECORD_CONSTANT(int, kHs2NameSize, 253);
/// NAI realm: at most 255 octets (802.11u NAI Realm Length is one octet).
JCP_RECORD_CONSTANT(int, kHs2RealmSize, 256);
/// EAP rows per realm: at most 255 (802.11u EAP Method Count is one octet; a row adds at most
/// one method).
JCP_RECORD_CONSTANT(int, kHs2MaxEapRows, 255);
/// MCC: 3 digits (3GPP TS 23.003).
JCP_RECORD_CONSTANT(int, kHs2MccSize, 4);
/// MNC: 2 or 3 digits (3GPP TS 23.003).
JCP_RECORD_CONSTANT(int, kHs2MncSize, 4);
/// OSU server URI, OSU NAI, icon file name: at most 255 octets (Hotspot 2.0 OSU Provider and
/// Icon Metadata: one length octet each).
JCP_RECORD_CONSTANT(int, kHs2UriSize, 256);
/// Icon data: at most 65535 bytes (Hotspot 2.0 Icon Binary File: two-octet data length).
JCP_RECORD_CONSTANT(uint32_t, kHs2MaxIconBytes, 65535);
/// Friendly names and descriptions per OSU provider: 8 languages (our bound; the air format
/// allows more, a manager offers far fewer).
JCP_RECORD_CONSTANT(int, kHs2MaxOsuNames, 8);
/// Icons per OSU provider: 4 (our bound: up to 64 KiB each is what the AP holds per provider).
JCP_RECORD_CONSTANT(int, kHs2MaxOsuIcons, 4);
/// OSU methods: 0 OMA-DM, 1 SOAP-XML SPP (Hotspot 2.0 OSU Method List); both fit.
JCP_RECORD_CONSTANT(int, kHs2MaxOsuMethods, 2);

// How many records each list holds at most; later items are dropped with a warning.
/// PLMNs: 84 (3GPP Cellular Network PLMN List: one length octet, 1 + 3 octets per PLMN).
JCP_RECORD_CONSTANT(int, kHs2MaxPlmns, 84);
/// Realms: 64 (our bound, about 80 KiB of records per WLAN).
JCP_RECORD_CONSTANT(int, kHs2MaxRealms, 64);
/// Venue and operator names: 32 languages (our bound).
JCP_RECORD_CONSTANT(int, kHs2MaxNames, 32);
/// Connection capabilities: 64 (our bound).
JCP_RECORD_CONSTANT(int, kHs2MaxConnCaps, 64);
/// OSU providers: 8 (our bound: with their icons up to about 2 MiB per WLAN).
JCP_RECORD_CONSTANT(int, kHs2MaxOsuProviders, 8);

/** One PLMN of the 3GPP Cellular Network list ("passpoint_policy/cen_plmnid"), as digit texts
 * so that an MNC of "01" and one of "001" stay different; 8 bytes. */
typedef struct _3GPP_CELL_NET {
    char mcc[kHs2MccSize];  ///< [0] 3 decimal digits
    char mnc[kHs2MncSize];  ///< [4] 2 or 3 decimal digits
} _3GPP_CELL_NET;
JCP_RECORD_SIZE(_3GPP_CELL_NET, 8);
JCP_RECORD_OFFSET(_3GPP_CELL_NET, mcc, 0);
JCP_RECORD_OFFSET(_3GPP_CELL_NET, mnc, 4);

/** One authentication parameter of one EAP method of an NAI realm; 4 bytes. Rows with the
 * same index describe one EAP method; a row with auth_type 0 is a method without
 * parameters. */
typedef struct EAP_METHOD {
    uint8_t index;      ///< [0] the document's "index", rows sorted by it
    uint8_t method;     ///< [1] IANA EAP method number: 13 TLS, 18 SIM, 21 TTLS, 23 AKA, 50 AKA'
    uint8_t auth_type;  ///< [2] authentication parameter id: 2 non-EAP inner, 5 credential, 0 none
    uint8_t auth_val;   ///< [3] for type 2: 1 PAP, 2 CHAP, 3 MSCHAP, 4 MSCHAPv2; for type 5:
                        ///< 1 SIM, 2 USIM, 6 certificate, 7 username/password; 0 for none
} EAP_METHOD;
JCP_RECORD_SIZE(EAP_METHOD, 4);
JCP_RECORD_OFFSET(EAP_METHOD, index, 0);
JCP_RECORD_OFFSET(EAP_METHOD, method, 1);
JCP_RECORD_OFFSET(EAP_METHOD, auth_type, 2);
JCP_RECORD_OFFSET(EAP_METHOD, auth_val, 3);

/** One NAI realm ("passpoint_policy/cen_nai_realm") and the EAP methods it accepts;
 * 1280 bytes. */
typedef struct NAI_REALM {
    char realm_name[kHs2RealmSize];         ///< [0] 1 to 255 octets
    uint8_t eap_count;                      ///< [256] rows in use in eap_method; the rest is zero
    uint8_t pad[3];                         ///< [257] zero
    EAP_METHOD eap_method[kHs2MaxEapRows];  ///< [260] rows sorted by index
} NAI_REALM;
JCP_RECORD_SIZE(NAI_REALM, 1280);
JCP_RECORD_OFFSET(NAI_REALM, realm_name, 0);
JCP_RECORD_OFFSET(NAI_REALM, eap_count, 256);
JCP_RECORD_OFFSET(NAI_REALM, pad, 257);
JCP_RECORD_OFFSET(NAI_REALM, eap_method, 260);

/** One name in one language: venue names ("passpoint_policy/cen_venue_name_lang"), operator
 * names ("passpoint_policy/cen_operator_name_lang"), OSU friendly names and descriptions;
 * 260 bytes. */
typedef struct NAME_LANG {
    char code[kHs2LangCodeSize];  ///< [0] 2 or 3 letters
    char name[kHs2NameSize];      ///< [4] at most 252 octets, UTF-8
    uint8_t pad[3];               ///< [257] zero
} NAME_LANG;
JCP_RECORD_SIZE(NAME_LANG, 260);
JCP_RECORD_OFFSET(NAME_LANG, code, 0);
JCP_RECORD_OFFSET(NAME_LANG, name, 4);
JCP_RECORD_OFFSET(NAME_LANG, pad, 257);

/** One connection capability ("passpoint_policy/cen_cc_variable"): Hotspot 2.0 Proto Port
 * Tuple; 6 bytes. */
typedef struct CONN_CAP {
    uint8_t protocol;  ///< [0] IP protocol number: 1 ICMP, 6 TCP, 17 UDP, 50 ESP, ...
    uint8_t pad0;      ///< [1] zero
    uint16_t port;     ///< [2] 0 to 65535, host order
    uint8_t status;    ///< [4] 0 closed, 1 open
    uint8_t pad1;      ///< [5] zero
} CONN_CAP;
JCP_RECORD_SIZE(CONN_CAP, 6);
JCP_RECORD_OFFSET(CONN_CAP, protocol, 0);
JCP_RECORD_OFFSET(CONN_CAP, pad0, 1);
JCP_RECORD_OFFSET(CONN_CAP, port, 2);
JCP_RECORD_OFFSET(CONN_CAP, status, 4);
JCP_RECORD_OFFSET(CONN_CAP, pad1, 5);

/** One icon of an OSU provider: Hotspot 2.0 Icon Metadata plus where its bytes are; 272
 * bytes. The bytes live in the same value block as the records (see OSU_SP_LIST), so the
 * record holds an offset, not a pointer: it reads the same on the 32-bit AP and survives
 * every copy. */
typedef struct jsonHS2Icon {
    uint16_t width;               ///< [0] pixels
    uint16_t height;              ///< [2] pixels
    char code[kHs2LangCodeSize];  ///< [4] 2 or 3 letters; "zxx" for an icon without language
    char icon_name[kHs2UriSize];  ///< [8] the file name a station asks for, 1 to 255 octets
    uint32_t icon_data;           ///< [264] offset of the icon bytes from the value's first byte
    uint32_t icon_data_len;       ///< [268] 1 to 65535
} jsonHS2Icon;
JCP_RECORD_SIZE(jsonHS2Icon, 272);
JCP_RECORD_OFFSET(jsonHS2Icon, width, 0);
JCP_RECORD_OFFSET(jsonHS2Icon, height, 2);
JCP_RECORD_OFFSET(jsonHS2Icon, code, 4);
JCP_RECORD_OFFSET(jsonHS2Icon, icon_name, 8);
JCP_RECORD_OFFSET(jsonHS2Icon, icon_data, 264);
JCP_RECORD_OFFSET(jsonHS2Icon, icon_data_len, 268);

/** One OSU provider ("passpoint_policy/cen_osu_provider"); 5768 bytes. */
typedef struct OSU_SP {
    uint8_t name_count;                           ///< [0] entries in use in name_lang
    uint8_t description_count;                    ///< [1] entries in use in description_lang
    uint8_t icon_count;                           ///< [2] entries in use in icons
    uint8_t osu_method_count;                     ///< [3] entries in use in osu_method_list
    NAME_LANG name_lang[kHs2MaxOsuNames];         ///< [4] OSU friendly names
    NAME_LANG description_lang[kHs2MaxOsuNames];  ///< [2084] OSU service descriptions
    jsonHS2Icon icons[kHs2MaxOsuIcons];           ///< [4164] the provider's icons
    char osu_nai[kHs2UriSize];                    ///< [5252] may be empty
    char osu_server_uri[kHs2UriSize];             ///< [5508] 1 to 255 octets
    uint8_t osu_method_list[kHs2MaxOsuMethods];   ///< [5764] 0 OMA-DM, 1 SOAP-XML SPP;
                                                  ///< preferred first
    uint8_t pad[2];                               ///< [5766] zero
} OSU_SP;
JCP_RECORD_SIZE(OSU_SP, 5768);
JCP_RECORD_OFFSET(OSU_SP, name_count, 0);
JCP_RECORD_OFFSET(OSU_SP, description_count, 1);
JCP_RECORD_OFFSET(OSU_SP, icon_count, 2);
JCP_RECORD_OFFSET(OSU_SP, osu_method_count, 3);
JCP_RECORD_OFFSET(OSU_SP, name_lang, 4);
JCP_RECORD_OFFSET(OSU_SP, description_lang, 2084);
JCP_RECORD_OFFSET(OSU_SP, icons, 4164);
JCP_RECORD_OFFSET(OSU_SP, osu_nai, 5252);
JCP_RECORD_OFFSET(OSU_SP, osu_server_uri, 5508);
JCP_RECORD_OFFSET(OSU_SP, osu_method_list, 5764);
JCP_RECORD_OFFSET(OSU_SP, pad, 5766);

/** Head of the OSU provider list's value; 8 bytes. `count` OSU_SP records follow it, then
 * `icon_bytes` bytes of icon data that the records' icons point into by offset. */
typedef struct OSU_SP_LIST {
    uint32_t count;       ///< [0] OSU_SP records after the head
    uint32_t icon_bytes;  ///< [4] bytes of icon data after the records
} OSU_SP_LIST;
JCP_RECORD_SIZE(OSU_SP_LIST, 8);
JCP_RECORD_OFFSET(OSU_SP_LIST, count, 0);
JCP_RECORD_OFFSET(OSU_SP_LIST, icon_bytes, 4);

///@}

#undef JCP_RECORD_OFFSET
#undef JCP_RECORD_SIZE
#undef JCP_RECORD_CONSTANT
#undef JCP_RECORD_ASSERT

#endif
