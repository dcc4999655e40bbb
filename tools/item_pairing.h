// SPDX-License-Identifier: MIT
// Pairs the items of an old and a new list by successive keys, from the closest likeness to the
// loosest: each item pairs once, in order of position, and in linear time, so a diff of long
// ACLs stays cheap.
#ifndef JSONCFGPLUS_TOOLS_ITEM_PAIRING_H
#define JSONCFGPLUS_TOOLS_ITEM_PAIRING_H

#include <json-c/json.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tool {

class ItemPairing {
  public:
    static constexpr size_t kNone = SIZE_MAX;

    ItemPairing(json_object* before, json_object* after);

    // Pairs every still unpaired new item with the first unpaired old item of the same key.
    void pairBy(const std::function<std::string(json_object*)>& keyOf);
    // Pairs new item j with old item i.
    void pair(size_t j, size_t i);

    size_t oldCount() const { return m_oldPaired.size(); }
    size_t newCount() const { return m_pairOf.size(); }
    json_object* oldItem(size_t i) const { return json_object_array_get_idx(m_before, i); }
    json_object* newItem(size_t j) const { return json_object_array_get_idx(m_after, j); }
    // The old item paired with new item j, or kNone.
    size_t pairOf(size_t j) const { return m_pairOf[j]; }
    bool oldPaired(size_t i) const { return m_oldPaired[i]; }

  private:
    json_object* m_before;
    json_object* m_after;
    std::vector<size_t> m_pairOf;
    std::vector<bool> m_oldPaired;
};

}  // namespace tool

#endif
