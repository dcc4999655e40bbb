// The tree walk that flattens JSON sub-trees into elements named by key paths.
#include <unordered_map>

#include "document/element_budget.h"
#include "document/json_cfg_plus.h"

namespace {

// The walk's output list with a name index, so adding by name stays linear in the number of
// elements however large the object. Equivalent to addCfgElement with replace true.
class ElementSink {
  public:
    explicit ElementSink(std::list<cfgElement>& list) : m_list(list) {
        for (auto it = m_list.begin(); it != m_list.end(); ++it) m_index.emplace(it->name, it);
    }

    void add(cfgElement&& element) {
        jcp::chargeElement();
        auto found = m_index.find(element.name);
        if (found != m_index.end()) {
            *found->second = std::move(element);
            return;
        }
        m_list.push_back(std::move(element));
        m_index.emplace(m_list.back().name, std::prev(m_list.end()));
    }

  private:
    std::list<cfgElement>& m_list;
    std::unordered_map<std::string, std::list<cfgElement>::iterator> m_index;
};

const std::list<std::string> kNoKeys;

std::string childPath(const std::string& path, const char* key) {
    return path.empty() ? std::string(key) : path + "/" + key;
}

// Recursion depth is bounded by the tokener's nesting limit (json-c's default of 32).
void walkInto(json_object* node, const std::string& path, const std::list<std::string>& include,
              const std::list<std::string>& exclude, ElementSink& sink);

void walkObject(json_object* node, const std::string& path, const std::list<std::string>& include,
                const std::list<std::string>& exclude, ElementSink& sink) {
    json_object_object_foreach(node, key, child) {
        if (!include.empty()) {
            if (!jsonCfgPlus::inList(key, include)) continue;
        } else if (jsonCfgPlus::inList(key, exclude)) {
            continue;
        }
        std::string name = childPath(path, key);
        if (jsonCfgPlus::isEmptyObj(child)) {
            std::string elementKey = name;
            sink.add(cfgElement(std::move(name), std::list<cfgElement>(), std::move(elementKey)));
        } else if (child == nullptr) {
            // json-c hands a JSON null member over as a null pointer.
            sink.add(cfgElement::makeNull(std::move(name), ""));
        } else {
            walkInto(child, name, kNoKeys, kNoKeys, sink);
        }
    }
}

void walkArray(json_object* node, const std::string& path, ElementSink& sink) {
    size_t length = json_object_array_length(node);
    if (length == 0) {
        sink.add(cfgElement::makeEmptyArray(path, path));
        return;
    }
    std::list<std::string> strings;
    if (jsonCfgPlus::isStrList(node, strings)) {
        sink.add(cfgElement(path, std::move(strings), path));
        return;
    }
    std::list<int> ints;
    if (jsonCfgPlus::isIntList(node, ints)) {
        sink.add(cfgElement(path, std::move(ints), path));
        return;
    }
    cfgObjArray items;
    for (size_t i = 0; i < length; ++i) {
        json_object* member = json_object_array_get_idx(node, i);
        if (member == nullptr) continue;
        std::list<cfgElement> itemElements;
        ElementSink itemSink(itemElements);
        walkInto(member, path, kNoKeys, kNoKeys, itemSink);
        items.emplace_back("", std::move(itemElements), "");
    }
    sink.add(cfgElement(path, std::move(items), path));
}

void walkInto(json_object* node, const std::string& path, const std::list<std::string>& include,
              const std::list<std::string>& exclude, ElementSink& sink) {
    if (node == nullptr) return;
    switch (json_object_get_type(node)) {
        case json_type_null:
            sink.add(cfgElement::makeNull(path, ""));
            break;
        case json_type_boolean:
            sink.add(cfgElement(path, json_object_get_boolean(node) != 0, path));
            break;
        case json_type_double:
            sink.add(cfgElement::makeDouble(path, json_object_get_double(node), path));
            break;
        case json_type_int:
            sink.add(cfgElement(path, static_cast<int>(json_object_get_int(node)), path));
            break;
        case json_type_string:
            sink.add(cfgElement(path,
                                std::string(json_object_get_string(node),
                                            static_cast<size_t>(json_object_get_string_len(node))),
                                path));
            break;
        case json_type_object:
            walkObject(node, path, include, exclude, sink);
            break;
        case json_type_array:
            walkArray(node, path, sink);
            break;
    }
}

}  // namespace

void jsonCfgPlus::walk(json_object* node, const std::string& path,
                       const std::list<std::string>& include, const std::list<std::string>& exclude,
                       std::list<cfgElement>& out) {
    if (node == nullptr) return;
    ElementSink sink(out);
    walkInto(node, path, include, exclude, sink);
}

void jsonCfgPlus::addCfgElement(std::list<cfgElement>& list, cfgElement element, bool replace) {
    for (cfgElement& existing : list) {
        if (existing.name == element.name) {
            if (replace) existing = std::move(element);
            return;
        }
    }
    list.push_back(std::move(element));
}

bool jsonCfgPlus::inList(std::string key, const std::list<std::string>& list) {
    for (const std::string& entry : list) {
        if (entry == key) return true;
    }
    return false;
}
