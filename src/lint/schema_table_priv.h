// SPDX-License-Identifier: MIT
// The document's schema as one table: for each kind of object, the members the build and the
// converters read, with their JSON type, range or text format, enumeration and reference. lint
// applies it to a document; the schema command exports it as JSON Schema.
#ifndef JSONCFGPLUS_LINT_SCHEMA_TABLE_PRIV_H
#define JSONCFGPLUS_LINT_SCHEMA_TABLE_PRIV_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace jcp::schema {

enum class Type { Integer, Boolean, String, Object, Array };

// What a string (or every string of a string array) must look like.
enum class Format {
    None,
    Mac,          // six hexadecimal pairs separated by ":"
    RuleMac,      // six hexadecimal pairs separated by "-" (filter rules)
    Ipv4,         // dotted IPv4 address
    IpPrefix,     // IPv4 or IPv6 address, optionally "/length"
    Channel,      // a channel number in decimal, read by a base-10 conversion
    ChannelList,  // channel numbers separated by commas
    Ssid,         // 1 to 32 octets
    Country,      // ISO 3166 alpha-2 code
    Mcc,          // 3 digits
    Mnc,          // 2 or 3 digits
    Language,     // ISO 639 code of 2 or 3 letters
    Digits,       // a number written in decimal digits
};

struct Range {
    int64_t min = 0;
    int64_t max = -1;  // min > max: no range
    // What the AP does with a value outside the range; null when it keeps it as written (then
    // the range is the standard's and a value outside it only a warning).
    const char* outside = nullptr;
    bool present() const { return min <= max; }
};

struct Kind;

struct Member {
    Member(const char* name_, Type type_, Type items_ = Type::Object)
        : name(name_), type(type_), items(items_) {}

    const char* name;
    Type type;
    Type items = Type::Object;     // an Array's items
    const Kind* kind = nullptr;    // an Object's members, or those of an Array's objects
    Range range;                   // an Integer, or an Array of integers
    Format format = Format::None;  // a String, or an Array of strings
    const std::vector<std::string>* values = nullptr;  // the values with a meaning
    const char* reference = nullptr;                   // the top-level object a name must name
    const char* otherwise = nullptr;  // what the AP does with a value not in values
    // Other JSON types the AP also takes, for the value and for an Array's items (a code as a
    // number, a single object for a list of one); a bit per Type.
    unsigned also = 0;

    Member& alsoAs(Type other) {
        also |= 1u << static_cast<unsigned>(other);
        return *this;
    }
    Member& written(Format text) {
        format = text;
        return *this;
    }
    Member& within(Range limits) {
        range = limits;
        return *this;
    }
    bool takes(Type other) const { return (also & (1u << static_cast<unsigned>(other))) != 0; }
};

// A text member whose values depend on another: when member "when" is the text "is", the
// text member "then" must be one of values.
struct Condition {
    const char* when;
    const char* is;
    const char* then;
    const std::vector<std::string>* values;
};

struct Kind {
    const char* name;  // the $defs name in the exported schema
    std::vector<Member> members;
    // Complete: every member the AP reads is listed, so any other is reported as unknown.
    // Otherwise the AP forwards members it does not read itself, and only near misses of a
    // listed member are reported.
    bool complete;
    std::vector<Condition> conditions = {};
};

// A top-level member: a table of named objects (an array, or an object keyed by name), or a
// single value.
struct TopLevel {
    const char* name;
    const Kind* kind;   // null for a single value
    Type type;          // a single value's type
    bool singleObject;  // "device": the object itself or an array whose first item is used
    bool named;         // an item is used only when something names it
};

const std::vector<TopLevel>& topLevel();
// Every kind, each once, in the order the schema lists them.
const std::vector<const Kind*>& kinds();
// The interface items' members, by the role the build gives the item.
const Kind& interfaceKind();

const char* typeText(Type type);  // "an integer", ...
// The JSON types a value of the member may have, the given one first.
std::vector<Type> typesOf(const Member& member, Type first);
// Whether text has the format; why not in because ("" when it has).
bool hasFormat(const std::string& text, Format format, std::string& because);
// One line on what the format is, for messages and the schema's descriptions.
const char* formatText(Format format);
// The JSON Schema pattern of the format, or null when it has none.
const char* formatPattern(Format format);

}  // namespace jcp::schema

#endif
