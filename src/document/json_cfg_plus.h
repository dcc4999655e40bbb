// SPDX-License-Identifier: MIT
// jsonCfgPlus: one received JSON-Q+ document while it is turned into element lists.
#ifndef JSONCFGPLUS_DOCUMENT_JSON_CFG_PLUS_H
#define JSONCFGPLUS_DOCUMENT_JSON_CFG_PLUS_H

#include <json-c/json.h>

#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "../base/diag.h"
#include "../base/export.h"
#include "../base/records.h"
#include "../model/cfg_element.h"
#include "../model/cfg_element_index.h"
#include "json_cfg_all.h"
#include "radio_entry.h"

namespace jcp {
class jsonByName;
}

class JCP_EXPORT jsonCfgPlus {
  public:
    jsonCfgPlus() = default;
    jsonCfgPlus(const jsonCfgPlus&) = delete;
    jsonCfgPlus& operator=(const jsonCfgPlus&) = delete;
    virtual ~jsonCfgPlus();
    // Empties the element lists and the radio vector and clears the Redis key and port.
    virtual void reset();

    // Parses exactly len bytes; null (and "Error: ..." on standard error) when not JSON.
    // The caller owns the tree.
    json_object* parse(const char* text, unsigned int len);
    // Parses a file's content; null silently when it cannot be read.
    json_object* parse(std::string path);
    // Prints what it finds; 0 when the file holds JSON, -1 otherwise.
    int validate(const char* path);
    // Writes the tree to the next of the two /tmp slots, a private file (0600) renamed into
    // place; 0 written or nothing to write, -1 when the slot could not be written.
    int saveJsonCfgPlus(json_object* root);
    int saveJsonCfgPlus(const char* text, unsigned int len);
    // Points the two slots at another directory (empty: back to /tmp) and returns the one it
    // replaces; for tests, not exported.
    __attribute__((visibility("hidden"))) static std::string setSaveDirectory(
        const std::string& directory);

    // Builds the element lists from a document and runs m_callback on success.
    int buildConfig(const char* text, unsigned int len);
    int buildConfig(const char* path);
    // The same from a tree parsed already, of which the document takes one reference; events
    // then name the caller's own objects. The text's length sets the element budget. For
    // lint, not exported.
    __attribute__((visibility("hidden"))) int buildParsed(json_object* root, size_t textLength);

    // JSON shape tests; the list forms append what they read, even when they fail later.
    static bool isStrList(json_object* o, std::list<std::string>& out);
    static bool isIntList(json_object* o, std::list<int>& out);
    static bool isEmptyObj(json_object* o);
    static int getMaxRadio() { return 3; }

    // Flattens a JSON sub-tree into elements named by their slash-joined key paths. The
    // include/exclude lists filter the members of node itself, never deeper.
    static void walk(json_object* node, const std::string& path,
                     const std::list<std::string>& include, const std::list<std::string>& exclude,
                     std::list<cfgElement>& out);
    // The same into a list whose name index the caller keeps across several walks.
    static void walk(json_object* node, const std::string& path,
                     const std::list<std::string>& include, const std::list<std::string>& exclude,
                     cfgElementIndex& out);
    // Puts element into list by name: replaces in place (replace true) or appends.
    static void addCfgElement(std::list<cfgElement>& list, cfgElement element, bool replace);
    static bool inList(std::string key, const std::list<std::string>& list);

    // Interface build: VLANs, Ethernet ports, radios, IoT, UWB, wired and bridge ports.
    void buildInterfaceConfig(json_object* interfaces, json_object* profileMeshpointDevices,
                              json_object* deviceMeshpointDevices);
    // Fills radio.wlans from a "wlanbssmap" array; radioQos goes to WLANs with a QoS policy.
    void buildWlanConfig(json_object* bssMap, radio_entry& radio,
                         const std::list<cfgElement>& radioQos, json_object* testInterface);
    // Fills radio.meshpoints from a "meshpointbssmap" array.
    void buildMeshpointConfig(json_object* bssMap, radio_entry& radio,
                              json_object* profileMeshpointDevices,
                              json_object* deviceMeshpointDevices);
    // Inserts a copy by ascending id, or merges copies into the radio with the same id (WLANs
    // included, meshpoints not).
    static void mergeRadioCfgElements(std::vector<radio_entry>& radios,
                                      const radio_entry& newRadio);
    // Merges a copy into the service with the same radio and SSID id, or appends a copy.
    static void mergeVnsCfgElement(std::vector<vns_entry>& services, const vns_entry& newVns);
    static bool isWiredPortInterface(const std::string& name);
    static bool isBridgePortInterface(const std::string& name);

    // The interfaces the build turns into a radio entry, as it tells them apart.
    enum class RadioIdKind { kRadio, kIotRadio, kWiredPort, kBridgePort };
    static constexpr int kIotRadioId = JSONCFGPLUS_IOT_RADIO_INDEX + 1;
    static constexpr int kFirstReservedRadioId = kIotRadioId;
    static constexpr int kFirstBridgeRadioId = JSONCFGPLUS_BRIDGE_RADIO_INDEX(0) + 1;
    // The radio id an interface's name gives, or why the build skips the interface.
    struct RadioId {
        enum class Outcome { kId, kNoNumber, kTooLarge, kOutOfRange };
        Outcome outcome;
        int id;  // meaningful with kId only
    };
    // A radio's number is read after the first five characters of its name, leading zeros
    // and all: N from 0 to kFirstReservedRadioId - 1 is id N; kNoNumber without a digit there,
    // kTooLarge above. Wired "pN" is N + 3 for N from 1 to kFirstReservedRadioId - 4. The
    // reserved ids from kFirstReservedRadioId up belong to the IoT radio and to bridge "brN"
    // (kFirstBridgeRadioId + N, for N up to INT_MAX - kFirstBridgeRadioId); any other port
    // number is kOutOfRange. The ids are the header's radio indexes plus one.
    static RadioId radioIdOf(RadioIdKind kind, const std::string& name);

    // Element-side dump of the global list, the radios, their services and meshpoints.
    void printConfig() const;

    static const std::list<std::string> m_radio_qos_vns_names;
    static const std::string m_wired_port_prefix;
    static const std::string m_bridge_port_prefix;

    uint32_t m_request_id = 0;
    int32_t m_cen_time = 0;
    int32_t m_redis_depth = 0;
    std::string m_redis_ip;
    int32_t m_redis_port = 0;
    std::string m_redis_key;
    int32_t m_save = 0;
    int32_t m_save_backup = 0;
    int32_t m_trace = 0;
    jsonCfgPlusCallback m_callback = nullptr;
    std::list<cfgElement> m_global;
    std::vector<radio_entry> m_radios;
    jsonCfgAll m_all;

  private:
    // What the steps of one interface build share; defined with the interface build.
    struct InterfaceBuild;

    // Progress line, printed only with the trace flag.
    template <typename... Parts>
    void trace(const Parts&... parts) const;
    // Steps of buildConfig after the object table is built; the result of the build.
    int buildFromTable(json_object* root);
    // The device's related objects: profile, management policy, RF domain and its policies.
    void buildProfileConfig(json_object* device, cfgElementIndex& global);
    void buildRfDomainConfig(json_object* rfDomain, cfgElementIndex& global);
    // The interface build into the global list through its index.
    void buildInterfaceConfig(json_object* interfaces, json_object* profileMeshpointDevices,
                              json_object* deviceMeshpointDevices, cfgElementIndex& global);
    void buildRadioInterface(json_object* radio, const std::string& name, InterfaceBuild& build);
    void buildBluetoothInterface(json_object* bluetooth, InterfaceBuild& build);
    void buildWiredPortInterface(json_object* port, const std::string& name, InterfaceBuild& build);
    void buildBridgePortInterface(json_object* port, const std::string& name,
                                  InterfaceBuild& build);
    // A port as a pseudo-radio with the given id and its own WLANs.
    void buildPortRadio(json_object* port, const std::string& name, int id, InterfaceBuild& build);
    // buildMeshpointConfig with the meshpoint-device lists indexed by name.
    void buildMeshpoints(json_object* bssMap, radio_entry& radio,
                         const jcp::jsonByName& profileMeshpointDevices,
                         const jcp::jsonByName& deviceMeshpointDevices);
    // Starts a service entry for BSS slot bss; false when the service is dropped.
    bool startService(int bss, json_object* service, const radio_entry& radio,
                      vns_entry& out) const;
    // Walks the objects a WLAN refers to by name (ACLs, policies, captive portal).
    void walkWlanReferences(json_object* wlan, const std::list<cfgElement>& radioQos,
                            cfgElementIndex& out) const;
};

template <typename... Parts>
void jsonCfgPlus::trace(const Parts&... parts) const {
    if (m_trace != 0) jcp::progress(parts...);
}

#endif
