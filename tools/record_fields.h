// Field-by-field descriptions of the AP's fixed records, so the tool can show and compare
// them by field. A new record needs only a RecordType and a line in the entry table.
#ifndef JSONCFGPLUS_TOOLS_RECORD_FIELDS_H
#define JSONCFGPLUS_TOOLS_RECORD_FIELDS_H

#include <json-c/json.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tool {

enum class FieldFormat {
    Signed,            // little-endian two's complement
    Unsigned,          // little-endian
    Bool,              // non-zero is true
    Ipv4HostOrder,     // a 32-bit number, shown dotted
    Ipv4NetworkOrder,  // four bytes in address order, shown dotted
    Text,              // zero-terminated within the field
    Hex,               // raw bytes
    Records,           // nested records of FieldDesc::nested
};

struct RecordType;

struct FieldDesc {
    const char* name;
    size_t offset;
    size_t width;  // of one item
    FieldFormat format;
    size_t count = 1;                    // more than 1: an array of that capacity
    const char* countField = nullptr;    // the field saying how many array items are in use
    const RecordType* nested = nullptr;  // for Records
};

struct RecordType {
    const char* name;
    size_t size;
    std::vector<FieldDesc> fields;
};

// The record type an entry carries, by the entry's name; null when it carries none.
const RecordType* recordTypeOfEntry(const char* entryName);
// Every whole record in the bytes, each an object of its fields, in field order.
json_object* decodeRecords(const RecordType& type, const uint8_t* bytes, size_t size);

}  // namespace tool

#endif
