// SPDX-License-Identifier: MIT
// The schema's data. Members are those the build and the converters read; enumerations of the
// EAP names come from the library's own tables, so the two cannot drift apart.
#include "lint/schema_table_priv.h"

#include <cstdint>
#include <regex>

#include "convert/eap_tables.h"

namespace jcp::schema {

namespace {

// Builders that keep each table row on one line.
Member integer(const char* name, Range range = {}) {
    Member m{name, Type::Integer};
    m.range = range;
    return m;
}
Member boolean(const char* name) {
    return Member{name, Type::Boolean};
}
Member string(const char* name, Format format = Format::None) {
    Member m{name, Type::String};
    m.format = format;
    return m;
}
Member oneOf(const char* name, const std::vector<std::string>* values, const char* otherwise) {
    Member m{name, Type::String};
    m.values = values;
    m.otherwise = otherwise;
    return m;
}
Member names(const char* name, const char* table) {
    Member m{name, Type::String};
    m.reference = table;
    return m;
}
Member object(const char* name, const Kind* kind) {
    Member m{name, Type::Object};
    m.kind = kind;
    return m;
}
Member objects(const char* name, const Kind* kind) {
    Member m{name, Type::Array};
    m.kind = kind;
    return m;
}
// A Passpoint list: an array of objects, or a single object for a list of one.
Member list(const char* name, const Kind* kind) {
    return objects(name, kind).alsoAs(Type::Object);
}
Member strings(const char* name, Format format = Format::None, Range range = {}) {
    Member m{name, Type::Array, Type::String};
    m.format = format;
    m.range = range;
    return m;
}
Member integers(const char* name, Range range = {}) {
    Member m{name, Type::Array, Type::Integer};
    m.range = range;
    return m;
}
Member array(const char* name) {
    return Member{name, Type::Array, Type::Array};
}

std::vector<Member> withMembers(std::vector<Member> members, const std::vector<Member>& more) {
    members.insert(members.end(), more.begin(), more.end());
    return members;
}

const char* const kTreatedAsAllow = "the filter converter treats it as \"allow\"";
const char* const kEapDropped = "the EAP method is dropped";
const char* const kCapabilityDropped = "the connection capability is dropped";

const Range kVlan{1, 4094};
const Range kVlanMasked{1, 4094, "the AP keeps only its low 12 bits"};
const Range kPort{1, 65535};
const Range kDtim{1, 255};
const Range kEapCode{0, 255, "the EAP method is dropped"};
const Range kCapabilityPort{0, 65535, "the connection capability is dropped"};
const Range kNetAuthCode{0, 3, "the network authentication type is dropped"};
const Range kMccNumber{0, 999, "the Passpoint converter drops this network"};
const Range kProtocolNumber{0, 255, "the connection capability is dropped"};
const Range kIconSide{0, 65535, "the icon is dropped"};
// Channel numbers by band; the AP keeps a number outside its band as written.
const Range kAnyBand{1, 233};
const Range k24GHz{1, 14};
const Range k5GHz{32, 177};
const Range k6GHz{1, 233};
const Range kRuleVlan{1, 4094, "the filter converter refuses the rule"};
const char* const kRuleRefused = "the filter converter refuses the rule";
const Range kRulePriority{0, 7, kRuleRefused};
const Range kRuleNibble{0, 15, kRuleRefused};
const Range kRuleOctet{0, 255, kRuleRefused};
const Range kRulePort{0, 65535, kRuleRefused};
const Range kPrecedence{0, INT32_MAX, "the filter converter refuses the rule"};
const Range kProtocol{0, 255, "the filter converter refuses the rule"};

std::vector<std::string> namesOf(const naiEapTable& table) {
    std::vector<std::string> out;
    for (const auto& row : table) out.push_back(row.first);
    return out;
}

struct Tables {
    std::vector<std::string> allowValues{"allow", "deny", "contain-to-vlan", "none", "redirect"};
    std::vector<std::string> eapMethods = namesOf(naiEapMethod);
    std::vector<std::string> eapAuthTypes = namesOf(naiEapAuthType);
    std::vector<std::string> eapAuthValuesInner = namesOf(naiEapAuthValId2);
    std::vector<std::string> eapAuthValuesCredential = namesOf(naiEapAuthValId5);
    std::vector<std::string> eapAuthValues;
    std::vector<std::string> capabilityStatus{"open", "closed"};
    // The protocol names the connection capabilities know; any other protocol is its number.
    std::vector<std::string> protocols{"icmp", "tcp", "udp", "esp"};

    Kind containToVlan{"contain_to_vlan",
                       {integer("vlan", kRuleVlan), boolean("cen_tagged"), boolean("cen_bridged")},
                       true};
    Kind macRule{"mac_rule",
                 {integer("precedence", kPrecedence), oneOf("allow", &allowValues, kTreatedAsAllow),
                  string("smac", Format::RuleMac), string("smac_mask", Format::RuleMac),
                  string("dmac", Format::RuleMac), string("dmac_mask", Format::RuleMac),
                  string("match_type"), object("cen_contain_to_vlan", &containToVlan),
                  integer("mark_8021p", kRulePriority), integer("transmit_queue", kRuleNibble),
                  boolean("ingress_enable"), integer("ingress_rate", kRuleNibble),
                  boolean("egress_enable"), integer("egress_rate", kRuleNibble)},
                 true};
    Kind ipRule{"ip_rule",
                {integer("precedence", kPrecedence),
                 oneOf("allow", &allowValues, kTreatedAsAllow),
                 string("dip", Format::IpPrefix),
                 string("sip", Format::IpPrefix),
                 integer("protocol", kProtocol),
                 string("match_type"),
                 integer("low_dport", kRulePort),
                 integer("high_dport", kRulePort),
                 integer("low_sport", kRulePort),
                 integer("high_sport", kRulePort),
                 string("dns_name"),
                 integer("match_dot1p", kRulePriority),
                 integer("mark_8021p", kRulePriority),
                 integer("transmit_queue", kRuleNibble),
                 integer("cen_match_tos", kRuleOctet),
                 integer("cen_match_tosmask", kRuleOctet),
                 integer("cen_mark_tos", kRuleOctet),
                 integer("cen_mark_tosmask", kRuleOctet),
                 object("cen_contain_to_vlan", &containToVlan),
                 boolean("ingress_enable"),
                 integer("ingress_rate", kRuleNibble),
                 boolean("egress_enable"),
                 integer("egress_rate", kRuleNibble)},
                true};
    Kind appRule{"app_rule",
                 {integer("precedence", kPrecedence), oneOf("allow", &allowValues, kTreatedAsAllow),
                  string("canned_app"), string("app_category"),
                  integer("mark_8021p", kRulePriority), integer("transmit_queue", kRuleNibble),
                  boolean("ingress_enable"), integer("ingress_rate", kRuleNibble),
                  boolean("egress_enable"), integer("egress_rate", kRuleNibble)},
                 false};
    Kind macAcl{"mac_acl", {string("name"), objects("mac_rules", &macRule)}, false};
    Kind ipAcl{"ip_acl", {string("name"), objects("ip_rules", &ipRule)}, false};
    Kind defaultAction{"default_action", {oneOf("allow", &allowValues, kTreatedAsAllow)}, false};
    Kind appPolicy{
        "app_policy",
        {string("name"), objects("rule_entry", &appRule), object("default_action", &defaultAction)},
        false};

    Kind vlanItem{"wlan_vlan",
                  {integer("vlan", kVlanMasked), boolean("cen_tagged"), boolean("cen_bridged")},
                  false};
    Kind wlan{"wlan",
              {string("name"), string("ssid", Format::Ssid), integer("cen_ssid_id"),
               objects("vlans", &vlanItem), names("qos_policy", "wlan_qos"),
               names("mac_in_acl", "mac_acl"), names("mac_out_acl", "mac_acl"),
               names("ip_in_acl", "ip_acl"), names("ip_out_acl", "ip_acl"),
               names("ipv6_in_acl", "ipv6_acl"), names("ipv6_out_acl", "ipv6_acl"),
               names("app_policy", "app_policy"), names("captive_portal", "captive_portal"),
               string("captive_portal_enforcement"), names("passpoint_policy", "passpoint_policy"),
               string("auth"), string("enc")},
              false};

    // The Passpoint converters take a single object for a list of one, and the EAP and
    // protocol names also as the number that goes on the air.
    Kind langName{"lang_name", {string("code", Format::Language), string("name")}, true};
    Kind icon{"icon",
              {integer("width", kIconSide), integer("height", kIconSide),
               string("code", Format::Language), string("filename"), string("file")},
              true};
    Kind netAuthType{
        "net_auth_type",
        {string("auth_type").alsoAs(Type::Integer).within(kNetAuthCode), string("url")},
        true};
    Kind plmn{"plmnid",
              {string("mcc", Format::Mcc).alsoAs(Type::Integer).within(kMccNumber),
               string("mnc", Format::Mnc)},
              true};
    Kind eapMethod{
        "eap_method",
        {integer("index", kEapCode),
         oneOf("method", &eapMethods, kEapDropped).alsoAs(Type::Integer).within(kEapCode),
         oneOf("auth_type", &eapAuthTypes, kEapDropped).alsoAs(Type::Integer).within(kEapCode),
         oneOf("auth_val", &eapAuthValues, kEapDropped).alsoAs(Type::Integer).within(kEapCode)},
        true,
        {{"auth_type", "non-eap-inner", "auth_val", &eapAuthValuesInner},
         {"auth_type", "credential", "auth_val", &eapAuthValuesCredential}}};
    Kind naiRealm{"nai_realm", {string("realm_name"), list("eap_method", &eapMethod)}, true};
    Kind connectionCapability{
        "cc_variable",
        {oneOf("protocol", &protocols, kCapabilityDropped)
             .alsoAs(Type::Integer)
             .within(kProtocolNumber),
         integer("port", kCapabilityPort).alsoAs(Type::String).written(Format::Digits),
         oneOf("status", &capabilityStatus, kCapabilityDropped)},
        true};
    Kind osuProvider{"osu_provider",
                     {list("name_lang", &langName), list("description_lang", &langName),
                      // Or the file name of a global icon, or a list of them.
                      list("icon", &icon).alsoAs(Type::String), string("nai"), string("server_url"),
                      integer("method_oma_dm_priority"), integer("method_soap_xml_spp_priority")},
                     true};
    Kind passpointPolicy{
        "passpoint_policy",
        {string("name"), string("hessid", Format::Mac), list("net_auth_type", &netAuthType),
         list("plmnid", &plmn), list("nai_realm", &naiRealm), list("venue_name_lang", &langName),
         list("operator_name_lang", &langName), list("cc_variable", &connectionCapability),
         list("osu_provider", &osuProvider)},
        false};
    Kind globalPasspoint{"device_passpoint_policy", {list("global_hs2_icons", &icon)}, false};

    Kind remoteEndpoint{"remote_endpoint",
                        {string("addr", Format::Ipv4), boolean("secure"), string("ikev2_psk")},
                        false};
    Kind switchport{
        "switchport", {integer("native_vlan", kVlan), boolean("native_vlan_tagged")}, false};
    Kind bssMapItem{"wlanbssmap", {integer("bss"), names("wlan", "wlan")}, true};
    Kind meshBssMapItem{"meshpointbssmap", {integer("bss"), names("meshpoint", "meshpoint")}, true};
    // One kind for every interface item: the build reads each member only for the roles that
    // carry it, and a member of the wrong type is never read whatever the role.
    Kind interface {
        "interface",
            {string("name"),
             string("type"),
             integer("internal_key"),
             integer("vlan", kVlan),
             integer("tenant_vlan", kVlan),
             integer("vxlan_vni", {0, 16777215}),
             integer("remote_endpoint_vxlan_internal_management_vni", {0, 16777215}),
             string("remote_endpoint_vxlan_ipaddress", Format::Ipv4),
             string("remote_endpoint_vxlan_internal_management_IP", Format::Ipv4),
             boolean("proxy_arp"),
             boolean("multicast_acl_enable"),
             objects("remote_endpoint", &remoteEndpoint),
             integer("static_channel_group"),
             object("switchport", &switchport),
             string("rf_mode"),
             integers("dtim", kDtim),
             strings("fallback_channels", Format::Channel, kAnyBand),
             strings("ocs_channel_list_bg", Format::Channel, k24GHz),
             strings("ocs_channel_list_a", Format::Channel, k5GHz),
             strings("ocs_channel_list_ax6", Format::Channel, k6GHz),
             integer("probe_response_rssi_threshold"),
             names("qos_policy", "radio_qos"),
             objects("wlanbssmap", &bssMapItem),
             objects("meshpointbssmap", &meshBssMapItem),
             boolean("shutdown"),
             string("ax_ofdma"),
             integer("ax_bsscolor"),
             string("antenna_mode")},
            false
    };

    Kind arpGuard{"arp_guard_acl", {string("ip", Format::Ipv4), string("mac", Format::Mac)}, false};
    Kind route{
        "route", {string("destination", Format::IpPrefix), string("gateway", Format::Ipv4)}, false};
    Kind meshpointDevice{
        "meshpoint_device",
        {names("name", "meshpoint"), string("is_root_dev"), boolean("monitor_pri_port_link"),
         integer("hysteresis_snr_min"), strings("acs_channel_list_5", Format::ChannelList, k5GHz),
         strings("acs_channel_list_6", Format::ChannelList, k6GHz),
         strings("acs_channel_list_24", Format::ChannelList, k24GHz)},
        false};
    // What the device and every profile both hold: the build reads a profile's members as
    // the device's.
    std::vector<Member> placeMembers{string("name"),
                                     string("hostname"),
                                     objects("interface", &interface),
                                     objects("route", &route),
                                     objects("arp_guard_acl", &arpGuard),
                                     strings("cen_failover_home_ip_addr", Format::Ipv4),
                                     strings("cen_failover_foreign_ip_addr", Format::Ipv4),
                                     objects("meshpoint_device", &meshpointDevice),
                                     object("passpoint_policy", &globalPasspoint),
                                     boolean("load_balancing_balance_band_loads"),
                                     boolean("load_balancing_balance_ap_loads"),
                                     integer("load_balancing_group_id"),
                                     string("antenna_id_group1_option"),
                                     string("antenna_id_group2_option"),
                                     string("antenna_id_group3_option"),
                                     string("antenna_id_group4_option"),
                                     string("antenna_id_group5_option"),
                                     string("antenna_id_group6_option"),
                                     string("antenna_id_group7_option"),
                                     string("antenna_id_group8_option"),
                                     string("antenna_id_group9_option"),
                                     string("antenna_id_group10_option"),
                                     string("antenna_id_internal_option")};
    Kind device{"device",
                withMembers(placeMembers, {names("profile_name", "profile"),
                                           names("rf_domain_name", "rf_domain")}),
                false};
    Kind profile{"profile",
                 withMembers(placeMembers, {names("management_policy", "management_policy")}),
                 false};

    Kind server{"server", {string("host"), integer("port", kPort)}, false};
    Kind rfDomain{
        "rf_domain",
        {string("name"), string("country_code", Format::Country),
         names("sensor_policy_name", "sensor_policy"), names("smart_rf_policy", "smart_rf_policy"),
         objects("sensor_server", &server), objects("location_server", &server)},
        false};
    Kind scanMode{"sensor_scanmode", {string("scan_mode"), integer("lock_freq")}, false};
    Kind sensorPolicy{
        "sensor_policy",
        {string("name"), object("sensor_scanmode", &scanMode), array("scan_channels")},
        false};
    Kind meshpoint{"meshpoint",
                   {string("name"), string("meshid", Format::Ssid), integer("cen_ssid_id"),
                    boolean("is_root")},
                   false};
    Kind radioQos{
        "radio_qos",
        {string("name"), boolean("admission_control_voice_enable"),
         boolean("admission_control_video_enable"), boolean("admission_control_best_effort_enable"),
         boolean("admission_control_background_enable")},
        false};
    Kind captivePortal{"captive_portal",
                       {string("name"), names("dns_whitelist", "dns_whitelist"),
                        string("cen_http_ports"), names("aaa_policy", "aaa_policy")},
                       false};
    Kind extApp{"cen_ext_app",
                {string("cen_ext_app_disp_name"), string("cen_ext_app_match_str"),
                 integer("cen_ext_app_disp_id"), integer("cen_ext_app_id"),
                 string("cen_ext_app_group_name"), integer("cen_ext_app_group_id")},
                false};

    // Tables that are only named by others here: the AP forwards their members as they are.
    Kind named{"named_object", {string("name")}, false};

    std::vector<TopLevel> top{
        {"config-version", nullptr, Type::String, false, false},
        {"personality", nullptr, Type::String, false, false},
        {"request-id", nullptr, Type::Integer, false, false},
        {"cen_time", nullptr, Type::Integer, false, false},
        {"ip", nullptr, Type::String, false, false},
        {"port", nullptr, Type::Integer, false, false},
        {"key", nullptr, Type::String, false, false},
        {"device", &device, Type::Object, true, false},
        {"profile", &profile, Type::Object, false, true},
        {"rf_domain", &rfDomain, Type::Object, false, true},
        {"sensor_policy", &sensorPolicy, Type::Object, false, true},
        {"wlan", &wlan, Type::Object, false, true},
        {"meshpoint", &meshpoint, Type::Object, false, true},
        {"radio_qos", &radioQos, Type::Object, false, true},
        {"mac_acl", &macAcl, Type::Object, false, true},
        {"ip_acl", &ipAcl, Type::Object, false, true},
        {"ipv6_acl", &ipAcl, Type::Object, false, true},
        {"app_policy", &appPolicy, Type::Object, false, true},
        {"captive_portal", &captivePortal, Type::Object, false, true},
        {"passpoint_policy", &passpointPolicy, Type::Object, false, true},
        {"cen_ext_app_cfg_tbl", &extApp, Type::Object, false, false},
        {"wlan_qos", &named, Type::Object, false, true},
        {"management_policy", &named, Type::Object, false, true},
        {"smart_rf_policy", &named, Type::Object, false, true},
        {"dns_whitelist", &named, Type::Object, false, true},
        {"aaa_policy", &named, Type::Object, false, true},
        {"assoc_acl", &named, Type::Object, false, false},
    };
    std::vector<const Kind*> all{&device,
                                 &profile,
                                 &interface,
                                 &remoteEndpoint,
                                 &switchport,
                                 &bssMapItem,
                                 &meshBssMapItem,
                                 &route,
                                 &arpGuard,
                                 &meshpointDevice,
                                 &globalPasspoint,
                                 &rfDomain,
                                 &server,
                                 &sensorPolicy,
                                 &scanMode,
                                 &wlan,
                                 &vlanItem,
                                 &meshpoint,
                                 &radioQos,
                                 &macAcl,
                                 &macRule,
                                 &ipAcl,
                                 &ipRule,
                                 &containToVlan,
                                 &appPolicy,
                                 &appRule,
                                 &defaultAction,
                                 &captivePortal,
                                 &passpointPolicy,
                                 &netAuthType,
                                 &plmn,
                                 &naiRealm,
                                 &eapMethod,
                                 &langName,
                                 &connectionCapability,
                                 &osuProvider,
                                 &icon,
                                 &extApp,
                                 &named};

    Tables() {
        eapAuthValues = eapAuthValuesInner;
        for (const std::string& name : eapAuthValuesCredential) eapAuthValues.push_back(name);
    }
};

// Built on first use: the EAP tables are the library's globals, initialised before main.
const Tables& tables() {
    static const Tables instance;
    return instance;
}

}  // namespace

const std::vector<TopLevel>& topLevel() {
    return tables().top;
}
const std::vector<const Kind*>& kinds() {
    return tables().all;
}
const Kind& interfaceKind() {
    return tables().interface;
}

std::vector<Type> typesOf(const Member& member, Type first) {
    std::vector<Type> out{first};
    for (Type t : {Type::Integer, Type::Boolean, Type::String, Type::Object, Type::Array}) {
        if (t != first && member.takes(t)) out.push_back(t);
    }
    return out;
}

const char* typeText(Type type) {
    switch (type) {
        case Type::Integer:
            return "an integer";
        case Type::Boolean:
            return "a boolean";
        case Type::String:
            return "a string";
        case Type::Object:
            return "an object";
        case Type::Array:
            return "an array";
    }
    return "";
}

const char* formatText(Format format) {
    switch (format) {
        case Format::None:
            return "";
        case Format::Mac:
            return "a MAC address: six hexadecimal pairs separated by \":\"";
        case Format::RuleMac:
            return "a MAC address: six hexadecimal pairs separated by \"-\"";
        case Format::Ipv4:
            return "an IPv4 address";
        case Format::IpPrefix:
            return "an IPv4 or IPv6 address, optionally with \"/\" and a prefix length";
        case Format::Channel:
            return "a channel number in decimal";
        case Format::ChannelList:
            return "channel numbers in decimal separated by commas";
        case Format::Ssid:
            return "1 to 32 octets";
        case Format::Country:
            return "an ISO 3166 country code of two letters";
        case Format::Mcc:
            return "a mobile country code of 3 digits";
        case Format::Mnc:
            return "a mobile network code of 2 or 3 digits";
        case Format::Language:
            return "an ISO 639 language code of 2 or 3 letters";
        case Format::Digits:
            return "a number in decimal digits";
    }
    return "";
}

#define JCP_OCTET "(25[0-5]|2[0-4][0-9]|1[0-9][0-9]|[0-9][0-9]?)"
#define JCP_IPV4 JCP_OCTET "(\\." JCP_OCTET "){3}"

const char* formatPattern(Format format) {
    switch (format) {
        case Format::Mac:
            return "^[0-9A-Fa-f]{2}(:[0-9A-Fa-f]{2}){5}$";
        case Format::RuleMac:
            return "^[0-9A-Fa-f]{2}(-[0-9A-Fa-f]{2}){5}$";
        case Format::Ipv4:
            return "^" JCP_IPV4 "$";
        case Format::IpPrefix:
            return "^(" JCP_IPV4 "|[0-9A-Fa-f:]*:[0-9A-Fa-f:]*)(/[0-9]{1,3})?$";
        case Format::Channel:
            // The base-10 conversion skips leading blanks and stops at the first non-digit.
            return "^ *[0-9]{1,3}$";
        case Format::ChannelList:
            return "^ *[0-9]{1,3}( *, *[0-9]{1,3})* *$";
        case Format::Country:
            return "^[A-Za-z]{2}$";
        case Format::Mcc:
            return "^[0-9]{3}$";
        case Format::Mnc:
            return "^[0-9]{2,3}$";
        case Format::Language:
            return "^[A-Za-z]{2,3}$";
        case Format::Digits:
            return "^[0-9]{1,5}$";
        case Format::None:
        case Format::Ssid:  // octets, which a pattern cannot count
            return nullptr;
    }
    return nullptr;
}

bool hasFormat(const std::string& text, Format format, std::string& because) {
    because.clear();
    if (format == Format::Ssid) {
        if (text.empty()) because = "is empty";
        if (text.size() > 32) because = "is " + std::to_string(text.size()) + " octets long";
        return because.empty();
    }
    const char* pattern = formatPattern(format);
    if (pattern == nullptr) return true;
    // No formatted value comes near this length, and the regular expression engine recurses
    // once per character: a longer text is refused before it can exhaust the stack.
    const size_t kLongest = 512;
    if (text.size() > kLongest) {
        because = "is " + std::to_string(text.size()) + " octets long, not " + formatText(format);
        return false;
    }
    // One compiled expression per format, kept for the whole run.
    static std::vector<std::regex> compiled = [] {
        std::vector<std::regex> out;
        for (int f = 0; f <= static_cast<int>(Format::Digits); ++f) {
            const char* p = formatPattern(static_cast<Format>(f));
            out.emplace_back(p == nullptr ? "" : p);
        }
        return out;
    }();
    if (std::regex_search(text, compiled[static_cast<size_t>(format)])) return true;
    because = std::string("is not ") + formatText(format);
    return false;
}

}  // namespace jcp::schema
