// SPDX-License-Identifier: MIT
// WLAN slots: meshpoints turned WLAN services, and every radio's WLANs laid out in the eight
// slots the AP expects, wired ports p1 to p3 included.
#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <list>
#include <vector>

#include "base/build_events_priv.h"
#include "base/diag.h"
#include "convert/converter.h"
#include "platform/platform_calls_priv.h"

namespace {

using ElementList = cfgPlusApiConverter::ElementList;

constexpr int kWlanSlots = 8;
// The wired ports p1 to p3 are the pseudo-radios after the wireless ones.
constexpr int kFirstWiredRadio = 4;
constexpr int kLastWiredRadio = 6;

const char kAcsChannelList[] = "meshpoint_device/acs_channel_list";

using Slots = std::array<vns_entry, kWlanSlots>;

template <typename... Parts>
void trace(const jsonCfgPlus& doc, const Parts&... parts) {
    if (doc.m_trace != 0) jcp::progress(parts...);
}

Slots placeholders(int radioId) {
    Slots slots;
    for (int k = 0; k < kWlanSlots; ++k) {
        slots[k].index = k;
        slots[k].radioId = radioId;
        slots[k].ssidId = 0;
        slots[k].elements.push_back(cfgElement("cen_radio_id", radioId, "radio_id"));
        // Deliberate: every placeholder says SSID id 0, not its slot number.
        slots[k].elements.push_back(cfgElement("cen_ssid_id", 0, "ssid_id"));
    }
    return slots;
}

std::string bandSuffix(const std::string& rfMode) {
    if (rfMode == "5GHz-wlan") return "_5";
    if (rfMode == "6GHz-wlan") return "_6";
    if (rfMode == "2.4GHz-wlan") return "_24";
    return "";
}

// What the meshpoints of one radio share: the radio's band, read once, and where its mesh ACS
// channel list stands once looked up (meshpoints change nothing else of the radio).
struct RadioMeshState {
    explicit RadioMeshState(radio_entry& r)
        : radio(r),
          rfMode(cfgPlusApiConverter().getCfgElementString(r.elements, "rf_mode")),
          suffix(bandSuffix(rfMode)) {}

    ElementList::iterator channelList() {
        if (!channelListFound) {
            channelListAt = cfgPlusApiConverter().findCfgElement(radio.elements, kAcsChannelList);
            channelListFound = true;
        }
        return channelListAt;
    }
    void setChannelList(std::list<int> channels) {
        auto at = channelList();
        if (at == radio.elements.end()) {
            radio.elements.push_back(cfgElement(kAcsChannelList, std::move(channels), ""));
            channelListAt = std::prev(radio.elements.end());
        } else {
            *at = cfgElement(at->name, std::move(channels), at->key);
        }
    }

    radio_entry& radio;
    const std::string rfMode;
    const std::string suffix;
    bool channelListFound = false;
    ElementList::iterator channelListAt;
};

// Turns a meshpoint's elements into a WLAN's, and sets the radio's mesh ACS channel list. An
// element present with a value of another kind reads as 0, false, "" or an empty list: every
// element has every value member, zero or empty unless its kind selects it.
void convertMeshpoint(RadioMeshState& state, vns_entry& mp, int idx) {
    cfgPlusApiConverter helpers;
    ElementList& list = mp.elements;
    list.push_back(cfgElement("meshpoint_idx", idx, ""));

    auto meshid = helpers.findCfgElement(list, "meshid");
    if (meshid != list.end()) {
        list.insert(meshid, cfgElement("ssid", helpers.getCfgElementString(list, "meshid"), ""));
    }

    // Without "is_root" a meshpoint counts as root, and says nothing about it.
    bool root = true;
    auto isRoot = helpers.findCfgElement(list, "is_root");
    if (isRoot != list.end()) {
        root = isRoot->boolValue;
        std::string rootDev = helpers.getCfgElementString(list, "meshpoint_device/is_root_dev");
        if (rootDev == "true") {
            root = true;
        } else if (rootDev == "false") {
            root = false;
        }
        list.insert(isRoot, cfgElement("cen_is_root", root, ""));
    }

    for (const char* name :
         {"meshpoint_device/preferred_neighbor", "meshpoint_device/preferred_root"}) {
        if (helpers.findCfgElement(list, name) == list.end())
            list.push_back(cfgElement(name, "", ""));
    }

    auto snrMin = helpers.findCfgElement(list, "meshpoint_device/hysteresis_snr_min");
    if (snrMin != list.end()) {
        list.insert(snrMin,
                    cfgElement("wds/meshpoint_device/hysteresis_snr_min", snrMin->intValue, ""));
    }

    const std::string& suffix = state.suffix;
    for (const char* name : {"meshpoint_device/acs_path_min", "meshpoint_device/acs_path_threshold",
                             "meshpoint_device/acs_tolerance_period"}) {
        // Deliberate: with no band suffix this finds the plain name and duplicates it.
        auto banded = helpers.findCfgElement(list, name + suffix);
        if (banded != list.end()) {
            list.insert(banded, cfgElement(name, banded->intValue, ""));
        }
    }

    bool monitor = false;
    auto monitorLink = helpers.findCfgElement(list, "meshpoint_device/monitor_pri_port_link");
    if (monitorLink != list.end()) {
        monitor = monitorLink->boolValue;
    }
    // The channel list belongs to the radio: a root that does not watch its wired link scans
    // no channels for mesh ACS.
    if (root && !monitor) {
        state.setChannelList({});
    } else if (suffix.empty()) {
        jcp::diag("[ERR] Radio", state.radio.id,
                  " does not support mesh ACS rf_mode: ", state.rfMode, " ");
    } else {
        // A list that is not of strings, or a plain string, holds no channel text: the radio's
        // list is emptied.
        auto banded = helpers.findCfgElement(list, kAcsChannelList + suffix);
        if (banded != list.end()) {
            std::string text = banded->strList.empty() ? "" : banded->strList.front();
            state.setChannelList(helpers.jsonCfgPlusStr2IntList(text, ','));
        }
    }
}

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusMeshpointToWlan(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusMeshpointToWlan: Converting Meshpoint to WLAN. ");
    for (radio_entry& radio : doc.m_radios) {
        // Meshpoints go to the front, in their own order, ahead of the configured WLANs: what
        // inserting meshpoint c at position c gives, built in one pass. The radio keeps its
        // meshpoint list, so each meshpoint is copied once.
        if (!radio.meshpoints.empty()) {
            std::vector<vns_entry> wlans;
            wlans.reserve(radio.meshpoints.size() + radio.wlans.size());
            RadioMeshState state(radio);
            try {
                for (const vns_entry& meshpoint : radio.meshpoints) {
                    // A copy or step that throws (a bad channel list, no memory) adds nothing;
                    // the move into the reserved room cannot throw.
                    jcp::EventPlaceScope place(meshpoint, true);
                    vns_entry converted = meshpoint;
                    convertMeshpoint(state, converted, 0);
                    wlans.push_back(std::move(converted));
                }
            } catch (...) {
                // The radio is left as one insert at a time leaves it: the meshpoints converted
                // so far ahead of its WLANs. Within the reserved room, nothing here allocates.
                std::move(radio.wlans.begin(), radio.wlans.end(), std::back_inserter(wlans));
                radio.wlans = std::move(wlans);
                throw;
            }
            std::move(radio.wlans.begin(), radio.wlans.end(), std::back_inserter(wlans));
            radio.wlans = std::move(wlans);
        }
        for (vns_entry& wlan : radio.wlans) {
            if (findCfgElement(wlan.elements, "meshpoint_idx") == wlan.elements.end()) {
                wlan.elements.push_back(cfgElement("meshpoint_idx", -1, ""));
            }
        }
    }
    return 0;
}

void cfgPlusApiConverter::jsonCfgPlusConvertMeshpointToWlan(radio_entry& radio, vns_entry& mp,
                                                            int idx, int pos) {
    RadioMeshState state(radio);
    convertMeshpoint(state, mp, idx);
    size_t at = std::min(static_cast<size_t>(std::max(pos, 0)), radio.wlans.size());
    radio.wlans.insert(radio.wlans.begin() + static_cast<std::ptrdiff_t>(at), std::move(mp));
}

int cfgPlusApiConverter::jsonCfgPlusVnsOrderWlans(jsonCfgPlus& doc) {
    for (int id = kFirstWiredRadio; id <= kLastWiredRadio; ++id) {
        auto byId = [id](const radio_entry& r) { return r.id == id; };
        if (std::any_of(doc.m_radios.begin(), doc.m_radios.end(), byId)) continue;
        radio_entry port;
        port.id = id;
        port.name = "p" + std::to_string(id - 3);
        // Appended, not sorted in: the missing ports come after every built radio and port.
        doc.m_radios.push_back(std::move(port));
    }

    for (radio_entry& radio : doc.m_radios) {
        Slots slots = placeholders(radio.id);
        for (vns_entry& wlan : radio.wlans) {
            // A negative index has no slot either; it goes the way of one past the end.
            if (wlan.index < 0 || wlan.index >= kWlanSlots) {
                // Deliberate: the message names the slot count, not the offending index.
                jcp::diag("[WARNING: vns_index is out of range: ", kWlanSlots, ", ignore.");
                jcp::EventPlaceScope place(wlan);
                jcp::reportEvent(
                    jcp::EventKind::dropped, "bss",
                    "bss " + std::to_string(wlan.index + 1) +
                        " is outside the eight slots (bss 1 to 8); the service is dropped");
                continue;
            }
            slots[wlan.index] = std::move(wlan);
        }
        radio.wlans.assign(std::make_move_iterator(slots.begin()),
                           std::make_move_iterator(slots.end()));
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusVnsReorderWlans(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusVnsReorderWlans... ");
    jsonCfgPlusVnsOrderWlans(doc);
    for (radio_entry& radio : doc.m_radios) {
        Slots slots = placeholders(radio.id);
        int radioIndex = radio.id - 1;
        for (vns_entry& wlan : radio.wlans) {
            if (wlan.ssidId == 0) continue;
            // The slot whose value stored on the AP is this SSID id; a WLAN without one is
            // dropped.
            for (int k = 0; k < kWlanSlots; ++k) {
                if (jcp::storedVlanVid(radioIndex, k) != wlan.ssidId) continue;
                jcp::diag("VNS[", radioIndex, ",", wlan.index, "] ssid=", wlan.ssidId,
                          " found existing VNS[", radioIndex, ",", k, "]");
                slots[k] = std::move(wlan);
                slots[k].index = k;
                break;
            }
        }
        radio.wlans.assign(std::make_move_iterator(slots.begin()),
                           std::make_move_iterator(slots.end()));
    }
    return 0;
}
