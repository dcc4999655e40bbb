// SPDX-License-Identifier: MIT
// Merging built radios and services into the document's vectors by id, each merge costing
// what it merges rather than what is already there.
#ifndef JSONCFGPLUS_DOCUMENT_MERGE_PRIV_H
#define JSONCFGPLUS_DOCUMENT_MERGE_PRIV_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "document/radio_entry.h"
#include "model/cfg_element_index.h"

namespace jcp {

// jsonCfgPlus::mergeVnsCfgElement over one vector, with the services found by radio and SSID
// id in constant time. Nothing else may change the vector or its services while it is in use.
class vnsMerger {
  public:
    explicit vnsMerger(std::vector<vns_entry>& services);
    // Into the first service with the same radio and SSID id (later values win, first
    // positions stay), or appended.
    void merge(vns_entry&& service);

  private:
    struct Slot {
        size_t position;
        std::unique_ptr<cfgElementIndex> elements;  // made on the first merge into the slot
    };
    static uint64_t idOf(const vns_entry& service);

    std::vector<vns_entry>& m_services;
    std::unordered_map<uint64_t, Slot> m_byId;
};

// jsonCfgPlus::mergeRadioCfgElements without the copy: radio is moved from.
void mergeRadio(std::vector<radio_entry>& radios, radio_entry&& radio);

// Merges the radios one after another as jsonCfgPlus::mergeRadioCfgElements would, in linear
// time when radios is sorted by id without repeats (as the merges keep it).
void mergeRadios(std::vector<radio_entry>& radios, std::vector<radio_entry>&& built);

}  // namespace jcp

#endif
