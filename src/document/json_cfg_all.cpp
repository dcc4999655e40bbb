// SPDX-License-Identifier: MIT
// Top-level object table and typed JSON getters.
#include "document/json_cfg_all.h"

#include <cstring>

#include "base/diag.h"

namespace {

// The member value, or null when it is missing (a JSON null member also reads as null).
json_object* memberOf(json_object* obj, const char* key) {
    json_object* value = nullptr;
    if (!json_object_object_get_ex(obj, key, &value)) return nullptr;
    return value;
}

template <typename T, typename Read>
bool readTyped(json_object* value, json_type type, T& out, Read read) {
    if (value == nullptr || !json_object_is_type(value, type)) return false;
    out = read(value);
    return true;
}

std::string stringOf(json_object* value) {
    return std::string(json_object_get_string(value),
                       static_cast<size_t>(json_object_get_string_len(value)));
}

json_object* followPath(const std::list<std::string>& keys, json_object* obj) {
    for (const std::string& key : keys) {
        obj = jsonCfgObj::getJsonObject(key, obj);
        if (obj == nullptr) return nullptr;
    }
    return obj;
}

}  // namespace

jsonCfgObj::jsonCfgObj(std::string name, json_object* json, std::string keyField)
    : m_name(std::move(name)),
      m_json(json),
      m_keyField(std::move(keyField)),
      m_type(json != nullptr ? json_object_get_type(json) : json_type_null) {
    if (json == nullptr) return;
    if (m_type == json_type_object) {
        json_object_object_foreach(json, key, value) {
            m_index.emplace(key, value);
        }
    } else if (m_type == json_type_array) {
        if (m_keyField.empty()) return;
        size_t length = json_object_array_length(json);
        for (size_t i = 0; i < length; ++i) {
            json_object* item = json_object_array_get_idx(json, i);
            if (!json_object_is_type(item, json_type_object)) continue;
            std::string itemName;
            if (getJsonStrValue(m_keyField, item, itemName)) m_index.emplace(itemName, item);
        }
    } else {
        m_index.emplace(m_name, json);
    }
}

jsonCfgObj::~jsonCfgObj() = default;

json_object* jsonCfgObj::findJsonElement(const std::string& name) const {
    if (m_type != json_type_object && m_type != json_type_array) return m_json;
    auto found = m_index.find(name);
    return found == m_index.end() ? nullptr : found->second;
}

json_object* jsonCfgObj::findJsonElement(unsigned int index) const {
    if (m_type == json_type_object) return index == 0 ? m_json : nullptr;
    if (m_type == json_type_array) {
        if (index >= json_object_array_length(m_json)) return nullptr;
        return json_object_array_get_idx(m_json, index);
    }
    return nullptr;
}

bool jsonCfgObj::findJsonStrValue(const std::string& name, std::string& out) const {
    return readTyped(findJsonElement(name), json_type_string, out, stringOf);
}

bool jsonCfgObj::findJsonIntValue(const std::string& name, int& out) const {
    return readTyped(findJsonElement(name), json_type_int, out, json_object_get_int);
}

bool jsonCfgObj::findJsonBoolValue(const std::string& name, bool& out) const {
    return readTyped(findJsonElement(name), json_type_boolean, out,
                     [](json_object* v) { return json_object_get_boolean(v) != 0; });
}

json_object* jsonCfgObj::getJsonObject(const std::string& key, json_object* obj) {
    if (obj == nullptr || !json_object_is_type(obj, json_type_object)) return nullptr;
    return memberOf(obj, key.c_str());
}

json_object* jsonCfgObj::getJsonObject(const std::string& keyField, const std::string& value,
                                       json_object* array) {
    if (array == nullptr || !json_object_is_type(array, json_type_array)) return nullptr;
    size_t length = json_object_array_length(array);
    for (size_t i = 0; i < length; ++i) {
        json_object* item = json_object_array_get_idx(array, i);
        std::string itemValue;
        if (getJsonStrValue(keyField, item, itemValue) && itemValue == value) return item;
    }
    return nullptr;
}

bool jsonCfgObj::getJsonStrValue(const std::string& key, json_object* obj, std::string& out) {
    return readTyped(getJsonObject(key, obj), json_type_string, out, stringOf);
}

bool jsonCfgObj::getJsonStrValue(const std::list<std::string>& keys, json_object* obj,
                                 std::string& out) {
    return readTyped(followPath(keys, obj), json_type_string, out, stringOf);
}

bool jsonCfgObj::getJsonIntValue(const std::string& key, json_object* obj, int& out) {
    return readTyped(getJsonObject(key, obj), json_type_int, out, json_object_get_int);
}

bool jsonCfgObj::getJsonIntValue(const std::list<std::string>& keys, json_object* obj, int& out) {
    return readTyped(followPath(keys, obj), json_type_int, out, json_object_get_int);
}

bool jsonCfgObj::getJsonBoolValue(const std::string& key, json_object* obj, bool& out) {
    return readTyped(getJsonObject(key, obj), json_type_boolean, out,
                     [](json_object* v) { return json_object_get_boolean(v) != 0; });
}

bool jsonCfgObj::getJsonBoolValue(const std::list<std::string>& keys, json_object* obj, bool& out) {
    return readTyped(followPath(keys, obj), json_type_boolean, out,
                     [](json_object* v) { return json_object_get_boolean(v) != 0; });
}

std::string jsonCfgObj::toString() const {
    if (m_json == nullptr) return m_name + ": null";
    std::string out = m_name + (m_type == json_type_array ? ": [\n" : ": \n");
    for (const auto& [name, value] : m_index) {
        out += "  " + name + ": ";
        out += json_object_to_json_string_ext(value, JSON_C_TO_STRING_PLAIN);
        out += '\n';
    }
    if (m_type == json_type_array) out += "]\n";
    return out;
}

jsonCfgAll::~jsonCfgAll() {
    jsonCfgAll::reset();
}

void jsonCfgAll::reset() {
    m_table.clear();
    if (m_root != nullptr) json_object_put(m_root);
    m_root = nullptr;
}

void jsonCfgAll::build(json_object* root) {
    reset();
    m_root = root;
    jcp::diag("build top level look-up table...");
    if (root == nullptr || !json_object_is_type(root, json_type_object)) return;
    json_object_object_foreach(root, key, value) {
        if (m_table.count(key) == 0)
            m_table.emplace(key, std::make_unique<jsonCfgObj>(key, value, "name"));
    }
}

jsonCfgObj* jsonCfgAll::findCfgObject(const std::string& name) const {
    auto found = m_table.find(name);
    return found == m_table.end() ? nullptr : found->second.get();
}

json_object* jsonCfgAll::resolveRelationship(json_object* from, const std::string& refKey,
                                             const std::string& target) const {
    jsonCfgObj* targetObj = findCfgObject(target);
    if (targetObj == nullptr || from == nullptr) return nullptr;
    std::string name;
    if (!jsonCfgObj::getJsonStrValue(refKey, from, name)) return nullptr;
    return targetObj->findJsonElement(name);
}

json_object* jsonCfgAll::resolveRelationship(const std::string& fromName, const std::string& refKey,
                                             const std::string& target) const {
    jsonCfgObj* fromObj = findCfgObject(fromName);
    if (fromObj == nullptr || findCfgObject(target) == nullptr) return nullptr;
    return resolveRelationship(fromObj->json(), refKey, target);
}

json_object* jsonCfgAll::resolveRelationship(const std::string& elementName,
                                             const std::string& target) const {
    jsonCfgObj* targetObj = findCfgObject(target);
    return targetObj == nullptr ? nullptr : targetObj->findJsonElement(elementName);
}
