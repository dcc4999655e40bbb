// SPDX-License-Identifier: MIT
// The layout every record printer shares: two spaces a level, arrays and objects that open on
// the current line and close at the indentation they began at, "[ ]" for an empty array.
#ifndef JSONCFGPLUS_CONVERT_RECORD_PRINT_PRIV_H
#define JSONCFGPLUS_CONVERT_RECORD_PRINT_PRIV_H

#include <cstddef>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "convert/element_print.h"
#include "model/entry_items.h"

namespace jcp {

using PrintFields = std::vector<std::pair<const char*, std::string>>;

inline std::string indentOf(unsigned int indent) {
    return std::string(2 * size_t(indent), ' ');
}

// An array of count items, each rendered at indent + 1 by item(i, indent + 1).
template <typename Item>
std::string block(size_t count, unsigned int indent, Item item) {
    if (count == 0) return "[ ]";
    std::string out = "[\n";
    for (size_t i = 0; i < count; ++i) {
        if (i > 0) out += ",\n";
        out += item(i, indent + 1);
    }
    return out + "\n" + indentOf(indent) + "]";
}

// An object of "name": value lines at indent + 1.
inline std::string object(unsigned int indent, const PrintFields& fields) {
    std::string out = indentOf(indent) + "{";
    for (size_t i = 0; i < fields.size(); ++i) {
        out += i == 0 ? "\n" : ",\n";
        out += indentOf(indent + 1) + "\"" + fields[i].first + "\": " + fields[i].second;
    }
    return out + "\n" + indentOf(indent) + "}";
}

// The entry's name, then each record of its value read into an aligned copy (the value block
// need not be aligned for the record) and rendered by render(record, indent + 1).
template <typename Record, typename Render>
char* printRecords(apiCfgPlusEntry* entry, unsigned int indent, Render render) {
    size_t count = entryItemCount(*entry, sizeof(Record));
    const auto* bytes = static_cast<const unsigned char*>(entry->value);
    return printed(entryPrefix(entry, indent) + block(count, indent, [&](size_t i, unsigned at) {
                       Record record;
                       std::memcpy(&record, bytes + i * sizeof record, sizeof record);
                       return render(record, at);
                   }));
}

}  // namespace jcp

#endif
