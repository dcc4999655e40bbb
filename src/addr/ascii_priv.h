// SPDX-License-Identifier: MIT
// Locale-independent ASCII character tests for address text.
#ifndef JSONCFGPLUS_ADDR_ASCII_PRIV_H
#define JSONCFGPLUS_ADDR_ASCII_PRIV_H

// <cctype> depends on the locale and is undefined for negative chars; address text is ASCII,
// so every byte outside it simply fails these tests.
namespace jcp::addr {

inline bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

inline bool isAlpha(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Printable and not a space, as isgraph in the C locale.
inline bool isGraph(char c) {
    return c > ' ' && c < 0x7f;
}

// The value of a hexadecimal digit, -1 for any other character.
inline int hexValue(char c) {
    if (isDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace jcp::addr

#endif
