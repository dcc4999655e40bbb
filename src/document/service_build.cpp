// SPDX-License-Identifier: MIT
// WLAN services and meshpoints of one radio, built from its BSS maps.
#include <climits>
#include <cstring>

#include "base/build_events_priv.h"
#include "base/diag.h"
#include "document/json_by_name_priv.h"
#include "document/json_cfg_plus.h"
#include "document/merge_priv.h"

namespace {

const std::list<std::string> kNone;

// A WLAN member naming a top-level object, and the table it names into; the object's
// elements are walked under the member's own name.
struct WlanReference {
    const char* member;
    const char* table;
};

const WlanReference kWlanReferences[] = {
    {"qos_policy", "wlan_qos"},   {"mac_in_acl", "mac_acl"},
    {"mac_out_acl", "mac_acl"},   {"ip_in_acl", "ip_acl"},
    {"ip_out_acl", "ip_acl"},     {"ipv6_in_acl", "ipv6_acl"},
    {"ipv6_out_acl", "ipv6_acl"}, {"captive_portal", "captive_portal"},
    {"app_policy", "app_policy"}, {"passpoint_policy", "passpoint_policy"},
};

const std::list<std::string> kWlanReferenceKeys = [] {
    std::list<std::string> keys;
    for (const WlanReference& ref : kWlanReferences) keys.emplace_back(ref.member);
    return keys;
}();

const WlanReference* findReference(const char* member) {
    for (const WlanReference& ref : kWlanReferences) {
        if (std::strcmp(ref.member, member) == 0) return &ref;
    }
    return nullptr;
}

bool isArrayWithItems(json_object* o) {
    return o != nullptr && json_object_is_type(o, json_type_array) &&
           json_object_array_length(o) > 0;
}

}  // namespace

bool jsonCfgPlus::startService(int bss, json_object* service, const radio_entry& radio,
                               vns_entry& out) const {
    // The smallest "bss" has no index below it; no slot could take it anyway.
    if (bss == INT_MIN) return false;
    out.index = bss - 1;
    out.radioId = radio.id;
    out.ssidId = 0;
    addCfgElement(out.elements, cfgElement("cen_radio_id", radio.id, "name"), true);
    int ssidId = 0;
    if (!jsonCfgObj::getJsonIntValue("cen_ssid_id", service, ssidId)) {
        jcp::diag("[ERROR] cen_ssid_id is not specified.");
        jcp::reportEvent(jcp::EventKind::dropped, "cen_ssid_id",
                         "the service has no integer \"cen_ssid_id\"; it is dropped");
        return false;
    }
    out.ssidId = ssidId;
    addCfgElement(out.elements, cfgElement("cen_ssid_id", ssidId, "ssid_id"), true);
    return true;
}

void jsonCfgPlus::buildWlanConfig(json_object* bssMap, radio_entry& radio,
                                  const std::list<cfgElement>& radioQos,
                                  json_object* testInterface) {
    trace("process VNS. radio_id=", radio.id);
    if (!isArrayWithItems(bssMap)) return;
    size_t count = json_object_array_length(bssMap);
    jcp::vnsMerger services(radio.wlans);
    for (size_t i = 0; i < count; ++i) {
        json_object* item = json_object_array_get_idx(bssMap, i);
        if (!json_object_is_type(item, json_type_object)) continue;
        int bss = 0;
        if (!jsonCfgObj::getJsonIntValue("bss", item, bss)) continue;
        json_object* wlan = m_all.resolveRelationship(item, "wlan", "wlan");
        if (wlan == nullptr) continue;

        vns_entry service;
        jcp::EventKeyScope key("wlanbssmap", i);
        if (!startService(bss, wlan, radio, service)) continue;
        cfgElementIndex elements(service.elements);
        if (testInterface != nullptr) walk(testInterface, "test_interface", kNone, kNone, elements);
        walk(wlan, "", kNone, kWlanReferenceKeys, elements);
        walkWlanReferences(wlan, radioQos, elements);
        services.merge(std::move(service));
    }
}

void jsonCfgPlus::walkWlanReferences(json_object* wlan, const std::list<cfgElement>& radioQos,
                                     cfgElementIndex& out) const {
    if (!json_object_is_type(wlan, json_type_object)) return;
    json_object_object_foreach(wlan, member, value) {
        if (!json_object_is_type(value, json_type_string)) continue;
        const WlanReference* ref = findReference(member);
        if (ref == nullptr) continue;
        json_object* target = m_all.resolveRelationship(json_object_get_string(value), ref->table);
        if (target == nullptr) continue;

        if (std::strcmp(member, "captive_portal") == 0) {
            walk(target, member, kNone, {"dns_whitelist", "aaa_policy"}, out);
            if (json_object* whitelist =
                    m_all.resolveRelationship(target, "dns_whitelist", "dns_whitelist"))
                walk(whitelist, "captive_portal/dns_whitelist", kNone, kNone, out);
            if (json_object* aaa = m_all.resolveRelationship(target, "aaa_policy", "aaa_policy"))
                walk(aaa, "captive_portal/aaa_policy", kNone, kNone, out);
            continue;
        }
        walk(target, member, kNone, kNone, out);
        if (std::strcmp(member, "qos_policy") == 0) {
            // The WLAN's own value of a name wins, so only missing names are copied in.
            for (const cfgElement& element : radioQos) {
                if (out.find(element.name) == out.list().end()) out.append(cfgElement(element));
            }
        }
    }
}

void jsonCfgPlus::buildMeshpointConfig(json_object* bssMap, radio_entry& radio,
                                       json_object* profileMeshpointDevices,
                                       json_object* deviceMeshpointDevices) {
    buildMeshpoints(bssMap, radio, jcp::jsonByName(profileMeshpointDevices, "name"),
                    jcp::jsonByName(deviceMeshpointDevices, "name"));
}

void jsonCfgPlus::buildMeshpoints(json_object* bssMap, radio_entry& radio,
                                  const jcp::jsonByName& profileDevices,
                                  const jcp::jsonByName& deviceDevices) {
    trace("process Meshpoint. radio_id=", radio.id);
    if (bssMap == nullptr || !json_object_is_type(bssMap, json_type_array)) return;
    size_t count = json_object_array_length(bssMap);
    jcp::vnsMerger services(radio.meshpoints);
    for (size_t i = 0; i < count; ++i) {
        json_object* item = json_object_array_get_idx(bssMap, i);
        if (!json_object_is_type(item, json_type_object)) continue;
        int bss = 0;
        std::string meshpointName;
        if (!jsonCfgObj::getJsonIntValue("bss", item, bss) ||
            !jsonCfgObj::getJsonStrValue("meshpoint", item, meshpointName))
            continue;
        json_object* meshpoint = m_all.resolveRelationship(meshpointName, "meshpoint");
        if (meshpoint == nullptr) continue;

        vns_entry service;
        jcp::EventKeyScope key("meshpointbssmap", i);
        if (!startService(bss, meshpoint, radio, service)) continue;
        cfgElementIndex elements(service.elements);
        walk(meshpoint, "", kNone, kNone, elements);
        // The device's entry comes second so its values override the profile's.
        for (const jcp::jsonByName* devices : {&profileDevices, &deviceDevices}) {
            if (json_object* device = devices->find(meshpointName))
                walk(device, "meshpoint_device", kNone, kNone, elements);
        }
        services.merge(std::move(service));
    }
}

void jsonCfgPlus::mergeRadioCfgElements(std::vector<radio_entry>& radios,
                                        const radio_entry& newRadio) {
    jcp::mergeRadio(radios, radio_entry(newRadio));
}

void jsonCfgPlus::mergeVnsCfgElement(std::vector<vns_entry>& services, const vns_entry& newVns) {
    jcp::vnsMerger(services).merge(vns_entry(newVns));
}
