// SPDX-License-Identifier: MIT
// Element helpers shared by every converter: lookup, strings, path prefixes, hexadecimal and
// number texts, and the in-place conversions of string elements.
#include <cstring>
#include <sstream>

#include "addr/ip_addr.h"
#include "addr/mac_addr.h"
#include "base/decimal_int_priv.h"
#include "convert/converter.h"
#include "convert/element_print.h"

namespace {

using ElementList = cfgPlusApiConverter::ElementList;

// The IPv4 address of text as a host-order number, 0 for anything else (IPv6 included).
uint32_t ipv4HostOrder(const std::string& text) {
    IPAddr addr;
    addr.assignFromString(text.c_str());
    return addr.isV4() ? addr.v4() : 0;
}

// The address laid out in network byte order (first octet in the lowest-addressed byte).
int32_t networkOrder(uint32_t host) {
    const unsigned char bytes[4] = {
        static_cast<unsigned char>(host >> 24), static_cast<unsigned char>(host >> 16),
        static_cast<unsigned char>(host >> 8), static_cast<unsigned char>(host)};
    int32_t value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

// Turns element into kind with its value members cleared; name, key and position stay.
void retype(cfgElement& element, cfgElementKind kind, cfgElement::PrintFn printFn) {
    cfgElement fresh = cfgElement::makeNull(std::move(element.name), std::move(element.key));
    fresh.kind = kind;
    fresh.printFn = printFn;
    element = std::move(fresh);
}

std::string stripComponents(std::string name, int n) {
    for (int i = 0; i < n; ++i) {
        size_t slash = name.find('/');
        if (slash == std::string::npos) break;
        name.erase(0, slash + 1);
    }
    return name;
}

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Up to `width` hexadecimal digits from text[at], stopping at the first non-digit.
unsigned char readHex(const std::string& text, size_t at, size_t width) {
    unsigned value = 0;
    for (size_t i = at; i < at + width && i < text.size(); ++i) {
        int digit = hexDigit(text[i]);
        if (digit < 0) break;
        value = value * 16 + unsigned(digit);
    }
    return static_cast<unsigned char>(value);
}

}  // namespace

ElementList::iterator cfgPlusApiConverter::findCfgElement(ElementList& list,
                                                          const std::string& name) {
    for (auto it = list.begin(); it != list.end(); ++it) {
        if (it->name == name) return it;
    }
    return list.end();
}

ElementList::const_iterator cfgPlusApiConverter::findCfgElement(const ElementList& list,
                                                                const std::string& name) const {
    for (auto it = list.begin(); it != list.end(); ++it) {
        if (it->name == name) return it;
    }
    return list.end();
}

std::string cfgPlusApiConverter::getCfgElementString(const ElementList& list,
                                                     const std::string& name) const {
    auto it = findCfgElement(list, name);
    return it != list.end() && it->kind == CFG_STRING ? it->strValue : std::string();
}

bool cfgPlusApiConverter::captivePortal(const ElementList& list) const {
    auto it = findCfgElement(list, "captive_portal_enforcement");
    return it != list.end() && it->strValue != "none";
}

void cfgPlusApiConverter::parseIpAddress(const std::string& text, std::string& addr,
                                         std::string& prefix) const {
    size_t slash = text.rfind('/');
    if (slash == std::string::npos) {
        addr = text;
        return;
    }
    prefix = text.substr(slash + 1);
    addr = text.substr(0, slash);
}

void cfgPlusApiConverter::jsonCfgPlusRemoveElementPrefix(cfgElement& element, int n) const {
    element.name = stripComponents(std::move(element.name), n);
}

cfgElement cfgPlusApiConverter::jsonCfgPlusRemovePrefix(const cfgElement& element, int n) const {
    if (element.kind != CFG_OBJECT) return cfgElement();
    cfgElement copy = element;
    for (cfgElement& child : copy.elements) jsonCfgPlusRemoveElementPrefix(child, n);
    return copy;
}

ElementList cfgPlusApiConverter::jsonCfgPlusRemovePrefix(const ElementList& list,
                                                         const std::string& prefix) const {
    ElementList out;
    for (const cfgElement& element : list) {
        if (element.kind != CFG_OBJECT) continue;
        out.push_back(element);
        for (cfgElement& child : out.back().elements) {
            if (prefix.empty()) {
                size_t slash = child.name.rfind('/');
                if (slash != std::string::npos) child.name.erase(0, slash + 1);
            } else if (child.name.compare(0, prefix.size(), prefix) == 0) {
                child.name.erase(0, prefix.size());
            }
        }
    }
    return out;
}

std::vector<unsigned char> cfgPlusApiConverter::jsonCfgPlusHex2Bytes(const std::string& hex) const {
    std::vector<unsigned char> bytes((hex.size() + 1) / 2, 0);
    size_t at = 0;
    size_t byte = 0;
    if (hex.size() % 2 == 1) {
        bytes[byte++] = readHex(hex, at, 1);
        at = 1;
    }
    for (; at < hex.size(); at += 2) bytes[byte++] = readHex(hex, at, 2);
    return bytes;
}

std::list<int> cfgPlusApiConverter::jsonCfgPlusStr2IntList(const std::string& text,
                                                           char separator) const {
    std::list<int> values;
    std::istringstream pieces(text);
    std::string piece;
    while (std::getline(pieces, piece, separator)) {
        if (!piece.empty()) values.push_back(jcp::decimalInt(piece));
    }
    return values;
}

int cfgPlusApiConverter::mapTosMask(int mask) const {
    // A one-bit mask (128) is deliberately not told apart from an unsupported one.
    switch (mask) {
        case 192:
            return 1;
        case 224:
            return 2;
        case 240:
            return 3;
        case 248:
            return 4;
        case 252:
            return 5;
        case 254:
            return 6;
        case 255:
            return 7;
        default:
            return 0;
    }
}

int cfgPlusApiConverter::ethProtocol(const std::string& name) const {
    if (name == "ip") return 0x0800;
    if (name == "ipv6") return 0x86DD;
    if (name == "arp") return 0x0806;
    for (char c : name) {
        if (c < '0' || c > '9') return -1;
    }
    // The empty text counts as all digits and makes the conversion throw.
    return jcp::decimalInt(name);
}

void cfgPlusApiConverter::jsonCfgPlusElementIPStr2Network(ElementList& list,
                                                          const std::string& name) {
    auto it = findCfgElement(list, name);
    if (it == list.end() || it->kind != CFG_STRING) return;
    int32_t value = networkOrder(ipv4HostOrder(it->strValue));
    retype(*it, CFG_INT, printApiCfgPlusNetworkIpAddr);
    it->intValue = value;
}

void cfgPlusApiConverter::jsonCfgPlusElementIPStr2Local(ElementList& list,
                                                        const std::string& name) {
    auto it = findCfgElement(list, name);
    if (it == list.end() || it->kind != CFG_STRING) return;
    auto value = static_cast<int32_t>(ipv4HostOrder(it->strValue));
    retype(*it, CFG_INT, printApiCfgPlusLocalIpAddr);
    it->intValue = value;
}

void cfgPlusApiConverter::jsonCfgPlusElementIPStrList2NetworkList(ElementList& list,
                                                                  const std::string& name) {
    auto it = findCfgElement(list, name);
    if (it == list.end() || it->kind != CFG_STR_LIST) return;
    std::list<int32_t> values;
    for (const std::string& text : it->strList) values.push_back(networkOrder(ipv4HostOrder(text)));
    retype(*it, CFG_INT_LIST, printApiCfgPlusNetworkIpAddrList);
    it->intList = std::move(values);
}

void cfgPlusApiConverter::jsonCfgPlusElementMacStr2Mac(ElementList& list, const std::string& name) {
    auto it = findCfgElement(list, name);
    if (it == list.end() || it->kind != CFG_STRING) return;
    MACAddr mac;
    mac.assignFromString(it->strValue.c_str());
    std::vector<uint8_t> bytes(mac.bytes(), mac.bytes() + 6);
    retype(*it, CFG_BYTES, printApiCfgPlusMacAddr);
    it->bytesValue = std::move(bytes);
}

void cfgPlusApiConverter::jsonCfgPlusElementStrAsOctets(ElementList& list,
                                                        const std::string& name) {
    auto it = findCfgElement(list, name);
    if (it == list.end() || it->kind != CFG_STRING) return;
    std::vector<uint8_t> bytes(it->strValue.begin(), it->strValue.end());
    bytes.push_back(0);
    retype(*it, CFG_BYTES, printApiCfgPlusStrAsOctets);
    it->bytesValue = std::move(bytes);
}

void cfgPlusApiConverter::jsonCfgPlusElementHex2Bin(ElementList& list, const std::string& name) {
    auto it = findCfgElement(list, name);
    if (it == list.end() || it->kind != CFG_STRING) return;
    std::vector<uint8_t> bytes = jsonCfgPlusHex2Bytes(it->strValue);
    retype(*it, CFG_BYTES, nullptr);
    it->bytesValue = std::move(bytes);
}

void cfgPlusApiConverter::jsonCfgPlusElementStr2IntList(ElementList& list,
                                                        const std::string& name) {
    auto it = findCfgElement(list, name);
    if (it == list.end() || it->kind != CFG_STRING) return;
    std::list<int> values = jsonCfgPlusStr2IntList(it->strValue, ',');
    retype(*it, CFG_INT_LIST, nullptr);
    it->intList = std::move(values);
}

#define JCP_FOR_EACH_NAME(conversion)                                                \
    void cfgPlusApiConverter::conversion(ElementList& list, const NameList& names) { \
        for (const std::string& name : names) conversion(list, name);                \
    }

JCP_FOR_EACH_NAME(jsonCfgPlusElementIPStr2Network)
JCP_FOR_EACH_NAME(jsonCfgPlusElementIPStr2Local)
JCP_FOR_EACH_NAME(jsonCfgPlusElementMacStr2Mac)
JCP_FOR_EACH_NAME(jsonCfgPlusElementStrAsOctets)
JCP_FOR_EACH_NAME(jsonCfgPlusElementHex2Bin)
JCP_FOR_EACH_NAME(jsonCfgPlusElementStr2IntList)

#undef JCP_FOR_EACH_NAME
