// SPDX-License-Identifier: MIT
// The address validators and the address types over any text: the first byte picks addrchk's
// flags, the rest is the text.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "addr/addrchk.h"
#include "addr/ip_addr.h"
#include "addr/mac_addr.h"

namespace {

void ipArithmetic(const char* text) {
    IPAddr ip;
    if (ip.assignFromString(text) != 0) return;
    ip.toString();
    unsigned char bytes[IPAddr::kSerializedSize] = {};
    ip.serialize(bytes);
    IPAddr copy;
    copy.unserialize(bytes);
    IPAddr next = ip + 1;
    IPAddr previous = ip - 1;
    ++next;
    --previous;
    (~ip | next).toString();
    (ip & previous).toString();
    for (unsigned prefix : {0u, 1u, 31u, 32u, 64u, 127u, 128u, 200u}) IPAddr(ip).mask(prefix);
    (void)(ip < copy);
    (void)(ip == copy);
}

void macForms(const char* text) {
    for (char separator : {':', '-', '.'}) {
        MACAddr mac;
        if (mac.assignFromString(text, separator) != 0) continue;
        for (int format = 0; format < 16; ++format) mac.toString(format);
        mac &= 0xffffff00u;
        mac |= 0x000000ffu;
    }
    MACAddr::isValid(text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const int flags = data[0];
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    const char* s = text.c_str();

    addrchk(s, flags);
    addrchk_hostname(s);
    addrchk_ipv4(s);
    addrchk_ipv6(s);
    addrchk_interfaceaddr_v4(s);
    addrchk_interfaceaddr_v6(s);
    addrchk_common_name(s);
    unsigned char bytes[16] = {};
    int summary = 0;
    addrchk_ipv6_assign_from_str(s, bytes, &summary);
    addrchk_ipv4_addr_scope_str(s);
    addrchk_ipv6_addr_scope_str(s, bytes);
    addrchk_ipv6_mcast_scope_str(s);
    // The raw bytes as addresses, whatever they are.
    unsigned char raw[16] = {};
    std::memcpy(raw, text.data(), text.size() < sizeof raw ? text.size() : sizeof raw);
    uint32_t v4 = 0;
    std::memcpy(&v4, raw, sizeof v4);
    addrchk_ipv4_addr_scope(v4);
    addrchk_ipv6_addr_scope(raw);
    addrchk_ipv6_mcast_scope(raw);

    ipArithmetic(s);
    macForms(s);
    return 0;
}
