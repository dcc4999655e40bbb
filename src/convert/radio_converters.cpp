// SPDX-License-Identifier: MIT
// Radio converters: reshape each radio's channel lists, beacon, probe, load-balancing and
// 802.11ax settings into the names and kinds the radio driver layer reads, and gather the
// antenna settings into global lists.
#include <iterator>
#include <string>

#include "base/diag.h"
#include "convert/converter.h"

namespace {

using ElementList = cfgPlusApiConverter::ElementList;

template <typename... Parts>
void trace(const jsonCfgPlus& doc, const Parts&... parts) {
    if (doc.m_trace != 0) jcp::progress(parts...);
}

// Places element just after pos, or at the end when pos is the end.
void insertAfter(ElementList& list, ElementList::iterator pos, cfgElement element) {
    if (pos != list.end()) ++pos;
    list.insert(pos, std::move(element));
}

}  // namespace

int cfgPlusApiConverter::jsonCfgPlusRadioFallbackChannelList(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusRadioFallbackChannelList converting...");
    for (radio_entry& radio : doc.m_radios) {
        if (findCfgElement(radio.elements, "fallback_channels") == radio.elements.end())
            radio.elements.emplace_back("fallback_channels", std::list<std::string>());
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusRadioDtim(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusRadioDtim converting...");
    for (radio_entry& radio : doc.m_radios) {
        auto dtim = findCfgElement(radio.elements, "dtim");
        if (dtim == radio.elements.end() || dtim->kind != CFG_INT_LIST || dtim->intList.empty())
            continue;
        radio.elements.insert(dtim, cfgElement("beacon/dtim", int(dtim->intList.front())));
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusRadioOcsChannelList(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusRadioOcsChannelList converting...");
    for (radio_entry& radio : doc.m_radios) {
        for (const char* band :
             {"ocs_channel_list_bg", "ocs_channel_list_a", "ocs_channel_list_ax6"}) {
            auto list = findCfgElement(radio.elements, band);
            if (list != radio.elements.end() && list->kind == CFG_STR_LIST) {
                list->name = "ocs_channel_list";
                break;
            }
        }
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusRadioSensorChannelList(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusRadioSensorChannelList converting...");
    const ElementList& global = doc.m_global;
    auto scanMode = findCfgElement(global, "rf_domain/sensor_policy/sensor_scanmode/scan_mode");
    auto channels = findCfgElement(global, "rf_domain/sensor_policy/scan_channels");
    auto lockFreq = findCfgElement(global, "rf_domain/sensor_policy/sensor_scanmode/lock_freq");
    // Present, it locks the scan whatever its kind; a value that is no integer locks to 0.
    bool locked = lockFreq != global.end();

    for (radio_entry& radio : doc.m_radios) {
        if (scanMode != global.end()) radio.elements.push_back(*scanMode);
        if (locked) {
            ElementList item = {cfgElement("rf_domain/sensor_policy/scan_channels/frequency",
                                           int(lockFreq->intValue)),
                                cfgElement("rf_domain/sensor_policy/scan_channels/width", "20MHz")};
            cfgObjArray items;
            items.emplace_back("", std::move(item));
            radio.elements.emplace_back("rf_domain/sensor_policy/scan_channels", std::move(items));
        }
        // Deliberately a second "scan_channels" after the locked one when both exist.
        if (channels != global.end()) radio.elements.push_back(*channels);
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusRadioProbeSuppress(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusRadioProbeSuppress converting...");
    for (radio_entry& radio : doc.m_radios) {
        auto threshold = findCfgElement(radio.elements, "probe_response_rssi_threshold");
        bool present = threshold != radio.elements.end();
        // "supress" is the name the driver layer reads; the misspelling is deliberate.
        radio.elements.insert(threshold, cfgElement("cen_probe_supress_enable", present));
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusRadioLoadBalancing(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusRadioLoadBalancing converting...");
    ElementList settings;
    for (const char* name : {"load_balancing_balance_band_loads", "load_balancing_balance_ap_loads",
                             "load_balancing_group_id"}) {
        auto found = findCfgElement(doc.m_global, name);
        if (found != doc.m_global.end()) settings.push_back(*found);
    }
    for (radio_entry& radio : doc.m_radios)
        radio.elements.insert(radio.elements.end(), settings.begin(), settings.end());
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusRadioAxParamsDefault(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusRadioAxParamsDefault converting...");
    for (radio_entry& radio : doc.m_radios) {
        ElementList& list = radio.elements;
        if (findCfgElement(list, "ax_ofdma") == list.end())
            insertAfter(list, findCfgElement(list, "ax_support"), cfgElement("ax_ofdma", ""));
        if (findCfgElement(list, "ax_bsscolor") == list.end())
            insertAfter(list, findCfgElement(list, "ax_twt"), cfgElement("ax_bsscolor", 0));
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusRadioAcsChannelList(jsonCfgPlus& doc) {
    trace(doc, "jsonCfgPlusRadioAcsChannelList converting...");
    for (radio_entry& radio : doc.m_radios) {
        ElementList& list = radio.elements;
        auto fallback = findCfgElement(list, "fallback_channels");
        auto acs = findCfgElement(list, "cen_acs_ch_list");
        if (fallback == list.end()) {
            if (acs == list.end())
                list.emplace_back("cen_acs_ch_list", std::list<int>());
            else
                jsonCfgPlusElementStr2IntList(list, "cen_acs_ch_list");
            continue;
        }
        // Parsed before anything changes; a channel that is not a number throws from stoi.
        std::list<int> channels;
        for (const std::string& channel : fallback->strList) channels.push_back(std::stoi(channel));
        if (acs == list.end()) {
            list.insert(fallback, cfgElement("cen_acs_ch_list", std::move(channels)));
        } else {
            cfgElement replaced("cen_acs_ch_list", std::move(channels), std::move(acs->key));
            *acs = std::move(replaced);
        }
    }
    return 0;
}

int cfgPlusApiConverter::jsonCfgPlusAntennaType(jsonCfgPlus& doc) {
    // Deliberately names another converter.
    trace(doc, "jsonCfgPlusVnsVlan: Processing Antenna Type. ");
    // Every option present takes its place in the list; a value that is no text gives "".
    std::list<std::string> groups;
    for (int n = 1; n <= 10; ++n) {
        std::string name = "antenna_id_group" + std::to_string(n) + "_option";
        auto found = findCfgElement(doc.m_global, name);
        if (found != doc.m_global.end()) groups.push_back(found->strValue);
    }
    auto internal = findCfgElement(doc.m_global, "antenna_id_internal_option");
    if (internal != doc.m_global.end()) groups.push_back(internal->strValue);
    if (!groups.empty()) doc.m_global.emplace_back("cen_antenna_group", std::move(groups));

    // Positions follow the radios that have a mode, not the radio ids.
    std::list<std::string> modes;
    for (const radio_entry& radio : doc.m_radios) {
        auto mode = findCfgElement(radio.elements, "antenna_mode");
        if (mode != radio.elements.end()) modes.push_back(mode->strValue);
    }
    if (!modes.empty()) doc.m_global.emplace_back("cen_antenna_mode", std::move(modes));
    return 0;
}
