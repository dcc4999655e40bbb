// SPDX-License-Identifier: MIT
// IPAddr: one IPv4 or IPv6 address value, with text forms, masks and arithmetic.
#ifndef JSONCFGPLUS_ADDR_IP_ADDR_H
#define JSONCFGPLUS_ADDR_IP_ADDR_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "../base/export.h"

class JCP_EXPORT IPAddr {
  public:
    // The family marker of an IPv4 address; any other value means IPv6.
    static constexpr uint32_t kIPv4Marker = 0x80000000u;
    // The marker this class writes for IPv6.
    static constexpr uint32_t kIPv6Marker = 0;
    // serialize/unserialize: the fields in the object's own layout and host byte order.
    static constexpr std::size_t kSerializedSize = 24;

    // The all-zero IPv6 address.
    static const IPAddr ipv6_addr_unspec;

    // 0.0.0.0.
    constexpr IPAddr() : IPAddr(kIPv4Marker, 0) {}
    // An IPv4 address from its host-order number.
    explicit constexpr IPAddr(uint32_t hostOrderV4) : IPAddr(kIPv4Marker, hostOrderV4) {}

    // Dotted decimal as addrchk_ipv4 accepts it (leading zeros are decimal, never octal), or
    // IPv6 as addrchk_ipv6 accepts it plus inet_pton's dotted last 32 bits; a leading single
    // ":" is refused as inet_pton does. For IPv6 the extra word receives the text summary of
    // addrchk_ipv6_assign_from_str. 0 on success; -1 (null included) leaves the value as is.
    int assignFromString(const char* text);
    // IPv4 from 4 bytes in network order (a.b.c.d).
    void assignV4(const unsigned char* bytes);
    // IPv6 from 16 bytes in network order.
    void assignV6NtwkOrder(const unsigned char* bytes);
    // Reads kSerializedSize bytes as written by serialize.
    void unserialize(const unsigned char* bytes);
    void serialize(unsigned char* out) const;

    // IPv4 "%d.%d.%d.%d"; IPv6 as inet_ntop writes it (lower case, no leading zeros, the
    // longest run of two or more zero groups as "::"), always in hexadecimal groups.
    std::string toString() const;

    bool isV4() const { return m_family == kIPv4Marker; }
    // The host-order number of an IPv4 address.
    uint32_t v4() const { return m_addr[0]; }
    // The 16 network-order bytes of an IPv6 address.
    void v6Bytes(unsigned char* out) const;
    uint32_t family() const { return m_family; }
    uint32_t extra() const { return m_extra; }

    bool isZero() const;

    // Same family and same address; the extra word is not compared.
    bool operator==(const IPAddr& other) const;
    bool operator!=(const IPAddr& other) const { return !(*this == other); }
    // IPv4 before IPv6, then by numeric value.
    bool operator<(const IPAddr& other) const;

    // Bitwise on the address bits of the left operand's family, whose family and extra word
    // the result keeps; mixing families combines raw words and means nothing.
    IPAddr operator~() const;
    IPAddr operator|(const IPAddr& other) const;
    IPAddr operator&(const IPAddr& other) const;
    // Keeps the first prefixLength bits and clears the rest; a length beyond the address
    // width keeps everything.
    IPAddr& mask(unsigned prefixLength);

    // Steps the address as an unsigned 32- or 128-bit number, wrapping at either end.
    IPAddr& operator++();
    IPAddr operator++(int);
    IPAddr& operator--();
    IPAddr operator--(int);
    IPAddr operator+(int delta) const;
    IPAddr operator-(int delta) const;

    // Resolves host (AF_INET or AF_INET6, else -9 without a lookup) with getaddrinfo. Returns
    // getaddrinfo's non-zero result unchanged, -4 when nothing of the family came back, or 0
    // with the first address of that family in out; out changes only on success.
    static int hostname2ip(int family, const char* host, IPAddr& out);

  protected:
    constexpr IPAddr(uint32_t family, uint32_t word0)
        : m_addr{word0, 0, 0, 0}, m_family(family), m_extra(0) {}

  private:
    IPAddr added(int64_t delta) const;
    // The words that hold the address: the unused three of IPv4 stay zero.
    int addressWords() const { return isV4() ? 1 : 4; }

    // IPv6: the bytes in network order; IPv4: the host-order number in the first word.
    uint32_t m_addr[4];
    uint32_t m_family;
    uint32_t m_extra;  // the IPv6 text summary after assignFromString, else 0
};

// An IPAddr read from text; text that does not parse leaves 0.0.0.0.
class JCP_EXPORT IPAddr2 : public IPAddr {
  public:
    explicit IPAddr2(const char* text);
};

#endif
