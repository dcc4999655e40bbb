// SPDX-License-Identifier: MIT
// The tree walk that flattens JSON sub-trees into elements named by key paths.
#include <cstring>

#include "document/element_budget.h"
#include "document/json_cfg_plus.h"

namespace {

// The walk's output through the list's name index; every element is charged to the build's
// element budget.
class ElementSink {
  public:
    explicit ElementSink(cfgElementIndex& index) : m_index(index) {}

    void add(cfgElement&& element, bool replace) {
        jcp::chargeElement();
        m_index.add(std::move(element), replace);
    }

  private:
    cfgElementIndex& m_index;
};

const std::list<std::string> kNoKeys;

std::string childPath(const std::string& path, const char* key) {
    if (path.empty()) return key;
    std::string name;
    name.reserve(path.size() + 1 + std::strlen(key));
    return name.append(path).append(1, '/').append(key);
}

// Adds a scalar's element and is true, or is false (path untouched) for objects and arrays.
// The path is taken over as the element's name, so a leaf copies it only for its key.
bool addScalar(json_object* node, std::string&& path, ElementSink& sink) {
    json_type type = json_object_get_type(node);
    if (type == json_type_null) {
        sink.add(cfgElement::makeNull(std::move(path), ""), true);
        return true;
    }
    if (type == json_type_object || type == json_type_array) return false;
    std::string key = path;
    switch (type) {
        case json_type_boolean:
            sink.add(
                cfgElement(std::move(path), json_object_get_boolean(node) != 0, std::move(key)),
                true);
            break;
        case json_type_double:
            sink.add(cfgElement::makeDouble(std::move(path), json_object_get_double(node),
                                            std::move(key)),
                     true);
            break;
        case json_type_int:
            sink.add(cfgElement(std::move(path), static_cast<int>(json_object_get_int(node)),
                                std::move(key)),
                     true);
            break;
        default:
            sink.add(cfgElement(std::move(path),
                                std::string(json_object_get_string(node),
                                            static_cast<size_t>(json_object_get_string_len(node))),
                                std::move(key)),
                     true);
            break;
    }
    return true;
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
            sink.add(cfgElement(std::move(name), std::list<cfgElement>(), std::move(elementKey)),
                     true);
        } else if (child == nullptr) {
            // json-c hands a JSON null member over as a null pointer.
            sink.add(cfgElement::makeNull(std::move(name), ""), true);
        } else if (!addScalar(child, std::move(name), sink)) {
            walkInto(child, name, kNoKeys, kNoKeys, sink);
        }
    }
}

void walkArray(json_object* node, const std::string& path, ElementSink& sink) {
    size_t length = json_object_array_length(node);
    if (length == 0) {
        sink.add(cfgElement::makeEmptyArray(path, path), true);
        return;
    }
    std::list<std::string> strings;
    if (jsonCfgPlus::isStrList(node, strings)) {
        sink.add(cfgElement(path, std::move(strings), path), true);
        return;
    }
    std::list<int> ints;
    if (jsonCfgPlus::isIntList(node, ints)) {
        sink.add(cfgElement(path, std::move(ints), path), true);
        return;
    }
    cfgObjArray items;
    for (size_t i = 0; i < length; ++i) {
        json_object* member = json_object_array_get_idx(node, i);
        if (member == nullptr) continue;
        // Each item is built where it will stay.
        items.emplace_back("", std::list<cfgElement>(), "");
        cfgElementIndex itemIndex(items.back().elements);
        ElementSink itemSink(itemIndex);
        walkInto(member, path, kNoKeys, kNoKeys, itemSink);
    }
    sink.add(cfgElement(path, std::move(items), path), true);
}

void walkInto(json_object* node, const std::string& path, const std::list<std::string>& include,
              const std::list<std::string>& exclude, ElementSink& sink) {
    if (node == nullptr) return;
    switch (json_object_get_type(node)) {
        case json_type_object:
            walkObject(node, path, include, exclude, sink);
            break;
        case json_type_array:
            walkArray(node, path, sink);
            break;
        default:
            addScalar(node, std::string(path), sink);
            break;
    }
}

}  // namespace

void jsonCfgPlus::walk(json_object* node, const std::string& path,
                       const std::list<std::string>& include, const std::list<std::string>& exclude,
                       std::list<cfgElement>& out) {
    if (node == nullptr) return;
    cfgElementIndex index(out);
    ElementSink sink(index);
    walkInto(node, path, include, exclude, sink);
}

void jsonCfgPlus::walk(json_object* node, const std::string& path,
                       const std::list<std::string>& include, const std::list<std::string>& exclude,
                       cfgElementIndex& out) {
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
