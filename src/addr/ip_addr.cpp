// SPDX-License-Identifier: MIT
// IPAddr and IPAddr2: parsing, text form, comparison, masks and arithmetic of IP addresses.
#include "addr/ip_addr.h"

#include <cstdio>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "addr/addrchk_priv.h"

// unserialize copies the fields as they lie in memory, so the layout must be the plain one.
static_assert(std::is_trivially_copyable<IPAddr>::value, "IPAddr must stay copyable by bytes");
static_assert(sizeof(IPAddr) == IPAddr::kSerializedSize, "IPAddr must be 24 bytes");

const IPAddr IPAddr::ipv6_addr_unspec{IPAddr::kIPv6Marker, 0};

namespace {

// The longest text inet_pton accepts (INET6_ADDRSTRLEN less the NUL); longer is never valid.
constexpr std::size_t kMaxText = 45;

// An IPv6 text whose last 32 bits are dotted decimal, rewritten with two hex groups instead.
bool rewriteDottedTail(std::string_view text, std::string* out) {
    const std::size_t colon = text.rfind(':');
    if (colon == std::string_view::npos) return false;
    uint32_t v4 = 0;
    if (!jcp::addr::parseIPv4(text.substr(colon + 1), &v4)) return false;
    char groups[10];
    std::snprintf(groups, sizeof groups, "%x:%x", static_cast<unsigned>(v4 >> 16),
                  static_cast<unsigned>(v4 & 0xffff));
    out->assign(text.substr(0, colon + 1));
    out->append(groups);
    return true;
}

}  // namespace

int IPAddr::assignFromString(const char* text) {
    if (text == nullptr) return -1;
    const std::size_t length = strnlen(text, kMaxText + 1);
    if (length > kMaxText) return -1;
    std::string_view view(text, length);

    uint32_t v4 = 0;
    if (jcp::addr::parseIPv4(view, &v4)) {
        *this = IPAddr(v4);
        return 0;
    }
    std::string rewritten;
    if (view.find('.') != std::string_view::npos) {
        if (!rewriteDottedTail(view, &rewritten)) return -1;
        view = rewritten;
    }
    if (view.size() >= 2 && view[0] == ':' && view[1] != ':') return -1;
    unsigned char bytes[16];
    int summary = 0;
    if (jcp::addr::checkIPv6Syntax(view, false) != 0 ||
        jcp::addr::parseIPv6(view, bytes, &summary) != 0) {
        return -1;
    }
    assignV6NtwkOrder(bytes);
    m_extra = static_cast<uint32_t>(summary);
    return 0;
}

void IPAddr::assignV4(const unsigned char* bytes) {
    const uint32_t v4 = (uint32_t{bytes[0]} << 24) | (uint32_t{bytes[1]} << 16) |
                        (uint32_t{bytes[2]} << 8) | uint32_t{bytes[3]};
    *this = IPAddr(v4);
}

void IPAddr::assignV6NtwkOrder(const unsigned char* bytes) {
    *this = ipv6_addr_unspec;
    std::memcpy(m_addr, bytes, sizeof m_addr);
}

void IPAddr::unserialize(const unsigned char* bytes) {
    std::memcpy(this, bytes, sizeof *this);
}

void IPAddr::serialize(unsigned char* out) const {
    std::memcpy(out, this, sizeof *this);
}

void IPAddr::v6Bytes(unsigned char* out) const {
    std::memcpy(out, m_addr, sizeof m_addr);
}

std::string IPAddr::toString() const {
    char text[48];
    if (isV4()) {
        const uint32_t a = m_addr[0];
        std::snprintf(text, sizeof text, "%u.%u.%u.%u", static_cast<unsigned>(a >> 24),
                      static_cast<unsigned>((a >> 16) & 0xff),
                      static_cast<unsigned>((a >> 8) & 0xff), static_cast<unsigned>(a & 0xff));
        return text;
    }
    unsigned char bytes[16];
    v6Bytes(bytes);
    unsigned groups[8];
    for (int i = 0; i < 8; ++i) groups[i] = (unsigned{bytes[2 * i]} << 8) | bytes[2 * i + 1];
    // The first longest run of at least two zero groups becomes "::".
    int bestStart = -1;
    int bestLength = 1;
    for (int i = 0; i < 8;) {
        int j = i;
        while (j < 8 && groups[j] == 0) ++j;
        if (j - i > bestLength) {
            bestStart = i;
            bestLength = j - i;
        }
        i = j == i ? i + 1 : j;
    }
    std::string out;
    for (int i = 0; i < 8; ++i) {
        if (i == bestStart) {
            out += "::";
            i += bestLength - 1;
            continue;
        }
        if (!out.empty() && out.back() != ':') out += ':';
        std::snprintf(text, sizeof text, "%x", groups[i]);
        out += text;
    }
    return out;
}

bool IPAddr::isZero() const {
    if (isV4()) return m_addr[0] == 0;
    return (m_addr[0] | m_addr[1] | m_addr[2] | m_addr[3]) == 0;
}

bool IPAddr::operator==(const IPAddr& other) const {
    if (isV4() != other.isV4()) return false;
    if (isV4()) return m_addr[0] == other.m_addr[0];
    return std::memcmp(m_addr, other.m_addr, sizeof m_addr) == 0;
}

bool IPAddr::operator<(const IPAddr& other) const {
    if (isV4() != other.isV4()) return isV4();
    if (isV4()) return m_addr[0] < other.m_addr[0];
    // Network-order bytes compare like the numbers they spell.
    return std::memcmp(m_addr, other.m_addr, sizeof m_addr) < 0;
}

IPAddr IPAddr::operator~() const {
    IPAddr result = *this;
    for (int i = 0; i < addressWords(); ++i) result.m_addr[i] = ~m_addr[i];
    return result;
}

IPAddr IPAddr::operator|(const IPAddr& other) const {
    IPAddr result = *this;
    for (int i = 0; i < addressWords(); ++i) result.m_addr[i] |= other.m_addr[i];
    return result;
}

IPAddr IPAddr::operator&(const IPAddr& other) const {
    IPAddr result = *this;
    for (int i = 0; i < addressWords(); ++i) result.m_addr[i] &= other.m_addr[i];
    return result;
}

IPAddr& IPAddr::mask(unsigned prefixLength) {
    if (isV4()) {
        if (prefixLength < 32) m_addr[0] &= prefixLength == 0 ? 0 : ~0u << (32 - prefixLength);
        return *this;
    }
    unsigned char bytes[16];
    v6Bytes(bytes);
    for (unsigned i = 0; i < 16; ++i) {
        const unsigned kept = prefixLength > 8 * i ? prefixLength - 8 * i : 0;
        if (kept < 8) bytes[i] &= static_cast<unsigned char>(0xff00u >> kept);
    }
    std::memcpy(m_addr, bytes, sizeof m_addr);
    return *this;
}

IPAddr IPAddr::added(int64_t delta) const {
    IPAddr result = *this;
    if (isV4()) {
        // Unsigned arithmetic wraps at both ends without undefined behaviour.
        result.m_addr[0] = m_addr[0] + static_cast<uint32_t>(delta);
        return result;
    }
    unsigned char bytes[16];
    v6Bytes(bytes);
    // Add the two's complement of delta, sign-extended to 128 bits, byte by byte from the end.
    const uint64_t low = static_cast<uint64_t>(delta);
    const unsigned fill = delta < 0 ? 0xff : 0;
    unsigned carry = 0;
    for (int i = 15; i >= 0; --i) {
        const unsigned addend =
            i >= 8 ? static_cast<unsigned>((low >> (8 * (15 - i))) & 0xff) : fill;
        const unsigned sum = bytes[i] + addend + carry;
        bytes[i] = static_cast<unsigned char>(sum & 0xff);
        carry = sum >> 8;
    }
    std::memcpy(result.m_addr, bytes, sizeof bytes);
    return result;
}

IPAddr& IPAddr::operator++() {
    return *this = added(1);
}

IPAddr IPAddr::operator++(int) {
    const IPAddr before = *this;
    *this = added(1);
    return before;
}

IPAddr& IPAddr::operator--() {
    return *this = added(-1);
}

IPAddr IPAddr::operator--(int) {
    const IPAddr before = *this;
    *this = added(-1);
    return before;
}

IPAddr IPAddr::operator+(int delta) const {
    return added(delta);
}

// Widened first so that subtracting INT_MIN stays defined.
IPAddr IPAddr::operator-(int delta) const {
    return added(-static_cast<int64_t>(delta));
}

IPAddr2::IPAddr2(const char* text) : IPAddr(kIPv4Marker, 0) {
    assignFromString(text);
}
