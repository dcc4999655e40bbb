// SPDX-License-Identifier: MIT
#include "item_pairing.h"

#include <unordered_map>

namespace tool {

namespace {

size_t lengthOf(json_object* array) {
    return json_object_is_type(array, json_type_array) ? json_object_array_length(array) : 0;
}

}  // namespace

ItemPairing::ItemPairing(json_object* before, json_object* after)
    : m_before(before),
      m_after(after),
      m_pairOf(lengthOf(after), kNone),
      m_oldPaired(lengthOf(before), false) {}

void ItemPairing::pairBy(const std::function<std::string(json_object*)>& keyOf) {
    // Old positions by key, the first at the back, so each pairs in order of position.
    std::unordered_map<std::string, std::vector<size_t>> waiting;
    for (size_t i = oldCount(); i-- > 0;) {
        if (!m_oldPaired[i]) waiting[keyOf(oldItem(i))].push_back(i);
    }
    for (size_t j = 0; j < newCount(); ++j) {
        if (m_pairOf[j] != kNone) continue;
        auto found = waiting.find(keyOf(newItem(j)));
        if (found == waiting.end() || found->second.empty()) continue;
        pair(j, found->second.back());
        found->second.pop_back();
    }
}

void ItemPairing::pair(size_t j, size_t i) {
    m_pairOf[j] = i;
    m_oldPaired[i] = true;
}

}  // namespace tool
