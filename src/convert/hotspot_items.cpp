// SPDX-License-Identifier: MIT
// Helpers of the Hotspot 2.0 converters: list items, fields, texts and warnings.
#include <algorithm>
#include <cstring>

#include "base/build_events_priv.h"
#include "base/control_escape_priv.h"
#include "base/diag.h"
#include "convert/hotspot_priv.h"
#include "convert/rule_fields_priv.h"

namespace jcp {
namespace hs2 {

namespace {

const ElementList kNoFields;

const char* kindName(cfgElementKind kind) {
    switch (kind) {
        case CFG_NULL:
            return "null";
        case CFG_BOOL:
            return "a boolean";
        case CFG_DOUBLE:
        case CFG_INT:
            return "a number";
        case CFG_STRING:
            return "a text";
        case CFG_STR_LIST:
        case CFG_INT_LIST:
            return "a list of scalars";
        default:
            return "a value of another type";
    }
}

}  // namespace

std::vector<Item> items(const ElementList& list, const std::string& name) {
    std::vector<Item> out;
    const cfgElement* element = nullptr;
    for (const cfgElement& e : list) {
        if (e.name == name) {
            element = &e;
            break;
        }
    }
    if (element == nullptr) {
        // A single object flattens into the list itself, its fields named name + "/...".
        const std::string inner = name + "/";
        bool given = std::any_of(list.begin(), list.end(), [&](const cfgElement& e) {
            return e.name.compare(0, inner.size(), inner) == 0;
        });
        if (given) out.push_back(Item{&list, name, name, true});
        return out;
    }
    if (element->kind == CFG_EMPTY_ARRAY || element->kind == CFG_OBJECT) return out;
    if (element->kind != CFG_OBJ_ARRAY) {
        warn(name, std::string("expected a list of objects, got ") + kindName(element->kind) +
                       "; ignored");
        return out;
    }
    size_t index = 0;
    for (const cfgElement& entry : element->objArray) {
        std::string item = name + "[" + std::to_string(index++) + "]";
        // A scalar among the objects becomes an item holding one element named the list.
        bool object = entry.kind == CFG_OBJECT &&
                      std::none_of(entry.elements.begin(), entry.elements.end(),
                                   [&](const cfgElement& e) { return e.name == name; });
        out.push_back(Item{object ? &entry.elements : &kNoFields, name, item, object});
    }
    return out;
}

bool usable(const Item& item) {
    if (!item.object) warn(item.name, "not an object, dropped");
    return item.object;
}

const cfgElement* field(const ElementList& fields, const std::string& prefix, const char* key) {
    const std::string name = prefix + "/" + key;
    for (const cfgElement& e : fields) {
        if (e.name == name) return &e;
    }
    return nullptr;
}

void warn(const std::string& item, const std::string& what, EventKind kind) {
    diag("[WARN] ", escapeControls(item, ControlEscape::jsonUnicode, false), ": ",
         escapeControls(what, ControlEscape::jsonUnicode, false));
    reportEvent(kind, item, what);
}

void warnCut(const std::string& item, size_t max) {
    diag("[WARN] ", item, ": the list holds at most ", max, ", this and later items dropped");
    reportEvent(EventKind::dropped, item,
                "the list holds at most " + std::to_string(max) + ", this and later items dropped");
}

bool copyText(char* field, size_t size, const std::string& text) {
    if (text.size() >= size || text.find('\0') != std::string::npos) return false;
    std::memset(field, 0, size);
    std::memcpy(field, text.data(), text.size());
    return true;
}

bool copyName(char* field, size_t size, const std::string& text) {
    std::string name = text.substr(0, text.find('\0'));
    bool cut = name.size() >= size;
    if (cut) {
        size_t end = size - 1;
        // Back over continuation bytes, so no character is split.
        while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end;
        name.resize(end);
    }
    copyText(field, size, name);
    return cut || name.size() != text.size();
}

std::string misfit(const std::string& text, size_t size) {
    if (text.find('\0') != std::string::npos) return "holds a zero byte";
    return "is longer than " + std::to_string(size - 1) + " octets";
}

std::string quoted(const std::string& text) {
    return "\"" + escapeControls(text, ControlEscape::jsonUnicode, true) + "\"";
}

int lookup(const naiEapTable& table, const std::string& name) {
    for (const auto& row : table) {
        if (row.first == name) return row.second;
    }
    return -1;
}

std::string shown(const cfgElement& element) {
    switch (element.kind) {
        case CFG_STRING: {
            // A warning line stays readable however long the text is.
            constexpr size_t kShown = 64;
            if (element.strValue.size() <= kShown) return quoted(element.strValue);
            return "\"" +
                   escapeControls(element.strValue.substr(0, kShown), ControlEscape::jsonUnicode,
                                  true) +
                   "...\" (" + std::to_string(element.strValue.size()) + " octets)";
        }
        case CFG_INT:
        case CFG_BOOL:
        case CFG_DOUBLE:
            return elementText(element);
        default:
            return kindName(element.kind);
    }
}

void store(ElementList& list, cfgElement element) {
    for (cfgElement& e : list) {
        if (e.name == element.name) {
            e = std::move(element);
            return;
        }
    }
    list.push_back(std::move(element));
}

}  // namespace hs2
}  // namespace jcp
