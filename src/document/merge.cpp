// SPDX-License-Identifier: MIT
// Radio and service merging by id.
#include "document/merge_priv.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "document/json_cfg_plus.h"

namespace jcp {

namespace {

bool strictlyAscending(const std::vector<radio_entry>& radios) {
    return std::adjacent_find(radios.begin(), radios.end(),
                              [](const radio_entry& a, const radio_entry& b) {
                                  return a.id >= b.id;
                              }) == radios.end();
}

// Merges later builds of one radio into the first: elements by name, WLANs by service.
// Meshpoints of the later builds are not merged.
void mergeInto(radio_entry& base, std::vector<radio_entry*>::const_iterator from,
               std::vector<radio_entry*>::const_iterator to) {
    cfgElementIndex elements(base.elements);
    vnsMerger wlans(base.wlans);
    for (; from != to; ++from) {
        for (cfgElement& element : (*from)->elements) elements.add(std::move(element), true);
        for (vns_entry& wlan : (*from)->wlans) wlans.merge(std::move(wlan));
    }
}

}  // namespace

vnsMerger::vnsMerger(std::vector<vns_entry>& services) : m_services(services) {
    m_byId.reserve(services.size());
    for (size_t i = 0; i < services.size(); ++i)
        m_byId.emplace(idOf(services[i]), Slot{i, nullptr});
}

uint64_t vnsMerger::idOf(const vns_entry& service) {
    return (uint64_t(uint32_t(service.radioId)) << 32) | uint32_t(service.ssidId);
}

void vnsMerger::merge(vns_entry&& service) {
    auto found = m_byId.find(idOf(service));
    if (found == m_byId.end()) {
        m_byId.emplace(idOf(service), Slot{m_services.size(), nullptr});
        m_services.push_back(std::move(service));
        return;
    }
    Slot& slot = found->second;
    cfgElementIndex::List& target = m_services[slot.position].elements;
    if (slot.elements == nullptr) {
        slot.elements = std::make_unique<cfgElementIndex>(target);
    } else {
        // The vector may have grown since; the elements themselves have not moved.
        slot.elements->rebind(target);
    }
    for (cfgElement& element : service.elements) slot.elements->add(std::move(element), true);
}

void mergeRadio(std::vector<radio_entry>& radios, radio_entry&& radio) {
    for (auto it = radios.begin(); it != radios.end(); ++it) {
        if (it->id > radio.id) {
            radios.insert(it, std::move(radio));
            return;
        }
        if (it->id == radio.id) {
            cfgElementIndex elements(it->elements);
            for (cfgElement& element : radio.elements) elements.add(std::move(element), true);
            vnsMerger wlans(it->wlans);
            for (vns_entry& wlan : radio.wlans) wlans.merge(std::move(wlan));
            return;
        }
    }
    radios.push_back(std::move(radio));
}

void mergeRadios(std::vector<radio_entry>& radios, std::vector<radio_entry>&& built) {
    if (!strictlyAscending(radios)) {
        for (radio_entry& radio : built) mergeRadio(radios, std::move(radio));
        return;
    }
    // Builds of one id in their own order; a stable sort keeps which came first.
    std::vector<radio_entry*> order(built.size());
    std::transform(built.begin(), built.end(), order.begin(), [](radio_entry& r) { return &r; });
    std::stable_sort(order.begin(), order.end(),
                     [](const radio_entry* a, const radio_entry* b) { return a->id < b->id; });

    std::vector<radio_entry*> added;  // first builds of ids not yet present, ascending
    for (auto group = order.begin(); group != order.end();) {
        int id = (*group)->id;
        auto end =
            std::find_if(group, order.end(), [id](const radio_entry* r) { return r->id != id; });
        auto present = std::lower_bound(radios.begin(), radios.end(), id,
                                        [](const radio_entry& r, int v) { return r.id < v; });
        if (present != radios.end() && present->id == id) {
            mergeInto(*present, group, end);
        } else {
            mergeInto(**group, group + 1, end);
            added.push_back(*group);
        }
        group = end;
    }
    if (added.empty()) return;

    std::vector<radio_entry> merged;
    merged.reserve(radios.size() + added.size());
    auto old = radios.begin();
    for (radio_entry* radio : added) {
        while (old != radios.end() && old->id < radio->id) merged.push_back(std::move(*old++));
        merged.push_back(std::move(*radio));
    }
    std::move(old, radios.end(), std::back_inserter(merged));
    radios = std::move(merged);
}

}  // namespace jcp
