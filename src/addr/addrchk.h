/* Textual address validators (C linkage). */
#ifndef JSONCFGPLUS_ADDR_ADDRCHK_H
#define JSONCFGPLUS_ADDR_ADDRCHK_H

#include <stdint.h>

#include "api/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Flags of addrchk. */
enum {
    ADDRCHK_HOSTNAME = 1, /* a host name is allowed */
    ADDRCHK_IPV4 = 2,     /* an IPv4 address is allowed */
    ADDRCHK_IPV6 = 4,     /* an IPv6 address is allowed */
    ADDRCHK_INTERFACE = 8 /* the address must be usable as a host (interface) address */
};

/* Scope codes of the addrchk_*_scope functions. */
enum {
    ADDRCHK_SCOPE_NONE = 0,
    ADDRCHK_SCOPE_UNSPEC = 1,        /* 0.0.0.0, :: */
    ADDRCHK_SCOPE_GLOBAL = 2,        /* IPv4 only */
    ADDRCHK_SCOPE_LOOPBACK = 3,      /* exactly 127.0.0.1 */
    ADDRCHK_SCOPE_MULTICAST = 4,     /* 224/4 */
    ADDRCHK_SCOPE_PRIVATE = 5,       /* 10/8, 172.16/12, 192.168/16 */
    ADDRCHK_SCOPE_LINKLOCAL = 6,     /* 169.254/16 */
    ADDRCHK_SCOPE_BROADCAST = 7,     /* 255.255.255.255 */
    ADDRCHK_SCOPE_V6_LOOPBACK = 8,   /* ::1 */
    ADDRCHK_SCOPE_V6_MAPPED = 9,     /* ::ffff:0:0/96 */
    ADDRCHK_SCOPE_V6_GLOBAL = 10,    /* 2000::/3 */
    ADDRCHK_SCOPE_V6_ULA = 11,       /* fc00::/7 */
    ADDRCHK_SCOPE_V6_LINKLOCAL = 12, /* fe80::/64 */
    ADDRCHK_SCOPE_V6_MULTICAST = 13  /* ff00::/8 */
};

/* The text checkers return 0 for valid text, otherwise the 1-based position of the first
 * character at which the text stopped being valid. A null pointer counts as empty text. */

/* Host name, IPv4 and/or IPv6 as the flags allow; when several forms fail, the position of
 * the one that got furthest. With ADDRCHK_IPV6|ADDRCHK_INTERFACE the result is that of
 * addrchk_interfaceaddr_v6 alone. No form flag at all (0 or 8) accepts any text. */
JCP_EXPORT int addrchk(const char* text, int flags);

/* Dot-separated labels of printable characters; the last label letters only, at least two of
 * them when there is a dot. Empty text gives 1, a single label with a non-letter gives 1. */
JCP_EXPORT int addrchk_hostname(const char* text);

/* Four dotted decimal groups of 1 to 3 digits, each at most 255. Empty text gives 1; a wrong
 * number of dots or a trailing dot gives the text length. */
JCP_EXPORT int addrchk_ipv4(const char* text);

/* Hexadecimal groups of at most 4 digits: 7 colons, or fewer with one "::". Empty text gives
 * 1; a fault found only at the end gives the text length. Accepts "::". */
JCP_EXPORT int addrchk_ipv6(const char* text);

/* 0 for four decimal numbers separated by dots that are not a first number of 0, 127 or 224
 * (only that one multicast block), x.0.0.0 or 255.255.255.255; 1 for anything else. The
 * numbers are not range-checked: an octet above 255 ("1.2.3.300") gives 0; addrchk with
 * flag 2 refuses it. */
JCP_EXPORT int addrchk_interfaceaddr_v4(const char* text);

/* 0 for an IPv6 global unicast, unique local or link-local address. Otherwise 1 for empty or
 * all-zero text, the syntax position, or 10 for any other scope. */
JCP_EXPORT int addrchk_interfaceaddr_v6(const char* text);

/* 0 for a host name or IPv4 interface address as it stands, or an IPv6 interface address in
 * square brackets. A bare IPv6 address, or text not starting with "[", gives 1; shorter than
 * 3 characters 2; no closing "]" the text length; else the result for the inner text. */
JCP_EXPORT int addrchk_common_name(const char* text);

/* Parses IPv6 text (one leading ":" skipped, "::" expanded) into 16 bytes in network order.
 * Returns 0, or 1 empty text, 2 a second "::", 3 a group that is not 1 to 4 hexadecimal
 * digits, 4 more than 8 groups; on failure bytes and summary are left untouched. Missing
 * groups without a "::" are zero. bytes and summary may be null. The summary packs, for
 * group i, the number of digits written in bits 4i to 4i+3 (0 for groups made by "::"). */
JCP_EXPORT int addrchk_ipv6_assign_from_str(const char* text, unsigned char* bytes, int* summary);

/* Scope of an IPv4 address given as a host-order number; other 127/8 addresses are global. */
JCP_EXPORT int addrchk_ipv4_addr_scope(uint32_t addr);
/* Scope of 16 address bytes; null gives 0. */
JCP_EXPORT int addrchk_ipv6_addr_scope(const unsigned char* bytes);
/* The low four bits of the second byte when they are 1, 2, 4, 5, 8 or 14, else 0. The first
 * byte is not checked: the caller passes a multicast address. Null gives 0. */
JCP_EXPORT int addrchk_ipv6_mcast_scope(const unsigned char* bytes);

/* As above from text; 0 when the text is not an address of that family. */
JCP_EXPORT int addrchk_ipv4_addr_scope_str(const char* text);
/* Also stores the parsed bytes when bytes is not null and the text is an IPv6 address. */
JCP_EXPORT int addrchk_ipv6_addr_scope_str(const char* text, unsigned char* bytes);
/* 0 unless the text is an IPv6 multicast address. */
JCP_EXPORT int addrchk_ipv6_mcast_scope_str(const char* text);

#ifdef __cplusplus
}
#endif

#endif
