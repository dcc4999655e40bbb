// SPDX-License-Identifier: MIT
// MACAddr: a 6-byte MAC address value with its text forms.
#ifndef JSONCFGPLUS_ADDR_MAC_ADDR_H
#define JSONCFGPLUS_ADDR_MAC_ADDR_H

#include <string>

#include "../base/export.h"

class JCP_EXPORT MACAddr {
  public:
    // Text layouts for toString(int) and toStringFmt; flags combine, unknown bits are ignored.
    enum Format {
        kColonUpper = 0,   // 00:1A:2B:3C:4D:5E, the same as toString()
        kLower = 1,        // lower-case digits
        kHyphen = 2,       // "-" between the bytes
        kNoSeparator = 4,  // 12 digits in a row; wins over kHyphen
    };

    // 00:00:00:00:00:00.
    MACAddr() = default;
    // bytes: 6 bytes in transmission order; null gives the zero address.
    explicit MACAddr(const unsigned char* bytes);

    const unsigned char* bytes() const { return m_bytes; }

    // Writes exactly 17 characters "XX:XX:XX:XX:XX:XX" and no terminating NUL; null does
    // nothing.
    void toString(char* out) const;
    std::string toString() const;
    // Assigns the same text; null does nothing.
    void toString(std::string* out) const;
    std::string toString(int format) const;
    void toStringFmt(std::string* out, int format) const;

    // Parses the 17-character form (either case, nothing after it) with the given separator.
    // 0 on success; -1 leaves the value unchanged.
    int assignFromString(const char* text, char separator = ':');

    // Six pairs of hexadecimal digits (either case) separated by ":", and nothing after them.
    static bool isValid(const char* text);

    // The address read as a 48-bit number against a 32-bit mask, zero-extended: "&" clears the
    // first two bytes, "|" leaves them.
    MACAddr& operator&=(unsigned mask);
    MACAddr operator&(unsigned mask) const;
    MACAddr& operator|=(unsigned mask);
    MACAddr operator|(unsigned mask) const;

    bool operator==(const MACAddr& other) const;
    bool operator!=(const MACAddr& other) const { return !(*this == other); }

  private:
    unsigned char m_bytes[6] = {};
};

// The MAC address checks with a caller-chosen separator (the filter rules write "-").
class JCP_EXPORT MACAddr2 : public MACAddr {
  public:
    using MACAddr::isValid;
    using MACAddr::MACAddr;
    static bool isValid(const char* text, char separator);
};

#endif
