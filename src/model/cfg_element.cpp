// SPDX-License-Identifier: MIT
// cfgElement construction; every value member not set by a constructor stays zero or empty.
#include "model/cfg_element.h"

#include <utility>

cfgElement::cfgElement(std::string name_, int value, std::string key_, FreeFn freeFn_,
                       PrintFn printFn_)
    : kind(CFG_INT),
      name(std::move(name_)),
      key(std::move(key_)),
      intValue(value),
      freeFn(freeFn_),
      printFn(printFn_) {}

cfgElement::cfgElement(std::string name_, std::string value, std::string key_, FreeFn freeFn_,
                       PrintFn printFn_)
    : kind(CFG_STRING),
      name(std::move(name_)),
      key(std::move(key_)),
      strValue(std::move(value)),
      freeFn(freeFn_),
      printFn(printFn_) {}

cfgElement::cfgElement(std::string name_, const char* value, std::string key_, FreeFn freeFn_,
                       PrintFn printFn_)
    : cfgElement(std::move(name_), std::string(value ? value : ""), std::move(key_), freeFn_,
                 printFn_) {}

cfgElement::cfgElement(std::string name_, bool value, std::string key_)
    : kind(CFG_BOOL), name(std::move(name_)), key(std::move(key_)), boolValue(value) {}

cfgElement::cfgElement(std::string name_, std::list<cfgElement> value, std::string key_,
                       FreeFn freeFn_, PrintFn printFn_)
    : kind(CFG_OBJECT),
      name(std::move(name_)),
      key(std::move(key_)),
      elements(std::move(value)),
      freeFn(freeFn_),
      printFn(printFn_) {}

cfgElement::cfgElement(std::string name_, cfgObjArray value, std::string key_, FreeFn freeFn_,
                       PrintFn printFn_)
    : kind(CFG_OBJ_ARRAY),
      name(std::move(name_)),
      key(std::move(key_)),
      objArray(std::move(value)),
      freeFn(freeFn_),
      printFn(printFn_) {}

cfgElement::cfgElement(std::string name_, std::vector<uint8_t> value, std::string key_,
                       FreeFn freeFn_, PrintFn printFn_)
    : kind(CFG_BYTES),
      name(std::move(name_)),
      key(std::move(key_)),
      bytesValue(std::move(value)),
      freeFn(freeFn_),
      printFn(printFn_) {}

cfgElement::cfgElement(std::string name_, std::list<int> value, std::string key_, FreeFn freeFn_,
                       PrintFn printFn_)
    : kind(CFG_INT_LIST),
      name(std::move(name_)),
      key(std::move(key_)),
      intList(std::move(value)),
      freeFn(freeFn_),
      printFn(printFn_) {}

cfgElement::cfgElement(std::string name_, std::list<std::string> value, std::string key_)
    : kind(CFG_STR_LIST), name(std::move(name_)), key(std::move(key_)), strList(std::move(value)) {}

cfgElement cfgElement::makeNull(std::string name_, std::string key_) {
    cfgElement e;
    e.name = std::move(name_);
    e.key = std::move(key_);
    return e;
}

cfgElement cfgElement::makeDouble(std::string name_, double value, std::string key_) {
    cfgElement e = makeNull(std::move(name_), std::move(key_));
    e.kind = CFG_DOUBLE;
    e.doubleValue = value;
    return e;
}

cfgElement cfgElement::makeEmptyArray(std::string name_, std::string key_) {
    cfgElement e = makeNull(std::move(name_), std::move(key_));
    e.kind = CFG_EMPTY_ARRAY;
    return e;
}

cfgElement::~cfgElement() = default;
