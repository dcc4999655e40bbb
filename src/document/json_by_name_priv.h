// SPDX-License-Identifier: MIT
// jsonByName: the objects of a JSON array found by a string member in constant time.
#ifndef JSONCFGPLUS_DOCUMENT_JSON_BY_NAME_PRIV_H
#define JSONCFGPLUS_DOCUMENT_JSON_BY_NAME_PRIV_H

#include <json-c/json.h>

#include <string>
#include <unordered_map>

namespace jcp {

// Finds what jsonCfgObj::getJsonObject(keyField, value, array) finds: the first object whose
// string member keyField equals value. The index is made on the first look-up, so an array
// nobody searches costs nothing.
class jsonByName {
  public:
    jsonByName(json_object* array, std::string keyField);
    json_object* find(const std::string& value) const;

  private:
    json_object* m_array;
    std::string m_keyField;
    mutable bool m_indexed = false;
    mutable std::unordered_map<std::string, json_object*> m_index;
};

}  // namespace jcp

#endif
