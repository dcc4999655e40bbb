// SPDX-License-Identifier: MIT
// The exported addrchk text checks: single forms, the combined check, interface addresses.
#include "addr/addrchk.h"

#include <algorithm>
#include <string_view>

#include "addr/addrchk_priv.h"
#include "addr/ascii_priv.h"

namespace {

using namespace jcp::addr;

// A null pointer reads as empty text, which every checker rejects.
std::string_view view(const char* text) {
    return text != nullptr ? std::string_view(text) : std::string_view();
}

// The four dot-separated decimal numbers of text; false for any other text. A number above
// 255 reads as 256, which no rule below singles out, so long digit runs cannot overflow.
bool readFourNumbers(std::string_view text, unsigned numbers[4]) {
    constexpr unsigned kAboveOctet = 256;
    int count = 0;
    bool digits = false;
    unsigned value = 0;
    for (char c : text) {
        if (c == '.') {
            if (!digits || count == 3) return false;
            numbers[count++] = value;
            value = 0;
            digits = false;
        } else if (isDigit(c)) {
            value = std::min(value * 10 + static_cast<unsigned>(c - '0'), kAboveOctet);
            digits = true;
        } else {
            return false;
        }
    }
    if (!digits || count != 3) return false;
    numbers[3] = value;
    return true;
}

// Only the shape is read and only the listed addresses are refused: an octet above 255
// ("1.2.3.300") gives 0 here; addrchk with the IPv4 flag refuses it before asking this.
int interfaceV4(std::string_view text) {
    unsigned n[4];
    if (!readFourNumbers(text, n)) return 1;
    // Of the multicast range only 224/8 is refused; the other blocks pass on purpose.
    if (n[0] == 0 || n[0] == 127 || n[0] == 224) return 1;
    if (n[1] == 0 && n[2] == 0 && n[3] == 0) return 1;
    if (n[0] == 255 && n[1] == 255 && n[2] == 255 && n[3] == 255) return 1;
    return 0;
}

int interfaceV6(std::string_view text) {
    if (text.empty()) return 1;
    if (const int pos = checkIPv6Syntax(text, true)) return pos;
    unsigned char bytes[16];
    if (const int code = parseIPv6(text, bytes, nullptr)) return code;
    switch (addrchk_ipv6_addr_scope(bytes)) {
        case ADDRCHK_SCOPE_UNSPEC:
        case ADDRCHK_SCOPE_V6_GLOBAL:
        case ADDRCHK_SCOPE_V6_ULA:
        case ADDRCHK_SCOPE_V6_LINKLOCAL:
            return 0;
        default:
            return 10;
    }
}

int combined(std::string_view text, int flags) {
    int v4 = 0;
    int host = 0;
    if (flags & ADDRCHK_IPV4) {
        v4 = checkIPv4(text);
        if (v4 == 0) return (flags & ADDRCHK_INTERFACE) ? interfaceV4(text) : 0;
    }
    if (flags & ADDRCHK_HOSTNAME) {
        host = checkHostname(text);
        if (host == 0) return 0;
        if (!(flags & ADDRCHK_IPV6)) return std::max(v4, host);
    }
    if (!(flags & ADDRCHK_IPV6)) return v4;
    if (flags & ADDRCHK_INTERFACE) return interfaceV6(text);
    const int v6 = checkIPv6Syntax(text, false);
    return v6 == 0 ? 0 : std::max({v4, host, v6});
}

}  // namespace

extern "C" {

int addrchk(const char* text, int flags) {
    return combined(view(text), flags);
}

int addrchk_hostname(const char* text) {
    return checkHostname(view(text));
}

int addrchk_ipv4(const char* text) {
    return checkIPv4(view(text));
}

int addrchk_ipv6(const char* text) {
    return checkIPv6Syntax(view(text), false);
}

int addrchk_interfaceaddr_v4(const char* text) {
    return interfaceV4(view(text));
}

int addrchk_interfaceaddr_v6(const char* text) {
    return interfaceV6(view(text));
}

int addrchk_common_name(const char* text) {
    const std::string_view t = view(text);
    if (combined(t, ADDRCHK_HOSTNAME | ADDRCHK_IPV4 | ADDRCHK_INTERFACE) == 0) return 0;
    // An IPv6 literal must be bracketed, as in a URL, so a bare one is refused outright.
    if (checkIPv6Syntax(t, false) == 0 || t.empty() || t[0] != '[') return 1;
    if (t.size() < 3) return 2;
    if (t.back() != ']') return position(t.size() - 1);
    return combined(t.substr(1, t.size() - 2), ADDRCHK_IPV6 | ADDRCHK_INTERFACE);
}

int addrchk_ipv6_assign_from_str(const char* text, unsigned char* bytes, int* summary) {
    return parseIPv6(view(text), bytes, summary);
}

}  // extern "C"
