// SPDX-License-Identifier: MIT
// How many items of a given size an entry's value block holds.
#ifndef JSONCFGPLUS_MODEL_ENTRY_ITEMS_H
#define JSONCFGPLUS_MODEL_ENTRY_ITEMS_H

#include <cstddef>

#include "../base/records.h"

namespace jcp {

// A negative or short size counts as no items, so a damaged entry is never over-read.
inline size_t entryItemCount(const apiCfgPlusEntry& entry, size_t itemSize) {
    if (entry.value == nullptr || entry.size <= 0) return 0;
    return static_cast<size_t>(entry.size) / itemSize;
}

}  // namespace jcp

#endif
