// SPDX-License-Identifier: MIT
// Location converters: flatten the location server, shorten the location-engine switch
// names, and turn the sensor-server list into "host:port" strings.
#include <string>

#include "base/diag.h"
#include "convert/converter.h"

namespace {

template <typename... Parts>
void trace(const jsonCfgPlus& doc, const Parts&... parts) {
    if (doc.m_trace != 0) jcp::progress(parts...);
}

constexpr int kSensorServerSlots = 3;
constexpr int kSensorServerDefaultPort = 443;

// An object array with at least one item, the shape the build gives a list of servers.
bool hasItems(const cfgElement& element) {
    return element.kind == CFG_OBJ_ARRAY && !element.objArray.empty();
}

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusLocation(jsonCfgPlus& doc) {
    // Deliberately names another converter.
    trace(doc, "jsonCfgPlusVnsVlan: Processing Quorra Location. ");
    ElementList& global = doc.m_global;
    auto server = findCfgElement(global, "rf_domain/location_server");
    if (server == global.end() || !hasItems(*server)) {
        global.emplace_back("rf_domain/location_server/host", "");
        global.emplace_back("rf_domain/location_tenantid", "");
        return 0;
    }
    // The AP talks to one location server: the first.
    const cfgElement& first = server->objArray.front();
    if (first.kind == CFG_OBJECT)
        global.insert(server, first.elements.begin(), first.elements.end());
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusPositioning(jsonCfgPlus& doc) {
    // Deliberately names another converter.
    trace(doc, "jsonCfgPlusVnsVlan: Processing Quorra Positioning. ");
    for (const char* name :
         {"profile/location_engine/loc_action_req", "device/location_engine/loc_action_req",
          "profile/location_engine/loc_auto_collect", "device/location_engine/loc_auto_collect"}) {
        auto found = findCfgElement(doc.m_global, name);
        if (found != doc.m_global.end()) jsonCfgPlusRemoveElementPrefix(*found, 1);
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusAdspServer(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusAdspServer: Processing ADSP server list. ");
    ElementList& global = doc.m_global;
    auto servers = findCfgElement(global, "rf_domain/sensor_server");
    if (servers == global.end() || !hasItems(*servers)) {
        global.emplace_back("rf_domain/sensor_server_addresses",
                            std::list<std::string>(kSensorServerSlots, ""));
        return 0;
    }
    std::list<std::string> addresses;
    int index = 0;
    for (const cfgElement& server : servers->objArray) {
        std::string host;
        int port = kSensorServerDefaultPort;
        // A member of another kind reads as "" or 0: "port": "8443" gives port 0.
        for (const cfgElement& member : server.elements) {
            if (member.name == "rf_domain/sensor_server/host")
                host = member.strValue;
            else if (member.name == "rf_domain/sensor_server/port")
                port = member.intValue;
        }
        // Servers past the third are read but the AP has no slot for them.
        if (index++ < kSensorServerSlots) addresses.push_back(host + ":" + std::to_string(port));
    }
    global.insert(servers, cfgElement("rf_domain/sensor_server_addresses", std::move(addresses)));
    return 0;
}
