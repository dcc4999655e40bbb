// SPDX-License-Identifier: MIT
// What the Hotspot 2.0 converters share: reading the items of a Passpoint list, fitting texts
// into record fields, warnings that name the dropped item, and storing the record lists.
#ifndef JSONCFGPLUS_CONVERT_HOTSPOT_PRIV_H
#define JSONCFGPLUS_CONVERT_HOTSPOT_PRIV_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <list>
#include <string>
#include <vector>

#include "base/build_events_priv.h"
#include "convert/converter.h"
#include "convert/eap_tables.h"
#include "model/cfg_element.h"

namespace jcp {
namespace hs2 {

using ElementList = std::list<cfgElement>;

// One object of a list: the list its fields are found in, the path they are named under, and
// the name warnings give it ("passpoint_policy/plmnid[1]").
struct Item {
    const ElementList* fields;  // empty for an item that is not an object
    std::string prefix;
    std::string name;
    bool object;
};

// The items of the list element `name` in list, in document order: those of an array, or the
// one object given in its place. A value that is no list is warned about and gives none.
std::vector<Item> items(const ElementList& list, const std::string& name);
// True for an object; otherwise warns that the item is dropped, so warnings keep document order.
bool usable(const Item& item);

// The field prefix + "/" + key, or null.
const cfgElement* field(const ElementList& fields, const std::string& prefix, const char* key);

// One "[WARN]" line; a control byte in it, from a document text, is shown escaped ("\u0000").
// The same is reported as an event of the kind given.
void warn(const std::string& item, const std::string& what, EventKind kind = EventKind::dropped);
// Warns that item and the ones after it are dropped, the list holding at most max.
void warnCut(const std::string& item, size_t max);

// Copies text into a field of `size` bytes, zero-padded; false, writing nothing, when text
// does not leave room for the terminator or holds a zero byte.
bool copyText(char* field, size_t size, const std::string& text);
// Like copyText, but a text too long is cut at a UTF-8 character boundary, and one holding a
// zero byte at it; true when cut.
bool copyName(char* field, size_t size, const std::string& text);
// Why copyText refuses text for a field of `size` bytes: "holds a zero byte" or "is longer
// than N octets".
std::string misfit(const std::string& text, size_t size);

// The value of name in table, or -1.
int lookup(const naiEapTable& table, const std::string& name);
// A document text in double quotes, with '"', '\\' and control bytes escaped as in JSON.
std::string quoted(const std::string& text);
// A quoted rendering of an element's value for a warning.
std::string shown(const cfgElement& element);

template <typename Record>
void append(std::vector<uint8_t>& bytes, const Record& record) {
    const auto* raw = reinterpret_cast<const uint8_t*>(&record);
    bytes.insert(bytes.end(), raw, raw + sizeof record);
}

// The name duples of list `from` in the WLAN as NAME_LANG records under `to`.
void nameList(cfgPlusApiConverter& converter, ElementList& wlan, const std::string& from,
              const std::string& to);

// Puts element into list, over one of the same name where it stands, else at the end.
void store(ElementList& list, cfgElement element);

}  // namespace hs2
}  // namespace jcp

#endif
