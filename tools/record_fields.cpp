// SPDX-License-Identifier: MIT
// The descriptions of the AP's fixed records and their decoding into JSON.
#include "record_fields.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <string>

#include "convert/ap_records.h"

namespace tool {

namespace {

#define JCP_FIELD(T, f, format)                  \
    FieldDesc {                                  \
#f, offsetof(T, f), sizeof(T::f), format \
    }
#define JCP_ARRAY(T, f, format, countField, nested)                                              \
    FieldDesc {                                                                                  \
#f, offsetof(T, f), sizeof(T::f[0]), format, sizeof(T::f) / sizeof(T::f[0]), countField, \
            nested                                                                               \
    }

const RecordType kFilterRule = {
    "FILTER_RULE_ENTRY",
    sizeof(FILTER_RULE_ENTRY),
    {JCP_FIELD(FILTER_RULE_ENTRY, precedence, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_mac, FieldFormat::Mac),
     JCP_FIELD(FILTER_RULE_ENTRY, r_macmask, FieldFormat::Mac),
     JCP_FIELD(FILTER_RULE_ENTRY, r_ip6addr, FieldFormat::Ipv6),
     JCP_FIELD(FILTER_RULE_ENTRY, r_ipaddr, FieldFormat::Ipv4NetworkOrder),
     JCP_FIELD(FILTER_RULE_ENTRY, r_filter_flags, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_action_flags, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_eth_type, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_ipmasklen, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_protocol, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_tos, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_tosmask_prio, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_port_min, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_port_max, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_action_vlanid, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_app_sig_disp_id, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_app_sig_group_id, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, r_fixed_app_id, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, cos_tos, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, cos_tosmask, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, cos_prio_txq, FieldFormat::Unsigned),
     JCP_FIELD(FILTER_RULE_ENTRY, cos_rates, FieldFormat::Unsigned)}};

// A service's rule: the data path's fields at the same offsets, then the extended action word,
// shown flat so a script reads every rule field at one level.
static_assert(offsetof(apiCfgPlusFilterRule, rule) == 0, "the rule leads the service's record");
const RecordType kServiceFilterRule = {
    "apiCfgPlusFilterRule", sizeof(apiCfgPlusFilterRule), [] {
        std::vector<FieldDesc> fields = kFilterRule.fields;
        fields.push_back(
            JCP_FIELD(apiCfgPlusFilterRule, r_ext_action_flags, FieldFormat::Unsigned));
        return fields;
    }()};

const RecordType kCos = {"ap_cos_entry",
                         sizeof(ap_cos_entry),
                         {JCP_FIELD(ap_cos_entry, r_flags, FieldFormat::Unsigned),
                          JCP_FIELD(ap_cos_entry, r_tos, FieldFormat::Unsigned),
                          JCP_FIELD(ap_cos_entry, r_tosmask, FieldFormat::Unsigned),
                          JCP_FIELD(ap_cos_entry, r_prio_txq, FieldFormat::Unsigned),
                          JCP_FIELD(ap_cos_entry, r_rates, FieldFormat::Unsigned)}};

const RecordType kExtApp = {"EXT_APP_CONFIG",
                            sizeof(EXT_APP_CONFIG),
                            {JCP_FIELD(EXT_APP_CONFIG, dispName, FieldFormat::Text),
                             JCP_FIELD(EXT_APP_CONFIG, matchStr, FieldFormat::Text),
                             JCP_FIELD(EXT_APP_CONFIG, dispId, FieldFormat::Unsigned),
                             JCP_FIELD(EXT_APP_CONFIG, appId, FieldFormat::Unsigned),
                             JCP_FIELD(EXT_APP_CONFIG, groupId, FieldFormat::Unsigned)}};

const RecordType kCellNet = {"_3GPP_CELL_NET",
                             sizeof(_3GPP_CELL_NET),
                             {JCP_FIELD(_3GPP_CELL_NET, mcc, FieldFormat::Text),
                              JCP_FIELD(_3GPP_CELL_NET, mnc, FieldFormat::Text)}};

const RecordType kEapMethod = {"EAP_METHOD",
                               sizeof(EAP_METHOD),
                               {JCP_FIELD(EAP_METHOD, index, FieldFormat::Unsigned),
                                JCP_FIELD(EAP_METHOD, method, FieldFormat::Unsigned),
                                JCP_FIELD(EAP_METHOD, auth_type, FieldFormat::Unsigned),
                                JCP_FIELD(EAP_METHOD, auth_val, FieldFormat::Unsigned)}};

const RecordType kNaiRealm = {
    "NAI_REALM",
    sizeof(NAI_REALM),
    {JCP_FIELD(NAI_REALM, realm_name, FieldFormat::Text),
     JCP_FIELD(NAI_REALM, eap_count, FieldFormat::Unsigned),
     JCP_ARRAY(NAI_REALM, eap_method, FieldFormat::Records, "eap_count", &kEapMethod)}};

const RecordType kNameLang = {
    "NAME_LANG",
    sizeof(NAME_LANG),
    {JCP_FIELD(NAME_LANG, code, FieldFormat::Text), JCP_FIELD(NAME_LANG, name, FieldFormat::Text)}};

const RecordType kConnCap = {"CONN_CAP",
                             sizeof(CONN_CAP),
                             {JCP_FIELD(CONN_CAP, protocol, FieldFormat::Unsigned),
                              JCP_FIELD(CONN_CAP, port, FieldFormat::Unsigned),
                              JCP_FIELD(CONN_CAP, status, FieldFormat::Unsigned)}};

const RecordType kIcon = {"jsonHS2Icon",
                          sizeof(jsonHS2Icon),
                          {JCP_FIELD(jsonHS2Icon, width, FieldFormat::Unsigned),
                           JCP_FIELD(jsonHS2Icon, height, FieldFormat::Unsigned),
                           JCP_FIELD(jsonHS2Icon, code, FieldFormat::Text),
                           JCP_FIELD(jsonHS2Icon, icon_name, FieldFormat::Text),
                           JCP_FIELD(jsonHS2Icon, icon_data, FieldFormat::Unsigned),
                           JCP_FIELD(jsonHS2Icon, icon_data_len, FieldFormat::Unsigned)}};

const RecordType kOsuProvider = {
    "OSU_SP",
    sizeof(OSU_SP),
    {JCP_FIELD(OSU_SP, name_count, FieldFormat::Unsigned),
     JCP_FIELD(OSU_SP, description_count, FieldFormat::Unsigned),
     JCP_FIELD(OSU_SP, icon_count, FieldFormat::Unsigned),
     JCP_FIELD(OSU_SP, osu_method_count, FieldFormat::Unsigned),
     JCP_ARRAY(OSU_SP, name_lang, FieldFormat::Records, "name_count", &kNameLang),
     JCP_ARRAY(OSU_SP, description_lang, FieldFormat::Records, "description_count", &kNameLang),
     JCP_ARRAY(OSU_SP, icons, FieldFormat::Records, "icon_count", &kIcon),
     JCP_FIELD(OSU_SP, osu_nai, FieldFormat::Text),
     JCP_FIELD(OSU_SP, osu_server_uri, FieldFormat::Text),
     JCP_ARRAY(OSU_SP, osu_method_list, FieldFormat::Unsigned, "osu_method_count", nullptr)}};

const RecordType kOsuProviderList = {"OSU_SP_LIST",
                                     sizeof(OSU_SP_LIST),
                                     {JCP_FIELD(OSU_SP_LIST, count, FieldFormat::Unsigned),
                                      JCP_FIELD(OSU_SP_LIST, icon_bytes, FieldFormat::Unsigned)}};

const RecordType kGreEndPoint = {"GRE_END_POINT",
                                 sizeof(GRE_END_POINT),
                                 {JCP_FIELD(GRE_END_POINT, addr, FieldFormat::Ipv4HostOrder),
                                  JCP_FIELD(GRE_END_POINT, secure, FieldFormat::Bool),
                                  JCP_FIELD(GRE_END_POINT, ikev2_psk, FieldFormat::Text)}};

const RecordType kTopology = {
    "TOPOLOGY_ENTRY",
    sizeof(TOPOLOGY_ENTRY),
    {JCP_FIELD(TOPOLOGY_ENTRY, internal_key, FieldFormat::Signed),
     JCP_FIELD(TOPOLOGY_ENTRY, vlan, FieldFormat::Unsigned),
     JCP_FIELD(TOPOLOGY_ENTRY, vxlan_vni, FieldFormat::Unsigned),
     JCP_FIELD(TOPOLOGY_ENTRY, remote_endpoint_vxlan_ipaddress, FieldFormat::Ipv4HostOrder),
     JCP_FIELD(TOPOLOGY_ENTRY, remote_endpoint_vxlan_int_mgmt_ip, FieldFormat::Ipv4HostOrder),
     JCP_FIELD(TOPOLOGY_ENTRY, remote_endpoint_vxlan_int_mgmt_vni, FieldFormat::Unsigned),
     JCP_FIELD(TOPOLOGY_ENTRY, type, FieldFormat::Unsigned),
     JCP_FIELD(TOPOLOGY_ENTRY, tagged, FieldFormat::Bool),
     JCP_FIELD(TOPOLOGY_ENTRY, proxy_arp, FieldFormat::Bool),
     JCP_FIELD(TOPOLOGY_ENTRY, multicast_acl_enable, FieldFormat::Bool),
     JCP_FIELD(TOPOLOGY_ENTRY, remote_endpoint_count, FieldFormat::Unsigned),
     JCP_ARRAY(TOPOLOGY_ENTRY, remote_endpoint, FieldFormat::Records, "remote_endpoint_count",
               &kGreEndPoint),
     JCP_FIELD(TOPOLOGY_ENTRY, name, FieldFormat::Text),
     JCP_FIELD(TOPOLOGY_ENTRY, multicast_acl_count, FieldFormat::Unsigned),
     JCP_ARRAY(TOPOLOGY_ENTRY, multicast_acl, FieldFormat::Records, "multicast_acl_count",
               &kFilterRule)}};

const RecordType kArpGuard = {
    "ARP_GUARD_ACL",
    sizeof(ARP_GUARD_ACL),
    {JCP_FIELD(ARP_GUARD_ACL, count, FieldFormat::Unsigned),
     JCP_ARRAY(ARP_GUARD_ACL, addr, FieldFormat::Ipv4NetworkOrder, "count", nullptr)}};

#undef JCP_FIELD
#undef JCP_ARRAY

// Entries whose bytes are records, by entry name. A value with a head record starts with it;
// the head's count field says how many records follow.
struct RecordEntry {
    const char* entryName;
    const RecordType* type;
    const RecordType* head;
    const char* headCount;
};

const RecordEntry kRecordEntries[] = {
    {"cen_topologies", &kTopology, nullptr, nullptr},
    {"cen_arp_guard_acl", &kArpGuard, nullptr, nullptr},
    {"cen_filter_rules", &kServiceFilterRule, nullptr, nullptr},
    {"cen_default_cos", &kCos, nullptr, nullptr},
    {"cen_ext_applications", &kExtApp, nullptr, nullptr},
    {"passpoint_policy/cen_plmnid", &kCellNet, nullptr, nullptr},
    {"passpoint_policy/cen_nai_realm", &kNaiRealm, nullptr, nullptr},
    {"passpoint_policy/cen_venue_name_lang", &kNameLang, nullptr, nullptr},
    {"passpoint_policy/cen_operator_name_lang", &kNameLang, nullptr, nullptr},
    {"passpoint_policy/cen_cc_variable", &kConnCap, nullptr, nullptr},
    {"passpoint_policy/cen_osu_provider", &kOsuProvider, &kOsuProviderList, "count"},
};

const RecordEntry* findEntry(const char* entryName) {
    if (entryName == nullptr) return nullptr;
    for (const RecordEntry& entry : kRecordEntries) {
        if (std::strcmp(entry.entryName, entryName) == 0) return &entry;
    }
    return nullptr;
}

// Little-endian, whatever the host's byte order: the records are the AP's.
uint64_t readLittleEndian(const uint8_t* at, size_t width) {
    uint64_t value = 0;
    for (size_t i = std::min<size_t>(width, 8); i > 0; --i) value = (value << 8) | at[i - 1];
    return value;
}

std::string dotted(uint8_t a, uint8_t b, uint8_t c, uint8_t d) {
    return std::to_string(a) + "." + std::to_string(b) + "." + std::to_string(c) + "." +
           std::to_string(d);
}

std::string hexBytes(const uint8_t* at, size_t width) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string out;
    for (size_t i = 0; i < width; ++i) {
        out += kHex[at[i] >> 4];
        out += kHex[at[i] & 0x0F];
    }
    return out;
}

json_object* decodeRecord(const RecordType& type, const uint8_t* record);

json_object* decodeItem(const FieldDesc& field, const uint8_t* at) {
    uint64_t raw = 0;
    switch (field.format) {
        case FieldFormat::Signed: {
            raw = readLittleEndian(at, field.width);
            // Sign-extend from the field's width.
            unsigned shift = 64 - 8 * static_cast<unsigned>(std::min<size_t>(field.width, 8));
            int64_t value = static_cast<int64_t>(raw << shift) >> shift;
            return json_object_new_int64(value);
        }
        case FieldFormat::Unsigned:
            return json_object_new_int64(static_cast<int64_t>(readLittleEndian(at, field.width)));
        case FieldFormat::Bool:
            return json_object_new_boolean(readLittleEndian(at, field.width) != 0);
        case FieldFormat::Ipv4HostOrder: {
            uint32_t v = static_cast<uint32_t>(readLittleEndian(at, 4));
            return json_object_new_string(
                dotted(uint8_t(v >> 24), uint8_t(v >> 16), uint8_t(v >> 8), uint8_t(v)).c_str());
        }
        case FieldFormat::Ipv4NetworkOrder:
            return json_object_new_string(dotted(at[0], at[1], at[2], at[3]).c_str());
        case FieldFormat::Ipv6: {
            std::string text;
            for (size_t i = 0; i + 1 < field.width; i += 2)
                text += (i == 0 ? "" : ":") + hexBytes(at + i, 2);
            // Written in lower case, as addresses are (RFC 5952), every group in full.
            for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
            return json_object_new_string(text.c_str());
        }
        case FieldFormat::Mac: {
            std::string text;
            for (size_t i = 0; i < field.width; ++i)
                text += (i == 0 ? "" : ":") + hexBytes(at + i, 1);
            return json_object_new_string(text.c_str());
        }
        case FieldFormat::Text:
            return json_object_new_string_len(
                reinterpret_cast<const char*>(at),
                static_cast<int>(strnlen(reinterpret_cast<const char*>(at), field.width)));
        case FieldFormat::Hex:
            return json_object_new_string(hexBytes(at, field.width).c_str());
        case FieldFormat::Records:
            return field.nested == nullptr ? nullptr : decodeRecord(*field.nested, at);
    }
    return nullptr;
}

// The value of the record's count field, within capacity; capacity when there is none.
size_t itemsInUse(const RecordType& type, const char* countField, const uint8_t* record,
                  size_t capacity) {
    if (countField == nullptr) return capacity;
    for (const FieldDesc& other : type.fields) {
        if (std::strcmp(other.name, countField) != 0) continue;
        uint64_t used = readLittleEndian(record + other.offset, other.width);
        return static_cast<size_t>(std::min<uint64_t>(used, capacity));
    }
    return capacity;
}

json_object* decodeRecord(const RecordType& type, const uint8_t* record) {
    json_object* out = json_object_new_object();
    for (const FieldDesc& field : type.fields) {
        const uint8_t* at = record + field.offset;
        if (field.count == 1) {
            json_object_object_add(out, field.name, decodeItem(field, at));
            continue;
        }
        json_object* items = json_object_new_array();
        size_t used = itemsInUse(type, field.countField, record, field.count);
        for (size_t i = 0; i < used; ++i)
            json_object_array_add(items, decodeItem(field, at + i * field.width));
        json_object_object_add(out, field.name, items);
    }
    return out;
}

// At most limit whole records of the bytes, as an array.
json_object* decodeRecordArray(const RecordType& type, const uint8_t* bytes, size_t size,
                               size_t limit) {
    json_object* records = json_object_new_array();
    for (size_t at = 0; limit > 0 && at + type.size <= size; at += type.size, --limit)
        json_object_array_add(records, decodeRecord(type, bytes + at));
    return records;
}

}  // namespace

const char* recordNameOfEntry(const char* entryName) {
    const RecordEntry* entry = findEntry(entryName);
    if (entry == nullptr) return nullptr;
    return entry->head != nullptr ? entry->head->name : entry->type->name;
}

json_object* decodeEntryRecords(const char* entryName, const uint8_t* bytes, size_t size) {
    const RecordEntry* entry = findEntry(entryName);
    if (entry == nullptr) return nullptr;
    if (bytes == nullptr) size = 0;
    if (entry->head == nullptr) return decodeRecordArray(*entry->type, bytes, size, SIZE_MAX);
    const RecordType& head = *entry->head;
    if (size < head.size) return json_object_new_object();
    json_object* out = decodeRecord(head, bytes);
    size_t count = itemsInUse(head, entry->headCount, bytes, SIZE_MAX);
    json_object_object_add(
        out, "records",
        decodeRecordArray(*entry->type, bytes + head.size, size - head.size, count));
    size_t available = (size - head.size) / entry->type->size;
    size_t end = head.size + std::min(count, available) * entry->type->size;
    json_object_object_add(out, "data",
                           json_object_new_string(hexBytes(bytes + end, size - end).c_str()));
    return out;
}

}  // namespace tool
