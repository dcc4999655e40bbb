// SPDX-License-Identifier: MIT
// Address text checkers and parsers over bounded text, shared by the C entries and IPAddr.
#ifndef JSONCFGPLUS_ADDR_ADDRCHK_PRIV_H
#define JSONCFGPLUS_ADDR_ADDRCHK_PRIV_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace jcp::addr {

// The 1-based position of index, saturated so that no text length overflows the result.
int position(std::size_t index);

// The checkers return 0 or a 1-based position, with the conventions of addrchk.h.
int checkHostname(std::string_view text);
int checkIPv4(std::string_view text);
// interfaceMode rejects an address whose digits are all zero with 1.
int checkIPv6Syntax(std::string_view text, bool interfaceMode);

// The host-order number of text that checkIPv4 accepts; false for any other text.
bool parseIPv4(std::string_view text, uint32_t* out);
// The codes of addrchk_ipv6_assign_from_str; out is written only on success.
int parseIPv6(std::string_view text, unsigned char out[16], int* summary);

}  // namespace jcp::addr

#endif
