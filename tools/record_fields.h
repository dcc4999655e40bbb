// SPDX-License-Identifier: MIT
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
    Ipv6,              // sixteen bytes in address order, shown as hex groups
    Mac,               // six bytes, shown "00:11:22:33:44:55"
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

// The name of the record an entry carries (of its head record when it has one), by the
// entry's name; null when it carries none.
const char* recordNameOfEntry(const char* entryName);
// The entry's bytes decoded: an array of its records, each an object of its fields in field
// order; for a value with a head record, an object of the head's fields, "records" and "data"
// (the bytes after the records, in hex). Null when the entry carries no record.
json_object* decodeEntryRecords(const char* entryName, const uint8_t* bytes, size_t size);

}  // namespace tool

#endif
