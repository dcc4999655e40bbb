// SPDX-License-Identifier: MIT
// Host name, IPv4 and IPv6 text: the syntax checks and the parsers to binary form.
#include <climits>

#include "addr/addrchk_priv.h"
#include "addr/ascii_priv.h"

namespace jcp::addr {

int position(std::size_t index) {
    return index < static_cast<std::size_t>(INT_MAX) ? static_cast<int>(index) + 1 : INT_MAX;
}

int checkHostname(std::string_view text) {
    if (text.empty()) return 1;
    std::size_t lastDot = std::string_view::npos;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (!isGraph(c)) return position(i);
        if (c != '.') continue;
        if (i == 0 || text[i - 1] == '.') return position(i);  // empty label
        lastDot = i;
    }
    if (text.back() == '.') return position(text.size() - 1);
    // The last label stands for a top-level domain, so it must be letters; a lone label with
    // a digit (host1) is therefore rejected on purpose.
    const bool hasDot = lastDot != std::string_view::npos;
    const std::string_view last = hasDot ? text.substr(lastDot + 1) : text;
    const int failure = hasDot ? position(lastDot) : 1;
    for (char c : last) {
        if (!isAlpha(c)) return failure;
    }
    if (hasDot && last.size() < 2) return failure;
    return 0;
}

int checkIPv4(std::string_view text) {
    if (text.empty()) return 1;
    int dots = 0;
    int digits = 0;
    int value = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '.') {
            if (digits == 0) return position(i);
            ++dots;
            digits = 0;
            value = 0;
        } else if (isDigit(c)) {
            value = value * 10 + (c - '0');
            if (++digits > 3 || value > 255) return position(i);
        } else {
            return position(i);
        }
    }
    // A fault seen only at the end (trailing dot, too few or too many groups) has no better
    // place to point at than the last character.
    if (text.back() == '.' || dots != 3) return position(text.size() - 1);
    return 0;
}

int checkIPv6Syntax(std::string_view text, bool interfaceMode) {
    if (text.empty()) return 1;
    int colons = 0;
    int digits = 0;
    bool doubleColon = false;
    bool nonZero = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == ':') {
            digits = 0;
            if (++colons > 7) return position(i);
            if (i > 0 && text[i - 1] == ':') {
                if (doubleColon) return position(i);
                doubleColon = true;
            }
        } else if (hexValue(c) >= 0) {
            if (++digits > 4) return position(i);
            nonZero = nonZero || c != '0';
        } else {
            return position(i);
        }
    }
    const int atEnd = position(text.size() - 1);
    if (colons < 2 || (colons != 7 && !doubleColon)) return atEnd;
    const std::size_t n = text.size();
    if (text[n - 1] == ':' && text[n - 2] != ':') return atEnd;
    // Structure first: a malformed text is reported where it is malformed, and only a
    // well-formed one is refused as the unspecified address.
    if (interfaceMode && !nonZero) return 1;
    return 0;
}

bool parseIPv4(std::string_view text, uint32_t* out) {
    if (checkIPv4(text) != 0) return false;
    uint32_t result = 0;
    uint32_t group = 0;
    for (char c : text) {
        if (c == '.') {
            result = (result << 8) | group;
            group = 0;
        } else {
            group = group * 10 + static_cast<uint32_t>(c - '0');
        }
    }
    *out = (result << 8) | group;
    return true;
}

int parseIPv6(std::string_view text, unsigned char out[16], int* summary) {
    if (!text.empty() && text[0] == ':') text.remove_prefix(1);
    if (text.empty()) return 1;
    uint16_t groups[8] = {};
    int digitCounts[8] = {};
    int count = 0;
    int gapAt = -1;  // index of the first group after "::"
    std::size_t i = 0;
    while (i < text.size()) {
        if (text[i] == ':') {  // a colon where a group should start is the "::"
            if (gapAt >= 0) return 2;
            gapAt = count;
            ++i;
            continue;
        }
        if (count == 8) return 4;
        unsigned value = 0;
        int digits = 0;
        for (; i < text.size() && text[i] != ':'; ++i) {
            const int v = hexValue(text[i]);
            if (v < 0 || ++digits > 4) return 3;
            value = value * 16 + static_cast<unsigned>(v);
        }
        groups[count] = static_cast<uint16_t>(value);
        digitCounts[count] = digits;
        ++count;
        if (i < text.size()) ++i;  // the colon that ends the group
    }
    if (gapAt >= 0) {
        // Move the groups after "::" to the end; the zeros they leave are the expansion.
        const int tail = count - gapAt;
        const int shift = 8 - count;
        for (int k = tail - 1; k >= 0; --k) {
            groups[gapAt + shift + k] = groups[gapAt + k];
            digitCounts[gapAt + shift + k] = digitCounts[gapAt + k];
        }
        for (int k = gapAt; k < gapAt + shift; ++k) {
            groups[k] = 0;
            digitCounts[k] = 0;
        }
    }
    if (out != nullptr) {
        for (int k = 0; k < 8; ++k) {
            out[2 * k] = static_cast<unsigned char>(groups[k] >> 8);
            out[2 * k + 1] = static_cast<unsigned char>(groups[k] & 0xff);
        }
    }
    if (summary != nullptr) {
        int word = 0;  // at most 0x44444444, so it fits a signed 32-bit int
        for (int k = 0; k < 8; ++k) word |= digitCounts[k] << (4 * k);
        *summary = word;
    }
    return 0;
}

}  // namespace jcp::addr
