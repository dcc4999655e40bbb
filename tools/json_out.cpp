// SPDX-License-Identifier: MIT
// A built result in JSON: entries with name, kind, radio, VNS and value; records field by field.
#include "json_out.h"

#include <cstdio>

#include "model/entry_items.h"
#include "record_fields.h"

namespace tool {

namespace {

json_object* entryToJson(const apiCfgPlusEntry& entry, bool topLevel);

json_object* nestedEntries(const apiCfgPlusEntry& entry) {
    json_object* items = json_object_new_array();
    const auto* nested = static_cast<const apiCfgPlusEntry*>(entry.value);
    size_t count = jcp::entryItemCount(entry, sizeof(apiCfgPlusEntry));
    for (size_t i = 0; i < count; ++i) json_object_array_add(items, entryToJson(nested[i], false));
    return items;
}

json_object* bytesValue(const apiCfgPlusEntry& entry) {
    const auto* bytes = static_cast<const uint8_t*>(entry.value);
    size_t size = jcp::entryItemCount(entry, 1);
    if (json_object* records = decodeEntryRecords(entry.name, bytes, size)) return records;
    static const char kHex[] = "0123456789ABCDEF";
    std::string hex;
    for (size_t i = 0; i < size; ++i) {
        hex += kHex[bytes[i] >> 4];
        hex += kHex[bytes[i] & 0x0F];
    }
    return json_object_new_string(hex.c_str());
}

json_object* entryValue(const apiCfgPlusEntry& entry) {
    const void* value = entry.value;
    switch (entry.type) {
        case CFG_BOOL:
            return value == nullptr ? nullptr
                                    : json_object_new_boolean(*static_cast<const int32_t*>(value));
        case CFG_DOUBLE:
            return value == nullptr ? nullptr
                                    : json_object_new_double(*static_cast<const double*>(value));
        case CFG_INT:
            return value == nullptr ? nullptr
                                    : json_object_new_int(*static_cast<const int32_t*>(value));
        case CFG_STRING:
            return value == nullptr ? nullptr
                                    : json_object_new_string(static_cast<const char*>(value));
        case CFG_BYTES:
            return bytesValue(entry);
        case CFG_EMPTY_ARRAY:
            return json_object_new_array();
        case CFG_STR_LIST: {
            json_object* items = json_object_new_array();
            const auto* strings = static_cast<char* const*>(value);
            for (size_t i = 0; i < jcp::entryItemCount(entry, sizeof(char*)); ++i) {
                json_object_array_add(
                    items, strings[i] == nullptr ? nullptr : json_object_new_string(strings[i]));
            }
            return items;
        }
        case CFG_INT_LIST: {
            json_object* items = json_object_new_array();
            const auto* ints = static_cast<const int32_t*>(value);
            for (size_t i = 0; i < jcp::entryItemCount(entry, sizeof(int32_t)); ++i)
                json_object_array_add(items, json_object_new_int(ints[i]));
            return items;
        }
        case CFG_OBJECT:
        case CFG_OBJ_ARRAY:
            return nestedEntries(entry);
        default:
            return nullptr;
    }
}

json_object* entryToJson(const apiCfgPlusEntry& entry, bool topLevel) {
    json_object* out = json_object_new_object();
    json_object_object_add(out, "name", json_object_new_string(entry.name ? entry.name : ""));
    json_object_object_add(out, "kind", json_object_new_int(entry.type));
    if (topLevel) {
        json_object_object_add(out, "radio", json_object_new_int(entry.radio));
        json_object_object_add(out, "vns", json_object_new_int(entry.vns));
    }
    if (entry.type == CFG_BYTES) {
        if (const char* record = recordNameOfEntry(entry.name))
            json_object_object_add(out, "record", json_object_new_string(record));
    }
    json_object_object_add(out, "value", entryValue(entry));
    return out;
}

json_object* entriesToJson(const apiCfgPlusEntryArray& array) {
    json_object* entries = json_object_new_array();
    for (int32_t i = 0; i < array.count && array.entries != nullptr; ++i)
        json_object_array_add(entries, entryToJson(array.entries[i], true));
    return entries;
}

// A radio, VNS or meshpoint list, keyed by the numbers its first entry carries.
json_object* listsToJson(int32_t count, const apiCfgPlusEntryArray* arrays, bool withVns) {
    json_object* lists = json_object_new_array();
    for (int32_t i = 0; i < count && arrays != nullptr; ++i) {
        if (arrays[i].count <= 0 || arrays[i].entries == nullptr) continue;
        json_object* list = json_object_new_object();
        json_object_object_add(list, "radio", json_object_new_int(arrays[i].entries[0].radio));
        if (withVns)
            json_object_object_add(list, "vns", json_object_new_int(arrays[i].entries[0].vns));
        json_object_object_add(list, "entries", entriesToJson(arrays[i]));
        json_object_array_add(lists, list);
    }
    return lists;
}

}  // namespace

void printJsonDocument(json_object* document) {
    std::printf("%s\n", json_object_to_json_string_ext(
                            document, JSON_C_TO_STRING_PRETTY | JSON_C_TO_STRING_SPACED |
                                          JSON_C_TO_STRING_NOSLASHESCAPE));
}

JsonPtr resultToJson(const apiCfgPlusResult& result) {
    JsonPtr out(json_object_new_object());
    json_object_object_add(out.get(), "global", entriesToJson(result.global));
    json_object_object_add(out.get(), "radios",
                           listsToJson(result.radioCount, result.radios, false));
    json_object_object_add(out.get(), "vns", listsToJson(result.vnsCount, result.vnsList, true));
    json_object_object_add(out.get(), "meshpoints",
                           listsToJson(result.meshpointCount, result.meshpoints, true));
    return out;
}

JsonPtr buildToJson(const std::string& text, std::vector<LibraryLine>& libraryLines) {
    JsonPtr json;
    LibraryLines collected;
    apiCfgPlusResult* result = parseJsonCfgPlus(text.data(), static_cast<unsigned int>(text.size()),
                                                jsonCfgPlusParserCallback, 0, 0, 0);
    if (result != nullptr) {
        try {
            json = resultToJson(*result);
        } catch (...) {
            freeJsonCfgPlus(result);
            throw;
        }
        freeJsonCfgPlus(result);
    }
    libraryLines = collected.take();
    return json;
}

}  // namespace tool
