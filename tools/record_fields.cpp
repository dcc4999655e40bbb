// The descriptions of the AP's fixed records and their decoding into JSON.
#include "record_fields.h"

#include <algorithm>
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

// Its layout is not described on this branch; shown as raw bytes.
const RecordType kFilterRule = {"FILTER_RULE_ENTRY",
                                sizeof(FILTER_RULE_ENTRY),
                                {JCP_FIELD(FILTER_RULE_ENTRY, bytes, FieldFormat::Hex)}};

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

// Entries whose bytes are records, by entry name.
struct RecordEntry {
    const char* entryName;
    const RecordType* type;
};

const RecordEntry kRecordEntries[] = {
    {"cen_topologies", &kTopology},
    {"cen_arp_guard_acl", &kArpGuard},
};

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

// How many items of an array field are in use: its count field, within the capacity.
size_t itemsInUse(const RecordType& type, const FieldDesc& field, const uint8_t* record) {
    if (field.countField == nullptr) return field.count;
    for (const FieldDesc& other : type.fields) {
        if (std::strcmp(other.name, field.countField) != 0) continue;
        uint64_t used = readLittleEndian(record + other.offset, other.width);
        return static_cast<size_t>(std::min<uint64_t>(used, field.count));
    }
    return field.count;
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
        size_t used = itemsInUse(type, field, record);
        for (size_t i = 0; i < used; ++i)
            json_object_array_add(items, decodeItem(field, at + i * field.width));
        json_object_object_add(out, field.name, items);
    }
    return out;
}

}  // namespace

const RecordType* recordTypeOfEntry(const char* entryName) {
    if (entryName == nullptr) return nullptr;
    for (const RecordEntry& entry : kRecordEntries) {
        if (std::strcmp(entry.entryName, entryName) == 0) return entry.type;
    }
    return nullptr;
}

json_object* decodeRecords(const RecordType& type, const uint8_t* bytes, size_t size) {
    json_object* records = json_object_new_array();
    for (size_t at = 0; bytes != nullptr && type.size > 0 && at + type.size <= size;
         at += type.size)
        json_object_array_add(records, decodeRecord(type, bytes + at));
    return records;
}

}  // namespace tool
