// SPDX-License-Identifier: MIT
// The interface build: the device's or profile's "interface" array into global interface
// elements and one radio entry per radio or port.
#include <climits>

#include "base/build_events_priv.h"
#include "base/diag.h"
#include "document/json_by_name_priv.h"
#include "document/json_cfg_plus.h"
#include "document/merge_priv.h"

namespace {

const std::list<std::string> kNone;

// Keys of a radio object that are not radio settings of their own.
const std::list<std::string> kRadioWalkExcluded = {
    "placement",  "qos_policy",     "wlanbssmap",        "meshpointbssmap",
    "type",       "cen_forwarder",  "aeroscout_forward", "aeroscout_mac",
    "ekahau_mac", "ekahau_forward", "centrak_mac",       "centrak_forward"};

// The radio's placement and location-forwarder settings are kept for the location
// converters under "cen_radio/", marking them as converter input rather than radio settings.
const std::list<std::string> kRadioLocationKeys = {
    "placement",  "cen_forwarder",  "aeroscout_forward", "aeroscout_mac",
    "ekahau_mac", "ekahau_forward", "centrak_mac",       "centrak_forward"};

// Keys of a port object that describe the port itself rather than its settings.
const std::list<std::string> kPortWalkExcluded = {"name", "type", "wlanbssmap"};

// Radio ids: "radioN" is N and wired "pN" is N + 3, both below the reserved ids, so together
// they reach every id from 0 up to there. The IoT radio and the bridge ports take the reserved
// ids, which no radio or wired port name reaches, so neither merges into a Wi-Fi radio, a wired
// port or each other, and every entry's radio index (id - 1) stays at -1 or above.
constexpr long long kMaxRadioNumber = jsonCfgPlus::kFirstReservedRadioId - 1;
constexpr long long kMaxWiredNumber = jsonCfgPlus::kFirstReservedRadioId - 1 - 3;
// Port 0 would be id 3, a wireless radio's.
constexpr long long kMinWiredNumber = 1;
// The largest N keeps brN's id an int.
constexpr long long kMaxBridgeNumber =
    static_cast<long long>(INT_MAX) - jsonCfgPlus::kFirstBridgeRadioId;

bool isVirtualInterfaceType(const std::string& type) {
    return type == "vlan" || type == "marlin" || type == "virtual_network" || type == "gre";
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// A name made of prefix and at least one decimal digit, nothing else.
bool isPrefixedNumber(const std::string& name, const std::string& prefix) {
    if (name.size() <= prefix.size() || name.compare(0, prefix.size(), prefix) != 0) return false;
    for (size_t i = prefix.size(); i < name.size(); ++i) {
        if (!isDigit(name[i])) return false;
    }
    return true;
}

enum class NumberRead { kNoDigits, kTooLarge, kRead };

// The decimal number at text[from] onwards, however many leading zeros it has. kTooLarge when
// its value passes INT_MAX, kNoDigits when no digit stands there.
NumberRead leadingNumber(const std::string& text, size_t from, long long& value) {
    value = 0;
    size_t i = from;
    for (; i < text.size() && isDigit(text[i]); ++i) {
        value = value * 10 + (text[i] - '0');
        if (value > INT_MAX) return NumberRead::kTooLarge;
    }
    return i == from ? NumberRead::kNoDigits : NumberRead::kRead;
}

jsonCfgPlus::RadioId noId(jsonCfgPlus::RadioId::Outcome outcome) {
    return {outcome, 0};
}

jsonCfgPlus::RadioId withId(long long value) {
    return {jsonCfgPlus::RadioId::Outcome::kId, static_cast<int>(value)};
}

// The build's warning for an interface skipped for its name; false when it has an id.
bool skippedForName(const jsonCfgPlus::RadioId& radioId, const std::string& name) {
    using Outcome = jsonCfgPlus::RadioId::Outcome;
    switch (radioId.outcome) {
        case Outcome::kId:
            return false;
        case Outcome::kNoNumber:
            jcp::diag("[WARN] radio without a radio number in its name skipped: ", name);
            return true;
        case Outcome::kTooLarge:
            jcp::diag("[WARN] radio number too large, radio skipped: ", name);
            return true;
        case Outcome::kOutOfRange:
            jcp::diag("[WARN] port number out of range, port skipped: ", name);
            return true;
    }
    return true;
}

std::string stringMember(json_object* obj, const char* key) {
    std::string value;
    jsonCfgObj::getJsonStrValue(key, obj, value);
    return value;
}

}  // namespace

// The radios are merged together at the end, one pass instead of one search per radio; the
// meshpoint-device lists are indexed once for all radios.
struct jsonCfgPlus::InterfaceBuild {
    cfgElementIndex& global;
    jcp::jsonByName profileMeshpointDevices;
    jcp::jsonByName deviceMeshpointDevices;
    std::vector<radio_entry> radios;
};

// Checked character by character: a matcher that recurses per character would overflow the
// stack on a name of many thousand digits.
bool jsonCfgPlus::isWiredPortInterface(const std::string& name) {
    return isPrefixedNumber(name, m_wired_port_prefix);
}

bool jsonCfgPlus::isBridgePortInterface(const std::string& name) {
    return isPrefixedNumber(name, m_bridge_port_prefix);
}

jsonCfgPlus::RadioId jsonCfgPlus::radioIdOf(RadioIdKind kind, const std::string& name) {
    constexpr size_t kRadioPrefixLength = 5;  // "radio"
    using Outcome = RadioId::Outcome;
    long long number = 0;
    NumberRead read = NumberRead::kNoDigits;
    switch (kind) {
        case RadioIdKind::kRadio:
            read = leadingNumber(name, kRadioPrefixLength, number);
            if (read == NumberRead::kNoDigits) return noId(Outcome::kNoNumber);
            if (read == NumberRead::kTooLarge || number > kMaxRadioNumber)
                return noId(Outcome::kTooLarge);
            return withId(number);
        case RadioIdKind::kIotRadio:
            return withId(kIotRadioId);
        case RadioIdKind::kWiredPort:
            read = leadingNumber(name, m_wired_port_prefix.size(), number);
            if (read != NumberRead::kRead || number < kMinWiredNumber || number > kMaxWiredNumber)
                return noId(Outcome::kOutOfRange);
            return withId(number + getMaxRadio());
        case RadioIdKind::kBridgePort:
            read = leadingNumber(name, m_bridge_port_prefix.size(), number);
            if (read != NumberRead::kRead || number > kMaxBridgeNumber)
                return noId(Outcome::kOutOfRange);
            return withId(kFirstBridgeRadioId + number);
    }
    return noId(Outcome::kNoNumber);
}

void jsonCfgPlus::buildInterfaceConfig(json_object* interfaces,
                                       json_object* profileMeshpointDevices,
                                       json_object* deviceMeshpointDevices) {
    cfgElementIndex global(m_global);
    buildInterfaceConfig(interfaces, profileMeshpointDevices, deviceMeshpointDevices, global);
}

void jsonCfgPlus::buildInterfaceConfig(json_object* interfaces,
                                       json_object* profileMeshpointDevices,
                                       json_object* deviceMeshpointDevices,
                                       cfgElementIndex& global) {
    trace("process interface.");
    if (interfaces == nullptr || !json_object_is_type(interfaces, json_type_array)) return;
    size_t count = json_object_array_length(interfaces);

    cfgObjArray virtualInterfaces;
    for (size_t i = 0; i < count; ++i) {
        json_object* item = json_object_array_get_idx(interfaces, i);
        std::string name;
        if (!jsonCfgObj::getJsonStrValue("name", item, name)) continue;
        if (!isVirtualInterfaceType(stringMember(item, "type"))) continue;
        virtualInterfaces.emplace_back("", std::list<cfgElement>(), "");
        walk(item, "", kNone, kNone, virtualInterfaces.back().elements);
    }
    if (!virtualInterfaces.empty()) {
        // Replaces the profile's list when the device brings its own.
        global.add(cfgElement("cen_if_vlans", std::move(virtualInterfaces), ""), true);
    }

    for (size_t i = 0; i < count; ++i) {
        json_object* item = json_object_array_get_idx(interfaces, i);
        std::string name;
        if (!jsonCfgObj::getJsonStrValue("name", item, name)) continue;
        if (stringMember(item, "type") != "ethernet") continue;
        if (name == "port-channel1") {
            // Its switchport carries the native VLAN: "ethernet_if/switchport/native_vlan" and
            // "ethernet_if/switchport/native_vlan_tagged", in the kinds the document gives.
            walk(item, "ethernet_if", kNone, kNone, global);
        } else if (name == "ge1") {
            // A ge1 in a static channel group takes its switchport from port-channel1, so its
            // own switchport must not override the channel's native VLAN.
            int channelGroup = 0;
            jsonCfgObj::getJsonIntValue("static_channel_group", item, channelGroup);
            std::list<std::string> excluded;
            if (channelGroup > 0) excluded.push_back("switchport");
            walk(item, "ethernet_if", kNone, excluded, global);
        }
    }

    InterfaceBuild build{global,
                         jcp::jsonByName(profileMeshpointDevices, "name"),
                         jcp::jsonByName(deviceMeshpointDevices, "name"),
                         {}};
    for (size_t i = 0; i < count; ++i) {
        json_object* item = json_object_array_get_idx(interfaces, i);
        std::string name;
        if (!jsonCfgObj::getJsonStrValue("name", item, name)) continue;
        std::string type = stringMember(item, "type");
        // The IoT radio is known by its name alone: declared as a radio it is still no Wi-Fi
        // radio, and has no number to read.
        if (name == "bluetooth1") {
            buildBluetoothInterface(item, build);
        } else if (type == "radio") {
            buildRadioInterface(item, name, build);
        } else if (type == "uwb") {
            trace("process UWB: ", name);
            walk(item, "uwb", kNone, kNone, global);
        } else if (isWiredPortInterface(name)) {
            buildWiredPortInterface(item, name, build);
        } else if (isBridgePortInterface(name)) {
            buildBridgePortInterface(item, name, build);
        }
    }
    jcp::mergeRadios(m_radios, std::move(build.radios));
}

void jsonCfgPlus::buildRadioInterface(json_object* radioJson, const std::string& name,
                                      InterfaceBuild& build) {
    RadioId radioId = radioIdOf(RadioIdKind::kRadio, name);
    if (skippedForName(radioId, name)) return;
    const int id = radioId.id;
    trace("process Radio: ", id);

    build.radios.emplace_back();
    radio_entry& radio = build.radios.back();
    radio.id = id;
    radio.name = name;
    jcp::EventPlaceScope place(radio, radioJson);
    cfgElementIndex elements(radio.elements);
    elements.add(cfgElement("cen_radio_id", id, "name"), true);
    walk(radioJson, "", kNone, kRadioWalkExcluded, elements);
    walk(radioJson, "cen_radio", kRadioLocationKeys, kNone, elements);

    std::list<cfgElement> radioQos;
    if (json_object* qos = m_all.resolveRelationship(radioJson, "qos_policy", "radio_qos"))
        walk(qos, "qos_policy", m_radio_qos_vns_names, kNone, radioQos);

    buildWlanConfig(jsonCfgObj::getJsonObject("wlanbssmap", radioJson), radio, radioQos, nullptr);
    buildMeshpoints(jsonCfgObj::getJsonObject("meshpointbssmap", radioJson), radio,
                    build.profileMeshpointDevices, build.deviceMeshpointDevices);
}

void jsonCfgPlus::buildBluetoothInterface(json_object* bluetooth, InterfaceBuild& build) {
    trace("process Bluetooth radio-id: ", kIotRadioId);
    walk(bluetooth, "iot", kNone, kNone, build.global);

    build.radios.emplace_back();
    radio_entry& radio = build.radios.back();
    radio.id = kIotRadioId;
    radio.name = "bluetooth1";
    jcp::EventPlaceScope place(radio, bluetooth);
    bool shutdown = false;
    jsonCfgObj::getJsonBoolValue("shutdown", bluetooth, shutdown);
    addCfgElement(radio.elements, cfgElement("cen_radio_id", kIotRadioId, "name"), true);
    addCfgElement(radio.elements, cfgElement("shutdown", shutdown, "shutdown"), true);
    buildWlanConfig(jsonCfgObj::getJsonObject("wlanbssmap", bluetooth), radio, {}, nullptr);
}

void jsonCfgPlus::buildWiredPortInterface(json_object* port, const std::string& name,
                                          InterfaceBuild& build) {
    RadioId radioId = radioIdOf(RadioIdKind::kWiredPort, name);
    if (skippedForName(radioId, name)) return;
    buildPortRadio(port, name, radioId.id, build);
}

void jsonCfgPlus::buildBridgePortInterface(json_object* port, const std::string& name,
                                           InterfaceBuild& build) {
    RadioId radioId = radioIdOf(RadioIdKind::kBridgePort, name);
    if (skippedForName(radioId, name)) return;
    buildPortRadio(port, name, radioId.id, build);
}

void jsonCfgPlus::buildPortRadio(json_object* port, const std::string& name, int id,
                                 InterfaceBuild& build) {
    build.radios.emplace_back();
    radio_entry& radio = build.radios.back();
    radio.id = id;
    radio.name = name;
    jcp::EventPlaceScope place(radio, port);
    cfgElementIndex elements(radio.elements);
    elements.add(cfgElement("cen_radio_id", radio.id, "name"), true);
    walk(port, "", kNone, kPortWalkExcluded, elements);
    buildWlanConfig(jsonCfgObj::getJsonObject("wlanbssmap", port), radio, {}, nullptr);
}
