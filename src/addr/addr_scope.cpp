// SPDX-License-Identifier: MIT
// The exported addrchk scope classifiers for IPv4 and IPv6 addresses.
#include <cstring>
#include <string_view>

#include "addr/addrchk.h"
#include "addr/addrchk_priv.h"

namespace {

bool inPrefix(uint32_t addr, uint32_t prefix, int length) {
    const uint32_t mask = ~0u << (32 - length);
    return (addr & mask) == prefix;
}

}  // namespace

extern "C" {

int addrchk_ipv4_addr_scope(uint32_t addr) {
    if (addr == 0) return ADDRCHK_SCOPE_UNSPEC;
    // Only the usual loopback address counts as loopback; the rest of 127/8 stays global.
    if (addr == 0x7f000001u) return ADDRCHK_SCOPE_LOOPBACK;
    if (addr == 0xffffffffu) return ADDRCHK_SCOPE_BROADCAST;
    if (inPrefix(addr, 0xe0000000u, 4)) return ADDRCHK_SCOPE_MULTICAST;
    if (inPrefix(addr, 0x0a000000u, 8) || inPrefix(addr, 0xac100000u, 12) ||
        inPrefix(addr, 0xc0a80000u, 16)) {
        return ADDRCHK_SCOPE_PRIVATE;
    }
    if (inPrefix(addr, 0xa9fe0000u, 16)) return ADDRCHK_SCOPE_LINKLOCAL;
    return ADDRCHK_SCOPE_GLOBAL;
}

int addrchk_ipv6_addr_scope(const unsigned char* bytes) {
    if (bytes == nullptr) return ADDRCHK_SCOPE_NONE;
    static const unsigned char kZero[16] = {};
    static const unsigned char kLinkLocal[8] = {0xfe, 0x80};
    if (bytes[0] == 0) {
        if (std::memcmp(bytes, kZero, 15) == 0) {
            if (bytes[15] == 0) return ADDRCHK_SCOPE_UNSPEC;
            if (bytes[15] == 1) return ADDRCHK_SCOPE_V6_LOOPBACK;
        }
        if (std::memcmp(bytes, kZero, 10) == 0 && bytes[10] == 0xff && bytes[11] == 0xff) {
            return ADDRCHK_SCOPE_V6_MAPPED;
        }
        return ADDRCHK_SCOPE_NONE;
    }
    if (bytes[0] >= 0x20 && bytes[0] <= 0x3f) return ADDRCHK_SCOPE_V6_GLOBAL;
    if (bytes[0] == 0xfc || bytes[0] == 0xfd) return ADDRCHK_SCOPE_V6_ULA;
    if (bytes[0] == 0xff) return ADDRCHK_SCOPE_V6_MULTICAST;
    if (std::memcmp(bytes, kLinkLocal, 8) == 0) return ADDRCHK_SCOPE_V6_LINKLOCAL;
    return ADDRCHK_SCOPE_NONE;
}

int addrchk_ipv6_mcast_scope(const unsigned char* bytes) {
    if (bytes == nullptr) return 0;
    const int scope = bytes[1] & 0x0f;
    // Interface-, link-, admin-, site-, organization-local and global; reserved ones give 0.
    return (0x4136 >> scope) & 1 ? scope : 0;
}

int addrchk_ipv4_addr_scope_str(const char* text) {
    uint32_t addr = 0;
    if (text == nullptr || !jcp::addr::parseIPv4(text, &addr)) return ADDRCHK_SCOPE_NONE;
    return addrchk_ipv4_addr_scope(addr);
}

int addrchk_ipv6_addr_scope_str(const char* text, unsigned char* bytes) {
    unsigned char parsed[16];
    if (text == nullptr || jcp::addr::checkIPv6Syntax(text, false) != 0 ||
        jcp::addr::parseIPv6(text, parsed, nullptr) != 0) {
        return ADDRCHK_SCOPE_NONE;
    }
    if (bytes != nullptr) std::memcpy(bytes, parsed, sizeof parsed);
    return addrchk_ipv6_addr_scope(parsed);
}

int addrchk_ipv6_mcast_scope_str(const char* text) {
    unsigned char bytes[16];
    if (addrchk_ipv6_addr_scope_str(text, bytes) != ADDRCHK_SCOPE_V6_MULTICAST) return 0;
    return addrchk_ipv6_mcast_scope(bytes);
}

}  // extern "C"
