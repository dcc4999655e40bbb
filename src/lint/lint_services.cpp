// SPDX-License-Identifier: MIT
// lint: interface items the build ignores, radio and port names it skips or numbers onto an id
// that is not a radio's own, and the WLAN services and meshpoints the build drops (a BSS
// outside the eight slots, two services in one slot) or merges.
#include <climits>
#include <map>

#include "document/json_cfg_plus.h"
#include "lint/lint_context_priv.h"

namespace jcp::lint {

namespace {

constexpr int kWlanSlots = 8;
std::string stringMember(json_object* obj, const char* key) {
    std::string value;
    jsonCfgObj::getJsonStrValue(key, obj, value);
    return value;
}

bool isVirtualType(const std::string& type) {
    return type == "vlan" || type == "marlin" || type == "virtual_network" || type == "gre";
}

// One WLAN service or meshpoint as the build keeps it.
struct Service {
    int index;
    int ssidId;
    std::string at;  // its BSS map item
    std::string label;
};

struct RadioBuild {
    std::string at;  // the interface item that first built the radio
    std::string name;
    std::vector<Service> wlans;
    std::vector<Service> meshpoints;
};

// The service merge: one service per SSID id on a radio; the first keeps its slot.
void mergeService(std::vector<Service>& into, const Service& service, Findings& out) {
    for (const Service& existing : into) {
        if (existing.ssidId != service.ssidId) continue;
        if (existing.index != service.index) {
            out.warning(pointerTo(service.at, "bss"),
                        service.label + " has the same cen_ssid_id as " + existing.at +
                            "; it is merged into that service and this bss is ignored");
        }
        return;
    }
    into.push_back(service);
}

// The services a BSS map yields, as the WLAN and meshpoint builds read it.
void buildServices(const Context& ctx, json_object* map, const std::string& mapAt,
                   const char* refKey, const char* table, std::vector<Service>& into,
                   Findings& out) {
    if (!isType(map, json_type_array)) return;
    size_t count = json_object_array_length(map);
    for (size_t i = 0; i < count; ++i) {
        json_object* item = json_object_array_get_idx(map, i);
        int bss = 0;
        std::string name;
        // The smallest "bss" has no slot index below it; the build skips it.
        if (!jsonCfgObj::getJsonIntValue("bss", item, bss) || bss == INT_MIN ||
            !jsonCfgObj::getJsonStrValue(refKey, item, name))
            continue;
        json_object* target = ctx.resolve(table, name);
        int ssidId = 0;
        if (!jsonCfgObj::getJsonIntValue("cen_ssid_id", target, ssidId)) continue;
        std::string label = std::string(table) + " " + quoted(name);
        mergeService(into, Service{bss - 1, ssidId, pointerTo(mapAt, i), label}, out);
    }
}

// Meshpoints go first, then the WLANs; a later service takes a slot from an earlier one.
void checkSlots(const RadioBuild& radio, Findings& out) {
    std::vector<const Service*> order;
    for (const Service& s : radio.meshpoints) order.push_back(&s);
    for (const Service& s : radio.wlans) order.push_back(&s);
    const Service* slots[kWlanSlots] = {};
    for (const Service* s : order) {
        // Also an event of the library, but only once every converter before the slot
        // layout has run: a document that fails earlier would lose it.
        if (s->index < 0 || s->index >= kWlanSlots) {
            out.error(pointerTo(s->at, "bss"), "bss " + std::to_string(s->index + 1) + " puts " +
                                                   s->label +
                                                   " outside the eight slots (bss 1 to 8); "
                                                   "it is dropped");
            continue;
        }
        if (const Service* earlier = slots[s->index]) {
            out.error(earlier->at, earlier->label + " loses slot " + std::to_string(s->index) +
                                       " of " + quoted(radio.name) + " to " + s->label + " (" +
                                       s->at + "); it is dropped");
        }
        slots[s->index] = s;
    }
}

// What the library's reading of a radio or port name means for it on the AP.
void checkRadioId(InterfaceRole role, const std::string& name, const jsonCfgPlus::RadioId& radioId,
                  const std::string& nameAt, Findings& out) {
    using Outcome = jsonCfgPlus::RadioId::Outcome;
    switch (radioId.outcome) {
        case Outcome::kNoNumber:
            out.error(nameAt, "radio name " + quoted(name) +
                                  " has no number after its first five characters; the radio "
                                  "and its services are dropped");
            return;
        case Outcome::kTooLarge:
            out.error(nameAt, "the number in radio name " + quoted(name) + " is above " +
                                  std::to_string(jsonCfgPlus::kFirstReservedRadioId - 1) +
                                  "; the radio and its services are dropped");
            return;
        case Outcome::kOutOfRange:
            out.error(nameAt, "port " + quoted(name) +
                                  " has a number out of range; the port and its services are "
                                  "dropped");
            return;
        case Outcome::kId:
            break;
    }
    if (role != InterfaceRole::Radio) return;
    const int id = radioId.id;
    const int maxRadio = jsonCfgPlus::getMaxRadio();
    if (id == 0) {
        out.warning(nameAt,
                    "radio 0 is built, but its radio entry and services carry radio "
                    "index -1, below the AP's first radio (index 0 is radio 1)");
    } else if (id > maxRadio) {
        // Wired port pN takes the id after the last radio's: N + the radio count.
        out.error(nameAt,
                  "radio number " + std::to_string(id) + " is beyond the AP's radios 0 to " +
                      std::to_string(maxRadio) + ": it gets no radio entry, and it shares id " +
                      std::to_string(id) + " with wired port " +
                      quoted(jsonCfgPlus::m_wired_port_prefix + std::to_string(id - maxRadio)) +
                      ", so the two merge and its services go out as that port's");
    } else if (name.compare(0, 5, "radio") != 0) {
        out.warning(nameAt,
                    "the build reads the radio number after the first five characters "
                    "of " +
                        quoted(name) + "; name it \"radio\" and the number");
    }
}

void checkInterfaceItem(json_object* item, const std::string& at, Findings& out) {
    json_object* nameValue = nullptr;
    if (!isType(item, json_type_object)) {
        out.error(at, "is " + describeType(item) + ", not an object; the build skips it");
        return;
    }
    if (!json_object_object_get_ex(item, "name", &nameValue)) {
        out.error(at, "has no \"name\"; the build skips it");
        return;
    }
    if (!isType(nameValue, json_type_string)) {
        out.error(pointerTo(at, "name"),
                  "is " + describeType(nameValue) + ", not a string; the build skips it");
        return;
    }
    std::string name = json_object_get_string(nameValue);
    std::string type = stringMember(item, "type");
    InterfaceRole role = interfaceRole(item);
    std::string nameAt = pointerTo(at, "name");
    if (role == InterfaceRole::Ignored) {
        out.warning(at, "interface " + quoted(name) + " of type " +
                            (type.empty() ? std::string("(none)") : quoted(type)) +
                            " is not one the build reads; it is ignored");
    } else if (std::optional<jsonCfgPlus::RadioId> radioId = radioIdOf(role, name)) {
        checkRadioId(role, name, *radioId, nameAt, out);
    }
}

}  // namespace

InterfaceRole interfaceRole(json_object* item) {
    std::string name;
    if (!jsonCfgObj::getJsonStrValue("name", item, name)) return InterfaceRole::Skipped;
    std::string type = stringMember(item, "type");
    // The IoT radio is known by its name, whatever its type says.
    if (name == "bluetooth1") return InterfaceRole::Bluetooth;
    if (type == "radio") return InterfaceRole::Radio;
    if (type == "uwb") return InterfaceRole::Uwb;
    if (jsonCfgPlus::isWiredPortInterface(name)) return InterfaceRole::Wired;
    if (jsonCfgPlus::isBridgePortInterface(name)) return InterfaceRole::Bridge;
    if (isVirtualType(type)) return InterfaceRole::Virtual;
    if (type == "ethernet" && (name == "port-channel1" || name == "ge1"))
        return InterfaceRole::EthernetPort;
    return InterfaceRole::Ignored;
}

std::optional<jsonCfgPlus::RadioId> radioIdOf(InterfaceRole role, const std::string& name) {
    using Kind = jsonCfgPlus::RadioIdKind;
    switch (role) {
        case InterfaceRole::Radio:
            return jsonCfgPlus::radioIdOf(Kind::kRadio, name);
        case InterfaceRole::Bluetooth:
            return jsonCfgPlus::radioIdOf(Kind::kIotRadio, name);
        case InterfaceRole::Wired:
            return jsonCfgPlus::radioIdOf(Kind::kWiredPort, name);
        case InterfaceRole::Bridge:
            return jsonCfgPlus::radioIdOf(Kind::kBridgePort, name);
        default:
            return std::nullopt;
    }
}

void checkInterfaces(const Context& ctx, Findings& out) {
    for (const Context::InterfaceList& list : ctx.interfaceLists()) {
        if (!isType(list.list, json_type_array)) continue;
        size_t count = json_object_array_length(list.list);
        for (size_t i = 0; i < count; ++i)
            checkInterfaceItem(json_object_array_get_idx(list.list, i), pointerTo(list.pointer, i),
                               out);
    }
}

void checkServices(const Context& ctx, Findings& out) {
    // A service without an integer "cen_ssid_id" the library reports itself where it is used.
    // Only the lists the build reads fill the AP's slots, in build order.
    std::map<int, RadioBuild> radios;
    for (const Context::InterfaceList& list : ctx.interfaceLists()) {
        if (!list.built || !isType(list.list, json_type_array)) continue;
        size_t count = json_object_array_length(list.list);
        for (size_t i = 0; i < count; ++i) {
            json_object* item = json_object_array_get_idx(list.list, i);
            InterfaceRole role = interfaceRole(item);
            std::string name = stringMember(item, "name");
            std::optional<jsonCfgPlus::RadioId> radioId = radioIdOf(role, name);
            if (!radioId || radioId->outcome != jsonCfgPlus::RadioId::Outcome::kId) continue;
            const int id = radioId->id;
            std::string at = pointerTo(list.pointer, i);
            RadioBuild built{at, name, {}, {}};
            buildServices(ctx, jsonCfgObj::getJsonObject("wlanbssmap", item),
                          pointerTo(at, "wlanbssmap"), "wlan", "wlan", built.wlans, out);
            if (role == InterfaceRole::Radio) {
                buildServices(ctx, jsonCfgObj::getJsonObject("meshpointbssmap", item),
                              pointerTo(at, "meshpointbssmap"), "meshpoint", "meshpoint",
                              built.meshpoints, out);
            }
            auto existing = radios.find(id);
            if (existing == radios.end()) {
                radios.emplace(id, std::move(built));
                continue;
            }
            for (const Service& wlan : built.wlans) mergeService(existing->second.wlans, wlan, out);
            if (!built.meshpoints.empty()) {
                out.error(pointerTo(at, "meshpointbssmap"),
                          quoted(name) + " has radio id " + std::to_string(id) +
                              ", already built from " + existing->second.at +
                              "; the meshpoints of this one are not merged and are dropped");
            }
        }
    }
    for (const auto& entry : radios) checkSlots(entry.second, out);
}

}  // namespace jcp::lint
