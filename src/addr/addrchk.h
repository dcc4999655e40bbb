/* SPDX-License-Identifier: MIT */
/** @file
 * Textual address validators (C linkage). */
#ifndef JSONCFGPLUS_ADDR_ADDRCHK_H
#define JSONCFGPLUS_ADDR_ADDRCHK_H

#include <stdint.h>

#include "../base/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Flags of addrchk. */
enum {
    ADDRCHK_HOSTNAME = 1, /**< a host name is allowed */
    ADDRCHK_IPV4 = 2,     /**< an IPv4 address is allowed */
    ADDRCHK_IPV6 = 4,     /**< an IPv6 address is allowed */
    ADDRCHK_INTERFACE = 8 /**< the address must be usable as a host (interface) address */
};

/** Scope codes of the addrchk_*_scope functions. */
enum {
    ADDRCHK_SCOPE_NONE = 0,          /**< no scope */
    ADDRCHK_SCOPE_UNSPEC = 1,        /**< 0.0.0.0, :: */
    ADDRCHK_SCOPE_GLOBAL = 2,        /**< IPv4 only */
    ADDRCHK_SCOPE_LOOPBACK = 3,      /**< exactly 127.0.0.1 */
    ADDRCHK_SCOPE_MULTICAST = 4,     /**< 224/4 */
    ADDRCHK_SCOPE_PRIVATE = 5,       /**< 10/8, 172.16/12, 192.168/16 */
    ADDRCHK_SCOPE_LINKLOCAL = 6,     /**< 169.254/16 */
    ADDRCHK_SCOPE_BROADCAST = 7,     /**< 255.255.255.255 */
    ADDRCHK_SCOPE_V6_LOOPBACK = 8,   /**< ::1 */
    ADDRCHK_SCOPE_V6_MAPPED = 9,     /**< \::ffff:0:0/96 */
    ADDRCHK_SCOPE_V6_GLOBAL = 10,    /**< 2000::/3 */
    ADDRCHK_SCOPE_V6_ULA = 11,       /**< fc00::/7 */
    ADDRCHK_SCOPE_V6_LINKLOCAL = 12, /**< fe80::/64 */
    ADDRCHK_SCOPE_V6_MULTICAST = 13  /**< ff00::/8 */
};

/** @name Text checkers
 * Each returns 0 for valid text, otherwise the 1-based position of the first character at
 * which the text stopped being valid. A null pointer counts as empty text.
 */
///@{

/** Host name, IPv4 and/or IPv6 as the flags allow; when several forms fail, the position of
 * the one that got furthest. With ADDRCHK_IPV6|ADDRCHK_INTERFACE the result is that of
 * addrchk_interfaceaddr_v6 alone. No form flag at all (0 or 8) accepts any text.
 * @param text the address text
 * @param flags ADDRCHK_HOSTNAME, ADDRCHK_IPV4, ADDRCHK_IPV6, ADDRCHK_INTERFACE combined
 * @return 0 or the fault position */
JCP_EXPORT int addrchk(const char* text, int flags);

/** Dot-separated labels of printable characters; the last label letters only, at least two of
 * them when there is a dot.
 * @param text the host name
 * @return 0 or the fault position; empty text gives 1, a single label with a non-letter 1 */
JCP_EXPORT int addrchk_hostname(const char* text);

/** Four dotted decimal groups of 1 to 3 digits, each at most 255.
 * @param text the address text
 * @return 0 or the fault position; empty text gives 1, a wrong number of dots or a trailing
 *         dot the text length */
JCP_EXPORT int addrchk_ipv4(const char* text);

/** Hexadecimal groups of at most 4 digits: 7 colons, or fewer with one "::". Accepts "::".
 * @param text the address text
 * @return 0 or the fault position; empty text gives 1, a fault found only at the end the
 *         text length */
JCP_EXPORT int addrchk_ipv6(const char* text);

/** Whether the text is an IPv4 address a host may use: four decimal numbers separated by dots
 * that are not a first number of 0, 127 or 224 (only that one multicast block), x.0.0.0 or
 * 255.255.255.255. The numbers are not range-checked: an octet above 255 ("1.2.3.300") gives 0;
 * addrchk with flag 2 refuses it.
 * @param text the address text
 * @return 0 when it is; 1 for anything else */
JCP_EXPORT int addrchk_interfaceaddr_v4(const char* text);

/** Whether the text is an IPv6 global unicast, unique local or link-local address.
 * @param text the address text
 * @return 0 when it is; otherwise 1 for empty or all-zero text, the syntax fault position,
 *         or 10 for any other scope */
JCP_EXPORT int addrchk_interfaceaddr_v6(const char* text);

/** A host name or IPv4 interface address as it stands, or an IPv6 interface address in
 * square brackets.
 * @param text the name or address text
 * @return 0 when valid; 1 for a bare IPv6 address or text not starting with "[", 2 when
 *         shorter than 3 characters, the text length without a closing "]", else the result
 *         for the inner text */
JCP_EXPORT int addrchk_common_name(const char* text);

///@}

/** Parses IPv6 text (one leading ":" skipped, "::" expanded) into 16 bytes in network order.
 * Missing groups without a "::" are zero. On failure bytes and summary are left untouched.
 * @param text the address text
 * @param bytes receives the 16 bytes; may be null
 * @param summary receives, for group i, the number of digits written in bits 4i to 4i+3 (0
 *        for groups made by "::"); may be null
 * @return 0, or 1 empty text, 2 a second "::", 3 a group that is not 1 to 4 hexadecimal
 *         digits, 4 more than 8 groups */
JCP_EXPORT int addrchk_ipv6_assign_from_str(const char* text, unsigned char* bytes, int* summary);

/** Scope of an IPv4 address; addresses of 127/8 other than 127.0.0.1 are global.
 * @param addr the address as a host-order number
 * @return an ADDRCHK_SCOPE_* code */
JCP_EXPORT int addrchk_ipv4_addr_scope(uint32_t addr);
/** Scope of an IPv6 address.
 * @param bytes the 16 address bytes in network order
 * @return an ADDRCHK_SCOPE_* code; null gives 0 */
JCP_EXPORT int addrchk_ipv6_addr_scope(const unsigned char* bytes);
/** Multicast scope of an IPv6 multicast address. The first byte is not checked: the caller
 * passes a multicast address.
 * @param bytes the 16 address bytes in network order
 * @return the low four bits of the second byte when they are 1, 2, 4, 5, 8 or 14, else 0;
 *         null gives 0 */
JCP_EXPORT int addrchk_ipv6_mcast_scope(const unsigned char* bytes);

/** As addrchk_ipv4_addr_scope, from text.
 * @param text the address text
 * @return an ADDRCHK_SCOPE_* code; 0 when the text is not an IPv4 address */
JCP_EXPORT int addrchk_ipv4_addr_scope_str(const char* text);
/** As addrchk_ipv6_addr_scope, from text.
 * @param text the address text
 * @param bytes receives the parsed 16 bytes when the text is an IPv6 address; may be null
 * @return an ADDRCHK_SCOPE_* code; 0 when the text is not an IPv6 address */
JCP_EXPORT int addrchk_ipv6_addr_scope_str(const char* text, unsigned char* bytes);
/** As addrchk_ipv6_mcast_scope, from text.
 * @param text the address text
 * @return the multicast scope; 0 unless the text is an IPv6 multicast address */
JCP_EXPORT int addrchk_ipv6_mcast_scope_str(const char* text);

#ifdef __cplusplus
}
#endif

#endif
