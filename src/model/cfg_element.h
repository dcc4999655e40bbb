// SPDX-License-Identifier: MIT
// cfgElement: the named, typed configuration value every build step and converter works on.
#ifndef JSONCFGPLUS_MODEL_CFG_ELEMENT_H
#define JSONCFGPLUS_MODEL_CFG_ELEMENT_H

#include <cstdint>
#include <list>
#include <string>
#include <type_traits>
#include <vector>

#include "../base/export.h"
#include "../base/records.h"

class cfgElement;

// The items of a JSON array of objects, in document order; each item normally of kind 9.
class JCP_EXPORT cfgObjArray : public std::list<cfgElement> {
  public:
    using std::list<cfgElement>::list;
};

class JCP_EXPORT cfgElement {
  public:
    using FreeFn = apiCfgPlusFreeFn;
    using PrintFn = apiCfgPlusPrintFn;

    // A null element (kind 0) with empty strings.
    cfgElement() = default;
    cfgElement(std::string name, int value, std::string key = "", FreeFn freeFn = nullptr,
               PrintFn printFn = nullptr);
    cfgElement(std::string name, std::string value, std::string key = "", FreeFn freeFn = nullptr,
               PrintFn printFn = nullptr);
    // Keeps a string literal from binding to the bool form.
    cfgElement(std::string name, const char* value, std::string key = "", FreeFn freeFn = nullptr,
               PrintFn printFn = nullptr);
    cfgElement(std::string name, bool value, std::string key = "");
    cfgElement(std::string name, std::list<cfgElement> value, std::string key = "",
               FreeFn freeFn = nullptr, PrintFn printFn = nullptr);
    cfgElement(std::string name, cfgObjArray value, std::string key = "", FreeFn freeFn = nullptr,
               PrintFn printFn = nullptr);
    cfgElement(std::string name, std::vector<uint8_t> value, std::string key = "",
               FreeFn freeFn = nullptr, PrintFn printFn = nullptr);
    cfgElement(std::string name, std::list<int> value, std::string key = "",
               FreeFn freeFn = nullptr, PrintFn printFn = nullptr);
    cfgElement(std::string name, std::list<std::string> value, std::string key = "");

    // Kinds without a constructor of their own (the walk makes them).
    static cfgElement makeNull(std::string name, std::string key);
    static cfgElement makeDouble(std::string name, double value, std::string key);
    static cfgElement makeEmptyArray(std::string name, std::string key);

    cfgElement(const cfgElement&) = default;
    // Moves never throw, so containers of elements move them rather than copy them.
    cfgElement(cfgElement&&) noexcept = default;
    cfgElement& operator=(const cfgElement&) = default;
    cfgElement& operator=(cfgElement&&) noexcept = default;
    virtual ~cfgElement();

    // Indented JSON-like text, one line per scalar; never uses the function pointers.
    virtual std::string toString(unsigned int indent) const;

    // Fills entry from this element (type, name, value, size, function pointers), recursing
    // into kinds 9 and 10. radio and vns are left as they are.
    void toApiCfgPlusEntry(apiCfgPlusEntry& entry) const;

    // Converts a whole list into array; an empty list gives count 0 and no entries.
    static void setApiCfgPlusList(const std::list<cfgElement>& list, apiCfgPlusEntryArray* array,
                                  int radio, int vns);
    // The same, releasing each element once its entry is made, so a list and its entries are
    // never both whole in memory. The list ends empty.
    static void setApiCfgPlusList(std::list<cfgElement>&& list, apiCfgPlusEntryArray* array,
                                  int radio, int vns);
    // Releases what one entry owns; an entry's own freeFn takes over the whole release.
    static void freeApiCfgPlusEntry(apiCfgPlusEntry& entry);
    // Releases every entry and the entry block, not the array record itself.
    static void freeApiCfgPlusEntries(apiCfgPlusEntryArray* array);
    // Renders an entry as toString renders an element, or through its printFn.
    static std::string printApiCfgPlusEntry(apiCfgPlusEntry& entry, unsigned int indent);

    cfgElementKind kind = CFG_NULL;
    std::string name;
    std::string key;
    std::string strValue;
    int32_t intValue = 0;
    bool boolValue = false;
    double doubleValue = 0.0;
    std::vector<uint8_t> bytesValue;
    std::list<std::string> strList;
    std::list<int32_t> intList;
    std::list<cfgElement> elements;
    cfgObjArray objArray;
    FreeFn freeFn = nullptr;
    PrintFn printFn = nullptr;
};

using cfgElementList = std::list<cfgElement>;

static_assert(std::is_nothrow_move_constructible<cfgElement>::value &&
                  std::is_nothrow_move_assignable<cfgElement>::value,
              "elements move without copying");
static_assert(std::is_nothrow_move_constructible<cfgObjArray>::value &&
                  std::is_nothrow_move_assignable<cfgObjArray>::value,
              "object arrays move without copying");

#endif
