// SPDX-License-Identifier: MIT
// MACAddr and MACAddr2: parsing, validation, text forms and masks of MAC addresses.
#include "addr/mac_addr.h"

#include <cstring>

#include "addr/ascii_priv.h"

namespace {

constexpr std::size_t kTextLength = 17;

// Reads "XX?XX?XX?XX?XX?XX" with ? the separator; bytes may be null to only check.
bool parse(const char* text, char separator, unsigned char* bytes) {
    // strnlen stops one past the form, so a longer text is refused without reading it all.
    if (text == nullptr || strnlen(text, kTextLength + 1) != kTextLength) return false;
    unsigned char parsed[6];
    for (std::size_t i = 0; i < 6; ++i) {
        const char* pair = text + 3 * i;
        const int high = jcp::addr::hexValue(pair[0]);
        const int low = jcp::addr::hexValue(pair[1]);
        if (high < 0 || low < 0) return false;
        if (i < 5 && pair[2] != separator) return false;
        parsed[i] = static_cast<unsigned char>(high * 16 + low);
    }
    if (bytes != nullptr) std::memcpy(bytes, parsed, sizeof parsed);
    return true;
}

}  // namespace

MACAddr::MACAddr(const unsigned char* bytes) {
    if (bytes != nullptr) std::memcpy(m_bytes, bytes, sizeof m_bytes);
}

void MACAddr::toString(char* out) const {
    if (out == nullptr) return;
    const std::string text = toString(kColonUpper);
    std::memcpy(out, text.data(), kTextLength);
}

std::string MACAddr::toString() const {
    return toString(kColonUpper);
}

void MACAddr::toString(std::string* out) const {
    if (out != nullptr) *out = toString(kColonUpper);
}

std::string MACAddr::toString(int format) const {
    const char* digits = (format & kLower) ? "0123456789abcdef" : "0123456789ABCDEF";
    const char separator = (format & kNoSeparator) ? '\0' : (format & kHyphen) ? '-' : ':';
    std::string text;
    text.reserve(kTextLength);
    for (std::size_t i = 0; i < sizeof m_bytes; ++i) {
        if (i > 0 && separator != '\0') text += separator;
        text += digits[m_bytes[i] >> 4];
        text += digits[m_bytes[i] & 0x0f];
    }
    return text;
}

void MACAddr::toStringFmt(std::string* out, int format) const {
    if (out != nullptr) *out = toString(format);
}

int MACAddr::assignFromString(const char* text, char separator) {
    return parse(text, separator, m_bytes) ? 0 : -1;
}

bool MACAddr::isValid(const char* text) {
    return parse(text, ':', nullptr);
}

bool MACAddr2::isValid(const char* text, char separator) {
    return parse(text, separator, nullptr);
}

MACAddr& MACAddr::operator&=(unsigned mask) {
    m_bytes[0] = 0;
    m_bytes[1] = 0;
    for (std::size_t i = 0; i < 4; ++i) m_bytes[2 + i] &= (mask >> (24 - 8 * i)) & 0xff;
    return *this;
}

MACAddr MACAddr::operator&(unsigned mask) const {
    return MACAddr(*this) &= mask;
}

MACAddr& MACAddr::operator|=(unsigned mask) {
    for (std::size_t i = 0; i < 4; ++i) m_bytes[2 + i] |= (mask >> (24 - 8 * i)) & 0xff;
    return *this;
}

MACAddr MACAddr::operator|(unsigned mask) const {
    return MACAddr(*this) |= mask;
}

bool MACAddr::operator==(const MACAddr& other) const {
    return std::memcmp(m_bytes, other.m_bytes, sizeof m_bytes) == 0;
}
