// SPDX-License-Identifier: MIT
// Printers of converted elements: IPv4 numbers, MAC addresses, octet strings.
#include "convert/element_print.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "addr/ip_addr.h"
#include "addr/mac_addr.h"
#include "model/entry_items.h"

namespace jcp {

std::string entryPrefix(const apiCfgPlusEntry* entry, unsigned int indent) {
    std::string out(2 * size_t(indent), ' ');
    out += '"';
    if (entry->name != nullptr) out += entry->name;
    out += "\": ";
    return out;
}

std::string networkOrderIpText(const unsigned char* bytes) {
    uint32_t host = (uint32_t(bytes[0]) << 24) | (uint32_t(bytes[1]) << 16) |
                    (uint32_t(bytes[2]) << 8) | uint32_t(bytes[3]);
    return IPAddr(host).toString();
}

char* printed(const std::string& text) {
    char* copy = strdup(text.c_str());
    if (copy == nullptr) throw std::bad_alloc();
    return copy;
}

}  // namespace jcp

namespace {

// The value of an entry that must hold at least size bytes, or null.
const unsigned char* valueOf(const apiCfgPlusEntry* entry, size_t size) {
    if (entry->value == nullptr || entry->size < static_cast<int32_t>(size)) return nullptr;
    return static_cast<const unsigned char*>(entry->value);
}

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

}  // namespace

char* printApiCfgPlusNetworkIpAddr(apiCfgPlusEntry* entry, unsigned int indent) {
    const unsigned char* bytes = valueOf(entry, 4);
    std::string text = bytes != nullptr ? jcp::networkOrderIpText(bytes) : "";
    return jcp::printed(jcp::entryPrefix(entry, indent) + quoted(text));
}

char* printApiCfgPlusLocalIpAddr(apiCfgPlusEntry* entry, unsigned int indent) {
    const unsigned char* bytes = valueOf(entry, sizeof(int32_t));
    std::string text;
    if (bytes != nullptr) {
        uint32_t host;
        std::memcpy(&host, bytes, sizeof host);
        text = IPAddr(host).toString();
    }
    return jcp::printed(jcp::entryPrefix(entry, indent) + quoted(text));
}

char* printApiCfgPlusMacAddr(apiCfgPlusEntry* entry, unsigned int indent) {
    const unsigned char* bytes = valueOf(entry, 6);
    std::string text = bytes != nullptr ? MACAddr(bytes).toString() : "";
    return jcp::printed(jcp::entryPrefix(entry, indent) + quoted(text));
}

char* printApiCfgPlusStrAsOctets(apiCfgPlusEntry* entry, unsigned int indent) {
    const unsigned char* bytes = valueOf(entry, 1);
    std::string text;
    if (bytes != nullptr) {
        // Stops at the zero byte, and never past the value.
        const void* end = std::memchr(bytes, 0, size_t(entry->size));
        size_t length =
            end != nullptr ? static_cast<const unsigned char*>(end) - bytes : size_t(entry->size);
        text.assign(reinterpret_cast<const char*>(bytes), length);
    }
    return jcp::printed(jcp::entryPrefix(entry, indent) + quoted(text));
}

char* printApiCfgPlusNetworkIpAddrList(apiCfgPlusEntry* entry, unsigned int indent) {
    size_t count = jcp::entryItemCount(*entry, 4);
    std::string text = jcp::entryPrefix(entry, indent);
    if (count == 0) return jcp::printed(text + "[ ]");
    const auto* bytes = static_cast<const unsigned char*>(entry->value);
    text += '[';
    for (size_t i = 0; i < count; ++i) {
        if (i > 0) text += ',';
        text += quoted(jcp::networkOrderIpText(bytes + 4 * i));
    }
    text += ']';
    return jcp::printed(text);
}
