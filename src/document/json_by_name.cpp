// SPDX-License-Identifier: MIT
// Name index over a JSON array of objects.
#include "document/json_by_name_priv.h"

#include <utility>

#include "document/json_cfg_all.h"

namespace jcp {

jsonByName::jsonByName(json_object* array, std::string keyField)
    : m_array(array), m_keyField(std::move(keyField)) {}

json_object* jsonByName::find(const std::string& value) const {
    if (m_array == nullptr || !json_object_is_type(m_array, json_type_array)) return nullptr;
    if (!m_indexed) {
        m_indexed = true;
        size_t length = json_object_array_length(m_array);
        m_index.reserve(length);
        for (size_t i = 0; i < length; ++i) {
            json_object* item = json_object_array_get_idx(m_array, i);
            std::string name;
            if (jsonCfgObj::getJsonStrValue(m_keyField, item, name))
                m_index.emplace(std::move(name), item);
        }
    }
    auto found = m_index.find(value);
    return found == m_index.end() ? nullptr : found->second;
}

}  // namespace jcp
