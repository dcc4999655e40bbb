// SPDX-License-Identifier: MIT
// Text rendering of elements and of entries, in the same JSON-like shape so the two dumps
// compare line by line.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "model/cfg_element.h"
#include "model/entry_items.h"

namespace {

void appendIndent(std::string& out, unsigned int indent) {
    out.append(2 * size_t(indent), ' ');
}

void appendPrefix(std::string& out, unsigned int indent, const char* name) {
    appendIndent(out, indent);
    out += '"';
    out += name;
    out += "\": ";
}

void appendDouble(std::string& out, double value) {
    char buf[512];  // "%f" of the largest double needs 317 characters
    std::snprintf(buf, sizeof buf, "%f", value);
    out += buf;
}

void appendHexBytes(std::string& out, const uint8_t* bytes, size_t count) {
    if (count == 0) {
        out += "<NULL>";
        return;
    }
    static const char kHex[] = "0123456789ABCDEF";
    out += "0x";
    for (size_t i = 0; i < count; ++i) {
        out += kHex[bytes[i] >> 4];
        out += kHex[bytes[i] & 0x0F];
    }
}

// Renders "[a,b,c]" or "[ ]" from a count and a function writing item i.
template <typename WriteItem>
void appendFlatList(std::string& out, size_t count, WriteItem writeItem) {
    if (count == 0) {
        out += "[ ]";
        return;
    }
    out += '[';
    for (size_t i = 0; i < count; ++i) {
        if (i > 0) out += ',';
        writeItem(i);
    }
    out += ']';
}

// Renders a nested block: open, items at indent + 1 joined by ",\n", close at indent.
template <typename RenderItem>
void appendNested(std::string& out, size_t count, unsigned int indent, const char* open,
                  const char* close, const char* empty, RenderItem renderItem) {
    if (count == 0) {
        out += empty;
        return;
    }
    out += open;
    out += '\n';
    for (size_t i = 0; i < count; ++i) {
        if (i > 0) out += ",\n";
        renderItem(i, indent + 1);
    }
    out += '\n';
    appendIndent(out, indent);
    out += close;
}

}  // namespace

std::string cfgElement::toString(unsigned int indent) const {
    std::string out;
    appendPrefix(out, indent, name.c_str());
    switch (kind) {
        case CFG_NULL:
            out += "null";
            break;
        case CFG_BOOL:
            out += boolValue ? "true" : "false";
            break;
        case CFG_DOUBLE:
            appendDouble(out, doubleValue);
            break;
        case CFG_INT:
            out += std::to_string(intValue);
            break;
        case CFG_STRING:
            out += '"';
            out += strValue;
            out += '"';
            break;
        case CFG_BYTES:
            appendHexBytes(out, bytesValue.data(), bytesValue.size());
            break;
        case CFG_EMPTY_ARRAY:
            out += "[ ]";
            break;
        case CFG_STR_LIST: {
            auto it = strList.begin();
            appendFlatList(out, strList.size(), [&](size_t) {
                out += '"';
                out += *it++;
                out += '"';
            });
            break;
        }
        case CFG_INT_LIST: {
            auto it = intList.begin();
            appendFlatList(out, intList.size(), [&](size_t) { out += std::to_string(*it++); });
            break;
        }
        case CFG_OBJECT: {
            auto it = elements.begin();
            appendNested(out, elements.size(), indent, "{", "}", "{ }",
                         [&](size_t, unsigned int inner) { out += (it++)->toString(inner); });
            break;
        }
        case CFG_OBJ_ARRAY: {
            auto it = objArray.begin();
            appendNested(out, objArray.size(), indent, "[", "]", "[ ]",
                         [&](size_t, unsigned int inner) { out += (it++)->toString(inner); });
            break;
        }
    }
    return out;
}

std::string cfgElement::printApiCfgPlusEntry(apiCfgPlusEntry& entry, unsigned int indent) {
    if (entry.printFn != nullptr) {
        char* text = entry.printFn(&entry, indent);
        std::string out = text != nullptr ? text : "";
        std::free(text);
        return out;
    }
    std::string out;
    appendPrefix(out, indent, entry.name != nullptr ? entry.name : "");
    const void* value = entry.value;
    switch (entry.type) {
        case CFG_BOOL:
            out += value != nullptr && *static_cast<const int32_t*>(value) != 0 ? "true" : "false";
            break;
        case CFG_DOUBLE:
            if (value != nullptr) appendDouble(out, *static_cast<const double*>(value));
            break;
        case CFG_INT:
            if (value != nullptr) out += std::to_string(*static_cast<const int32_t*>(value));
            break;
        case CFG_STRING:
            out += '"';
            if (value != nullptr) out += static_cast<const char*>(value);
            out += '"';
            break;
        case CFG_BYTES:
            appendHexBytes(out, static_cast<const uint8_t*>(value), jcp::entryItemCount(entry, 1));
            break;
        case CFG_EMPTY_ARRAY:
            out += "[ ]";
            break;
        case CFG_STR_LIST: {
            auto* strings = static_cast<char* const*>(value);
            appendFlatList(out, jcp::entryItemCount(entry, sizeof(char*)), [&](size_t i) {
                out += '"';
                if (strings[i] != nullptr) out += strings[i];
                out += '"';
            });
            break;
        }
        case CFG_INT_LIST: {
            auto* ints = static_cast<const int32_t*>(value);
            appendFlatList(out, jcp::entryItemCount(entry, sizeof(int32_t)),
                           [&](size_t i) { out += std::to_string(ints[i]); });
            break;
        }
        case CFG_OBJECT:
        case CFG_OBJ_ARRAY: {
            auto* nested = static_cast<apiCfgPlusEntry*>(entry.value);
            bool object = entry.type == CFG_OBJECT;
            appendNested(out, jcp::entryItemCount(entry, sizeof(apiCfgPlusEntry)), indent,
                         object ? "{" : "[", object ? "}" : "]", object ? "{ }" : "[ ]",
                         [&](size_t i, unsigned int inner) {
                             out += printApiCfgPlusEntry(nested[i], inner);
                         });
            break;
        }
        default:  // kind 0 and any kind outside 0..10
            out += "null";
            break;
    }
    return out;
}
