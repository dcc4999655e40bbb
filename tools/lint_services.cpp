// lint: interface items the build ignores, radio and port names without a usable number, and
// the WLAN services and meshpoints the build drops (no "cen_ssid_id", a BSS outside the eight
// slots, two services in one slot) or merges.
#include <map>

#include "document/json_cfg_plus.h"
#include "lint_context.h"

namespace lint {

namespace {

constexpr int kWlanSlots = 8;
constexpr int kWiredPortCount = 3;

// The interface build's reading of the number in a radio or port name: the decimal digits at
// the start of text, at most six of them; -1 when there are none.
int leadingNumber(const std::string& text) {
    constexpr size_t kMaxDigits = 6;
    size_t digits = 0;
    while (digits < text.size() && text[digits] >= '0' && text[digits] <= '9') ++digits;
    if (digits == 0 || digits > kMaxDigits) return -1;
    return std::stoi(text.substr(0, digits));
}

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
        if (!jsonCfgObj::getJsonIntValue("bss", item, bss) ||
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
void checkSlots(int radioId, const RadioBuild& radio, Findings& out) {
    std::vector<const Service*> order;
    for (const Service& s : radio.meshpoints) order.push_back(&s);
    for (const Service& s : radio.wlans) order.push_back(&s);
    const Service* slots[kWlanSlots] = {};
    for (const Service* s : order) {
        if (s->index < 0 || s->index >= kWlanSlots) {
            out.error(pointerTo(s->at, "bss"), "bss " + std::to_string(s->index + 1) + " puts " +
                                                   s->label +
                                                   " outside the eight slots (bss 1 to 8); "
                                                   "it is dropped");
            continue;
        }
        if (const Service* earlier = slots[s->index]) {
            out.error(earlier->at, earlier->label + " loses slot " + std::to_string(s->index) +
                                       " of radio " + std::to_string(radioId) + " to " + s->label +
                                       " (" + s->at + "); it is dropped");
        }
        slots[s->index] = s;
    }
}

void checkServiceIds(const Context& ctx, const char* table, Findings& out) {
    forEachItem(ctx, table, [&](json_object* item, const std::string& at) {
        json_object* id = nullptr;
        if (!json_object_object_get_ex(item, "cen_ssid_id", &id)) {
            out.error(at, "has no \"cen_ssid_id\"; the AP drops this service wherever it is used");
        } else if (!isType(id, json_type_int)) {
            out.error(pointerTo(at, "cen_ssid_id"), "is " + describeType(id) +
                                                        ", not an integer; the AP drops this "
                                                        "service wherever it is used");
        }
    });
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
    int id = radioIdOf(role, name);
    std::string nameAt = pointerTo(at, "name");
    if (role == InterfaceRole::Ignored) {
        out.warning(at, "interface " + quoted(name) + " of type " +
                            (type.empty() ? std::string("(none)") : quoted(type)) +
                            " is not one the build reads; it is ignored");
    } else if (role == InterfaceRole::Radio && id < 1) {
        out.error(nameAt, "radio name " + quoted(name) +
                              " has no usable number after its first five characters; the radio "
                              "and its services are dropped");
    } else if (role == InterfaceRole::Radio && id > jsonCfgPlus::getMaxRadio()) {
        out.error(nameAt, "radio number " + std::to_string(id) +
                              " is beyond the AP's radios 1 to 3; it lands on a port's settings");
    } else if (role == InterfaceRole::Radio && name.compare(0, 5, "radio") != 0) {
        out.warning(nameAt,
                    "the build reads the radio number after the first five characters "
                    "of " +
                        quoted(name) + "; name it \"radio\" and the number");
    } else if ((role == InterfaceRole::Wired || role == InterfaceRole::Bridge) && id < 1) {
        out.error(nameAt, "port " + quoted(name) + " has no usable number; the port is dropped");
    }
}

}  // namespace

InterfaceRole interfaceRole(json_object* item) {
    std::string name;
    if (!jsonCfgObj::getJsonStrValue("name", item, name)) return InterfaceRole::Skipped;
    std::string type = stringMember(item, "type");
    if (type == "radio") return InterfaceRole::Radio;
    if (name == "bluetooth1") return InterfaceRole::Bluetooth;
    if (type == "uwb") return InterfaceRole::Uwb;
    if (jsonCfgPlus::isWiredPortInterface(name)) return InterfaceRole::Wired;
    if (jsonCfgPlus::isBridgePortInterface(name)) return InterfaceRole::Bridge;
    if (isVirtualType(type)) return InterfaceRole::Virtual;
    if (type == "ethernet" && (name == "port-channel1" || name == "ge1"))
        return InterfaceRole::EthernetPort;
    return InterfaceRole::Ignored;
}

int radioIdOf(InterfaceRole role, const std::string& name) {
    constexpr size_t kRadioPrefixLength = 5;  // "radio"
    int number = -1;
    switch (role) {
        case InterfaceRole::Radio:
            return name.size() > kRadioPrefixLength ? leadingNumber(name.substr(kRadioPrefixLength))
                                                    : -1;
        case InterfaceRole::Bluetooth:
            return jsonCfgPlus::getMaxRadio();  // the IoT radio shares the last radio's slot
        case InterfaceRole::Wired:
            number = leadingNumber(name.substr(jsonCfgPlus::m_wired_port_prefix.size()));
            return number < 1 ? -1 : number + jsonCfgPlus::getMaxRadio();
        case InterfaceRole::Bridge:
            number = leadingNumber(name.substr(jsonCfgPlus::m_bridge_port_prefix.size()));
            return number < 1 ? -1 : number + jsonCfgPlus::getMaxRadio() + kWiredPortCount;
        default:
            return -1;
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
    checkServiceIds(ctx, "wlan", out);
    checkServiceIds(ctx, "meshpoint", out);

    // Only the lists the build reads fill the AP's slots, in build order.
    std::map<int, RadioBuild> radios;
    for (const Context::InterfaceList& list : ctx.interfaceLists()) {
        if (!list.built || !isType(list.list, json_type_array)) continue;
        size_t count = json_object_array_length(list.list);
        for (size_t i = 0; i < count; ++i) {
            json_object* item = json_object_array_get_idx(list.list, i);
            InterfaceRole role = interfaceRole(item);
            int id = radioIdOf(role, stringMember(item, "name"));
            if (id < 1) continue;
            std::string at = pointerTo(list.pointer, i);
            RadioBuild built{at, {}, {}};
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
                          "radio " + std::to_string(id) + " is already built from " +
                              existing->second.at +
                              "; the meshpoints of this one are not merged and are dropped");
            }
        }
    }
    for (const auto& [id, radio] : radios) checkSlots(id, radio, out);
}

}  // namespace lint
