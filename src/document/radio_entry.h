// SPDX-License-Identifier: MIT
// One radio (or wired/bridge pseudo-radio) with its WLAN services and meshpoints.
#ifndef JSONCFGPLUS_DOCUMENT_RADIO_ENTRY_H
#define JSONCFGPLUS_DOCUMENT_RADIO_ENTRY_H

#include <list>
#include <string>
#include <type_traits>
#include <vector>

#include "../base/export.h"
#include "../model/cfg_element.h"

// One WLAN service (VNS) or meshpoint on one radio.
struct JCP_EXPORT vns_entry {
    int index = 0;    // BSS slot on the radio (the map's "bss" - 1); the entries' VNS id
    int radioId = 0;  // owning radio's id
    int ssidId = 0;   // the service's "cen_ssid_id"
    std::list<cfgElement> elements;
};

struct JCP_EXPORT radio_entry {
    int id = 0;  // "radioN" is N, "pN" is N + 3; the IoT radio and bridge ports above those
    std::string name;
    std::list<cfgElement> elements;
    std::vector<vns_entry> wlans;
    std::vector<vns_entry> meshpoints;
};

// Both live in vectors that grow and reorder; a throwing move would make them copy instead.
static_assert(std::is_nothrow_move_constructible<vns_entry>::value &&
                  std::is_nothrow_move_assignable<vns_entry>::value,
              "services move without copying");
static_assert(std::is_nothrow_move_constructible<radio_entry>::value &&
                  std::is_nothrow_move_assignable<radio_entry>::value,
              "radios move without copying");

#endif
