// SPDX-License-Identifier: MIT
// lint: values of the wrong JSON type where the build or a converter reads a typed value. The
// build and the converters skip such a value silently, so each one is an error.
#include <cstdint>
#include <cstring>

#include "lint_context.h"

namespace lint {

namespace {

enum class Expect { Int, Bool, String, Object, Array, ObjectArray, StringList, IntList };

// A member read with a JSON type. The path is slash-separated; "[]" after a key means every
// item of that array.
struct TypedMember {
    const char* path;
    Expect expect;
};

const TypedMember kRootMembers[] = {{"config-version", Expect::String},
                                    {"request-id", Expect::Int},
                                    {"cen_time", Expect::Int},
                                    {"ip", Expect::String},
                                    {"port", Expect::Int},
                                    {"key", Expect::String}};

// The device's and every profile's own members.
const TypedMember kDeviceMembers[] = {{"interface", Expect::Array},
                                      {"hostname", Expect::String},
                                      {"route", Expect::ObjectArray},
                                      {"arp_guard_acl", Expect::ObjectArray},
                                      {"arp_guard_acl[]/ip", Expect::String},
                                      {"cen_failover_home_ip_addr", Expect::StringList},
                                      {"cen_failover_foreign_ip_addr", Expect::StringList},
                                      {"meshpoint_device", Expect::ObjectArray},
                                      {"meshpoint_device[]/name", Expect::String},
                                      {"meshpoint_device[]/is_root_dev", Expect::String},
                                      {"meshpoint_device[]/monitor_pri_port_link", Expect::Bool},
                                      {"meshpoint_device[]/hysteresis_snr_min", Expect::Int}};

const TypedMember kTopologyMembers[] = {
    {"internal_key", Expect::Int},
    {"vlan", Expect::Int},
    {"tenant_vlan", Expect::Int},
    {"vxlan_vni", Expect::Int},
    {"remote_endpoint_vxlan_internal_management_vni", Expect::Int},
    {"remote_endpoint_vxlan_ipaddress", Expect::String},
    {"remote_endpoint_vxlan_internal_management_IP", Expect::String},
    {"proxy_arp", Expect::Bool},
    {"multicast_acl_enable", Expect::Bool},
    {"remote_endpoint", Expect::ObjectArray},
    {"remote_endpoint[]/addr", Expect::String},
    {"remote_endpoint[]/secure", Expect::Bool},
    {"remote_endpoint[]/ikev2_psk", Expect::String}};

const TypedMember kEthernetMembers[] = {{"static_channel_group", Expect::Int},
                                        {"switchport", Expect::Object},
                                        {"switchport/native_vlan", Expect::Int},
                                        {"switchport/native_vlan_tagged", Expect::Bool}};

const TypedMember kRadioMembers[] = {{"rf_mode", Expect::String},
                                     {"dtim", Expect::IntList},
                                     {"fallback_channels", Expect::StringList},
                                     {"probe_response_rssi_threshold", Expect::Int},
                                     {"meshpointbssmap", Expect::Array},
                                     {"meshpointbssmap[]/bss", Expect::Int}};

// Every interface that carries WLANs: radios, the IoT radio and ports.
const TypedMember kWlanCarrierMembers[] = {{"wlanbssmap", Expect::Array},
                                           {"wlanbssmap[]/bss", Expect::Int}};

const TypedMember kBluetoothMembers[] = {{"shutdown", Expect::Bool}};

const TypedMember kWlanMembers[] = {{"ssid", Expect::String},
                                    {"captive_portal_enforcement", Expect::String},
                                    {"vlans", Expect::ObjectArray},
                                    {"vlans[]/vlan", Expect::Int},
                                    {"vlans[]/cen_tagged", Expect::Bool},
                                    {"vlans[]/cen_bridged", Expect::Bool}};

const TypedMember kMeshpointMembers[] = {{"meshid", Expect::String}, {"is_root", Expect::Bool}};

const TypedMember kRfDomainMembers[] = {{"sensor_server", Expect::ObjectArray},
                                        {"sensor_server[]/host", Expect::String},
                                        {"sensor_server[]/port", Expect::Int},
                                        {"location_server", Expect::ObjectArray}};

const TypedMember kSensorPolicyMembers[] = {{"sensor_scanmode", Expect::Object},
                                            {"sensor_scanmode/scan_mode", Expect::String},
                                            {"sensor_scanmode/lock_freq", Expect::Int}};

const char* expectedText(Expect expect) {
    switch (expect) {
        case Expect::Int:
            return "an integer";
        case Expect::Bool:
            return "a boolean";
        case Expect::String:
            return "a string";
        case Expect::Object:
            return "an object";
        case Expect::Array:
            return "an array";
        case Expect::ObjectArray:
            return "an array of objects";
        case Expect::StringList:
            return "an array of strings";
        case Expect::IntList:
            return "an array of integers";
    }
    return "";
}

bool allItems(json_object* array, json_type type) {
    size_t count = json_object_array_length(array);
    for (size_t i = 0; i < count; ++i) {
        if (!isType(json_object_array_get_idx(array, i), type)) return false;
    }
    return true;
}

bool matches(json_object* value, Expect expect) {
    switch (expect) {
        case Expect::Int:
            return isType(value, json_type_int);
        case Expect::Bool:
            return isType(value, json_type_boolean);
        case Expect::String:
            return isType(value, json_type_string);
        case Expect::Object:
            return isType(value, json_type_object);
        case Expect::Array:
            return isType(value, json_type_array);
        case Expect::ObjectArray:
            return isType(value, json_type_array) && allItems(value, json_type_object);
        case Expect::StringList:
            return isType(value, json_type_array) && allItems(value, json_type_string);
        case Expect::IntList:
            return isType(value, json_type_array) && allItems(value, json_type_int);
    }
    return false;
}

void checkValue(json_object* value, const std::string& at, Expect expect, Findings& out) {
    if (!matches(value, expect)) {
        std::string what = describeType(value);
        if (isType(value, json_type_array)) what = "an array with items of another type";
        out.error(at, "is " + what + ", but is read as " + expectedText(expect) +
                          "; the value is ignored");
        return;
    }
    if (expect == Expect::Int) {
        int64_t number = json_object_get_int64(value);
        if (number < INT32_MIN || number > INT32_MAX) {
            out.warning(at, "does not fit in 32 bits; the AP reads " +
                                std::to_string(json_object_get_int(value)));
        }
    }
}

// Follows path from obj; at each "key[]" step every item of that array is followed.
void checkPath(json_object* obj, const std::string& at, const char* path, Expect expect,
               Findings& out) {
    const char* slash = std::strchr(path, '/');
    std::string step = slash == nullptr ? path : std::string(path, slash);
    bool eachItem = step.size() > 2 && step.compare(step.size() - 2, 2, "[]") == 0;
    if (eachItem) step.resize(step.size() - 2);
    json_object* value = nullptr;
    if (!isType(obj, json_type_object) || !json_object_object_get_ex(obj, step.c_str(), &value))
        return;
    std::string valueAt = pointerTo(at, step);
    if (slash == nullptr) {
        checkValue(value, valueAt, expect, out);
    } else if (eachItem) {
        if (!isType(value, json_type_array)) return;  // its own entry reports the array
        size_t count = json_object_array_length(value);
        for (size_t i = 0; i < count; ++i)
            checkPath(json_object_array_get_idx(value, i), pointerTo(valueAt, i), slash + 1, expect,
                      out);
    } else {
        checkPath(value, valueAt, slash + 1, expect, out);
    }
}

template <size_t N>
void checkMembers(json_object* obj, const std::string& at, const TypedMember (&members)[N],
                  Findings& out) {
    for (const TypedMember& member : members) checkPath(obj, at, member.path, member.expect, out);
}

template <size_t N>
void checkTable(const Context& ctx, const char* table, const TypedMember (&members)[N],
                Findings& out) {
    forEachItem(ctx, table, [&](json_object* item, const std::string& at) {
        checkMembers(item, at, members, out);
    });
}

void checkInterfaceList(const Context::InterfaceList& list, Findings& out) {
    if (!isType(list.list, json_type_array)) return;
    size_t count = json_object_array_length(list.list);
    for (size_t i = 0; i < count; ++i) {
        json_object* item = json_object_array_get_idx(list.list, i);
        std::string at = pointerTo(list.pointer, i);
        std::string type;
        jsonCfgObj::getJsonStrValue("type", item, type);
        if (type == "vlan" || type == "marlin" || type == "virtual_network" || type == "gre")
            checkMembers(item, at, kTopologyMembers, out);
        switch (interfaceRole(item)) {
            case InterfaceRole::EthernetPort:
                checkMembers(item, at, kEthernetMembers, out);
                break;
            case InterfaceRole::Radio:
                checkMembers(item, at, kRadioMembers, out);
                checkMembers(item, at, kWlanCarrierMembers, out);
                break;
            case InterfaceRole::Bluetooth:
                checkMembers(item, at, kBluetoothMembers, out);
                checkMembers(item, at, kWlanCarrierMembers, out);
                break;
            case InterfaceRole::Wired:
            case InterfaceRole::Bridge:
                checkMembers(item, at, kWlanCarrierMembers, out);
                break;
            default:
                break;
        }
    }
}

}  // namespace

void checkTypes(const Context& ctx, Findings& out) {
    checkMembers(ctx.root(), "", kRootMembers, out);
    if (isType(ctx.device(), json_type_object))
        checkMembers(ctx.device(), ctx.devicePointer(), kDeviceMembers, out);
    checkTable(ctx, "profile", kDeviceMembers, out);
    for (const Context::InterfaceList& list : ctx.interfaceLists()) checkInterfaceList(list, out);
    checkTable(ctx, "wlan", kWlanMembers, out);
    checkTable(ctx, "meshpoint", kMeshpointMembers, out);
    checkTable(ctx, "rf_domain", kRfDomainMembers, out);
    checkTable(ctx, "sensor_policy", kSensorPolicyMembers, out);
}

}  // namespace lint
