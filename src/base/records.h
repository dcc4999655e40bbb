/* SPDX-License-Identifier: MIT */
/** @file
 * The records that cross the boundary, in C and C++: value kinds, entries, entry arrays, the
 * result, the debug switches, the pipeline function and the diagnostics handler's types. The
 * daemon includes them through api/jsoncfgplus.h; every part of the library builds on them.
 */
#ifndef JSONCFGPLUS_BASE_RECORDS_H
#define JSONCFGPLUS_BASE_RECORDS_H

#include <stdint.h>

#include "export.h"

#ifdef __cplusplus
extern "C" {
class jsonCfgPlus;
#else
/** The document a build works on; a C caller only passes it on to the pipeline. */
typedef struct jsonCfgPlus jsonCfgPlus;
#endif

/** Value kinds; the numbers cross the boundary in apiCfgPlusEntry::type.
 *
 * How apiCfgPlusEntry::value and apiCfgPlusEntry::size are laid out for each kind:
 *
 * | Kind | `value` points to | `size` |
 * |---|---|---|
 * | CFG_NULL | NULL | 0 |
 * | CFG_BOOL | one `int32_t`, 0 or 1 | 4 |
 * | CFG_DOUBLE | one `double` | 8 |
 * | CFG_INT | one `int32_t` | 4 |
 * | CFG_STRING | a NUL-terminated text | its length without the NUL |
 * | CFG_BYTES | `size` bytes: an address or a converter's records | number of bytes |
 * | CFG_EMPTY_ARRAY | NULL | 0 |
 * | CFG_STR_LIST | array of `char*`, NUL-terminated texts | count × `sizeof(char*)` |
 * | CFG_INT_LIST | array of `int32_t` | count × 4 |
 * | CFG_OBJECT | array of nested entries, one per member | count × `sizeof(apiCfgPlusEntry)` |
 * | CFG_OBJ_ARRAY | array of nested CFG_OBJECT entries | count × `sizeof(apiCfgPlusEntry)` |
 *
 * An empty list, object or byte value may still point to a block of zero length: test `size`,
 * not `value`. `sizeof(char*)` is 4 and `sizeof(apiCfgPlusEntry)` 32 on the AP.
 */
typedef enum cfgElementKind {
    CFG_NULL = 0,        /**< no value */
    CFG_BOOL = 1,        /**< boolean as a 32-bit integer */
    CFG_DOUBLE = 2,      /**< 64-bit floating point */
    CFG_INT = 3,         /**< signed 32-bit integer */
    CFG_STRING = 4,      /**< text */
    CFG_BYTES = 5,       /**< bytes; the converters' binary records */
    CFG_EMPTY_ARRAY = 6, /**< a JSON array with nothing the library keeps */
    CFG_STR_LIST = 7,    /**< list of texts */
    CFG_INT_LIST = 8,    /**< list of integers */
    CFG_OBJECT = 9,      /**< nested entries */
    CFG_OBJ_ARRAY = 10   /**< list of nested objects */
} cfgElementKind;

struct apiCfgPlusEntry;
/** An entry's own release; the library's free entry calls it instead of the standard one. */
typedef void (*apiCfgPlusFreeFn)(struct apiCfgPlusEntry*);
/** An entry's own rendering. Returns a heap string (strdup) that the caller frees. */
typedef char* (*apiCfgPlusPrintFn)(struct apiCfgPlusEntry*, unsigned int indent);

/** @name Radio indexes
 * Radio indexes as apiCfgPlusEntry.radio carries them (the document's radio id - 1), never
 * below -1:
 * | Index | Interface |
 * |---|---|
 * | -1 | the global list (and the entries of a "radio0") |
 * | 0 to 2 | wireless radios "radio1" to "radio3" (only these get a radio entry array; "radioN" up
 * to N = 99999 is index N - 1) | | 3 to 5 | wired ports "p1" to "p3" ("pN" up to N = 99996 is index
 * N + 2) | | 99999 | the IoT radio "bluetooth1" (its settings also come as "iot/..." globals) | |
 * 100000 + N | bridge port "brN" |
 *
 * The wired ports, the IoT radio and the bridges bring WLAN arrays but no radio entry array;
 * after jsonCfgPlusParserCallback every one of them has eight WLAN slots (vns 0 to 7).
 * @{ */
/** The radio index of the IoT radio "bluetooth1". */
#define JSONCFGPLUS_IOT_RADIO_INDEX 99999
/** The radio index of bridge port "brN". */
#define JSONCFGPLUS_BRIDGE_RADIO_INDEX(n) (100000 + (n))
/** @} */

/** One element as the caller sees it; 32 bytes on the AP.
 *
 * `radio` and `vns` are set on top-level entries only; nested entries (inside CFG_OBJECT and
 * CFG_OBJ_ARRAY values) leave them zero.
 *
 * Converters hand their fixed records (convert/ap_records.h) over as CFG_BYTES entries whose
 * value is the records back to back; the entry's name says which:
 *
 * | Name | List | Records |
 * |---|---|---|
 * | "cen_topologies" | global | TOPOLOGY_ENTRY, one per topology |
 * | "cen_ext_applications" | global | EXT_APP_CONFIG, one per application |
 * | "cen_arp_guard_acl" | global | one ARP_GUARD_ACL |
 * | "cen_filter_rules" | WLAN | apiCfgPlusFilterRule: MAC, IPv4, IPv6, portal, application |
 * | "cen_default_cos" | WLAN | one ap_cos_entry |
 * | "cen_resource_table" | WLAN | 18 `uint32_t`: 9 pairs of ingress and egress rate limits |
 * | "passpoint_policy/cen_plmnid" | WLAN | _3GPP_CELL_NET |
 * | "passpoint_policy/cen_nai_realm" | WLAN | NAI_REALM |
 * | "passpoint_policy/cen_venue_name_lang" | WLAN | NAME_LANG |
 * | "passpoint_policy/cen_operator_name_lang" | WLAN | NAME_LANG |
 * | "passpoint_policy/cen_cc_variable" | WLAN | CONN_CAP |
 * | "passpoint_policy/cen_osu_provider" | WLAN | OSU_SP_LIST head, OSU_SP records, icon bytes |
 *
 * The number of records is `size` divided by the record's size (the OSU provider list counts
 * its records in its head). A record's printFn renders it; the OSU provider list also has a
 * freeFn.
 */
typedef struct apiCfgPlusEntry {
    int32_t radio;             /**< radio index (see Radio indexes), -1 for the global list */
    int32_t vns;               /**< WLAN slot or meshpoint id, -1 for global and radio lists */
    int32_t type;              /**< cfgElementKind */
    char* name;                /**< slash-joined key path, e.g. "captive_portal/dns_whitelist" */
    void* value;               /**< laid out by type (see cfgElementKind) */
    int32_t size;              /**< bytes behind value */
    apiCfgPlusFreeFn freeFn;   /**< NULL: the standard release by type */
    apiCfgPlusPrintFn printFn; /**< NULL: the standard rendering by type */
} apiCfgPlusEntry;

/** A counted array of entries; 8 bytes on the AP. */
typedef struct apiCfgPlusEntryArray {
    int32_t count;            /**< number of entries */
    apiCfgPlusEntry* entries; /**< NULL when count is 0 */
} apiCfgPlusEntryArray;

/** What parseJsonCfgPlus hands back; 32 bytes on the AP. Release it with freeJsonCfgPlus.
 *
 * Radio ids are 1-based in the document ("radio1" is 1); wired ports "p1" to "p3" are
 * pseudo-radios 4 to 6. Every top-level entry carries its radio as `radio` = id - 1.
 *
 * **radios** holds one array per wireless radio the document configures (ids up to 3), in
 * ascending id: `radios[i]` is the i-th configured radio, which is radio i + 1 only when
 * every lower radio is configured too. A document with "radio2" alone gives `radioCount` 1
 * and `radios[0]` for radio 2. Read the radio from an entry's `radio` field or from the
 * array's "cen_radio_id" entry. Wired ports and other pseudo-radios get no radio array, but
 * their WLAN services are in `vnsList`.
 *
 * **vnsList** holds the WLAN services (VNS) of every radio and pseudo-radio, radio after
 * radio: first those the document names, in ascending id (the wireless radios, the wired
 * ports, the IoT radio, then the bridge ports), then the wired ports p1 to p3 it does not
 * name, which the pipeline adds. Each entry's `vns` is its slot, the BSS number
 * minus 1. The AP configures each radio as a table of eight BSS slots, so after the pipeline
 * (jsonCfgPlusParserCallback) every radio and port has exactly 8 arrays, slots 0 to 7 in
 * order: 3 radios and the 3 wired ports give 48 arrays, and `vnsList[8 * k + s]` is slot s of
 * the k-th of them. A slot the document leaves free is a placeholder holding only
 * "cen_radio_id" and "cen_ssid_id" 0. Meshpoints also take a slot here, as WLAN services with
 * "meshpoint_idx" 0 (the services the document names carry -1). Without the pipeline
 * `vnsList` holds only the services the document names. Either way a service is best found by
 * its entries' `radio` and `vns`.
 *
 * **meshpoints** holds one array per meshpoint, radio after radio and, within a radio, in the
 * order of its "meshpointbssmap"; `vns` is the meshpoint's BSS number minus 1.
 */
typedef struct apiCfgPlusResult {
    apiCfgPlusEntryArray global;      /**< the global settings; radio and vns -1 */
    int32_t radioCount;               /**< arrays in radios */
    apiCfgPlusEntryArray* radios;     /**< one per configured wireless radio; NULL when none */
    int32_t vnsCount;                 /**< arrays in vnsList */
    apiCfgPlusEntryArray* vnsList;    /**< WLAN slots of every radio; NULL when none */
    int32_t meshpointCount;           /**< arrays in meshpoints */
    apiCfgPlusEntryArray* meshpoints; /**< one per meshpoint; NULL when none */
} apiCfgPlusResult;

/// @cond JCP_LAYOUT_CHECKS
#if defined(__i386__) || (defined(__SIZEOF_POINTER__) && __SIZEOF_POINTER__ == 4)
#ifdef __cplusplus
#define JCP_STATIC_ASSERT static_assert
#else
#define JCP_STATIC_ASSERT _Static_assert
#endif
JCP_STATIC_ASSERT(sizeof(apiCfgPlusEntry) == 32, "apiCfgPlusEntry is 32 bytes on the AP");
JCP_STATIC_ASSERT(sizeof(apiCfgPlusEntryArray) == 8, "apiCfgPlusEntryArray is 8 bytes on the AP");
JCP_STATIC_ASSERT(sizeof(apiCfgPlusResult) == 32, "apiCfgPlusResult is 32 bytes on the AP");
#undef JCP_STATIC_ASSERT
#endif
/// @endcond

/** Debug switches read from the settings file; four bytes. */
typedef struct jsonCfgPlusDebug {
    uint8_t cap;     /**< the "cap" switch */
    uint8_t tproxy;  /**< the "tproxy" switch */
    uint8_t cfcgi;   /**< the "cfcgi" switch */
    uint8_t saveCfg; /**< 1 when received documents are saved */
} jsonCfgPlusDebug;

/** The conversion pipeline run at the end of a build; jsonCfgPlusParserCallback is one.
 * Returns 0 on success; anything else fails the parse. */
typedef int (*jsonCfgPlusCallback)(jsonCfgPlus* document);

/** Levels of a diagnostic line, in ascending severity, so that a handler can filter with one
 * comparison. */
typedef enum jsonCfgPlusDiagLevel {
    JCP_DIAG_PROGRESS = 0,  /**< build and converter progress; only with the trace flag */
    JCP_DIAG_INFO = 1,      /**< notes, reports and dumps ("[INFO]" and unmarked lines) */
    JCP_DIAG_MILESTONE = 2, /**< the library's milestones ("JSON-Q+: ...") */
    JCP_DIAG_WARNING = 3,   /**< something of the document was dropped or defaulted ("[WARN]") */
    JCP_DIAG_ERROR = 4      /**< something failed ("[ERR]", "[ERROR]", json-c's "Error: ...", a
                               converter's "... is not valid: ...") */
} jsonCfgPlusDiagLevel;

/** Receives one diagnostic.
 * @param level a jsonCfgPlusDiagLevel
 * @param line the text standard output would have shown, without its line end (a document
 *        echoed back may span several lines); valid only during the call
 * @param context the pointer given to setJsonCfgPlusDiagHandler */
typedef void (*jsonCfgPlusDiagHandler)(int level, const char* line, void* context);

/** How much a problem lint reports matters. */
typedef enum jsonCfgPlusLintSeverity {
    JCP_LINT_ERROR = 0,  /**< the AP refuses the document, or drops, clamps, masks, defaults or
                              reinterprets something it says */
    JCP_LINT_WARNING = 1 /**< accepted as written, but probably not meant */
} jsonCfgPlusLintSeverity;

/** One problem of a document, as jsonCfgPlusLint reports it. The texts are valid only during
 * the handler's call. */
typedef struct jsonCfgPlusLintProblem {
    int severity;        /**< a jsonCfgPlusLintSeverity */
    int line;            /**< 1-based line of the member in the text; 0 when it has none */
    int column;          /**< 1-based column, in bytes; 0 when it has none */
    const char* pointer; /**< RFC 6901 JSON Pointer of the member; "" is the whole document */
    const char* message; /**< one line: what is wrong and what the AP does with it */
    const char* rule;    /**< the kind of check: "syntax", "strict-json" or "document" */
} jsonCfgPlusLintProblem;

/** Receives one problem of jsonCfgPlusLint.
 * @param problem the problem; valid only during the call
 * @param context the pointer given to jsonCfgPlusLint */
typedef void (*jsonCfgPlusLintHandler)(const jsonCfgPlusLintProblem* problem, void* context);

#ifdef __cplusplus
}
#endif

#endif
