// SPDX-License-Identifier: MIT
// The name index of an element list.
#include "model/cfg_element_index.h"

#include <functional>
#include <utility>

namespace {

// Lists up to this length are searched by a scan from the front.
constexpr size_t kScanLength = 8;

size_t hashOf(const std::string& name) {
    return std::hash<std::string>()(name);
}

}  // namespace

cfgElementIndex::cfgElementIndex(List& list) : m_list(&list) {
    if (list.size() > kScanLength) appended();
}

cfgElementIndex::List::iterator cfgElementIndex::find(const std::string& name) {
    if (!m_hashed) {
        for (auto it = m_list->begin(); it != m_list->end(); ++it) {
            if (it->name == name) return it;
        }
        return m_list->end();
    }
    auto range = m_byHash.equal_range(hashOf(name));
    for (auto at = range.first; at != range.second; ++at) {
        if (at->second->name == name) return at->second;
    }
    return m_list->end();
}

void cfgElementIndex::add(cfgElement&& element, bool replace) {
    auto found = find(element.name);
    if (found != m_list->end()) {
        if (replace) *found = std::move(element);
        return;
    }
    m_list->push_back(std::move(element));
    appended();
}

void cfgElementIndex::append(cfgElement&& element) {
    m_list->push_back(std::move(element));
    appended();
}

void cfgElementIndex::appended() {
    if (m_hashed) {
        remember(std::prev(m_list->end()));
    } else if (m_list->size() > kScanLength) {
        m_hashed = true;
        m_byHash.reserve(2 * m_list->size());
        for (auto it = m_list->begin(); it != m_list->end(); ++it) remember(it);
    }
}

void cfgElementIndex::remember(List::iterator it) {
    if (find(it->name) == m_list->end()) m_byHash.emplace(hashOf(it->name), it);
}
