/* SPDX-License-Identifier: MIT */
/** @file
 * The one header the configuration daemon includes: the records handed across the boundary
 * and every exported C entry. The whole header compiles as C and as C++.
 *
 * **Byte order.** Every number the library hands over (entry values, the fields of the fixed
 * records in convert/ap_records.h) is in the AP's own byte order, little-endian; a big-endian
 * build is refused at compile time. The exceptions are addresses: record fields documented as
 * "network byte order", and the IPv4 addresses some converters turn into CFG_INT or
 * CFG_INT_LIST values for the AP's network calls, hold the octets in transmission order (the
 * first octet at the lowest address); a MAC address is 6 CFG_BYTES in transmission order.
 *
 * **Ownership.** Strings and records the library hands over belong to the library's result
 * record until freeJsonCfgPlus releases it; a caller never frees anything inside it.
 *
 * **Threads.** The library keeps process-wide state (the debug settings, the signature maps,
 * the saved-file counter, the diagnostics handler) without locks: call it from one thread at a
 * time.
 */
#ifndef JSONCFGPLUS_API_JSONCFGPLUS_H
#define JSONCFGPLUS_API_JSONCFGPLUS_H

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

/** Builds a document into entry arrays.
 * @param json the document text; need not be NUL-terminated
 * @param length bytes of json
 * @param callback the pipeline, normally jsonCfgPlusParserCallback; NULL builds the element
 *        lists and converts nothing
 * @param save non-zero saves the received document under /tmp (json_q1.json, json_q2.json in
 *        turn)
 * @param saveBackup non-zero puts "_bk" into the saved file's name
 * @param trace non-zero prints the build's and the converters' progress lines
 * @return a new result that the caller owns and releases with freeJsonCfgPlus; NULL on any
 *         failure (text that does not parse, a missing device, a converter's refusal), whose
 *         reason has been printed as a diagnostic. Allocation failure is the one failure that
 *         leaves as an exception (std::bad_alloc). */
JCP_EXPORT apiCfgPlusResult* parseJsonCfgPlus(const char* json, unsigned int length,
                                              jsonCfgPlusCallback callback, int save,
                                              int saveBackup, int trace);
/** As parseJsonCfgPlus on a file's content.
 * @param path the file; NULL or a file that cannot be read gives NULL without a message
 * @param callback, save, saveBackup, trace as for parseJsonCfgPlus
 * @return as parseJsonCfgPlus */
JCP_EXPORT apiCfgPlusResult* parseJsonCfgPlusFile(const char* path, jsonCfgPlusCallback callback,
                                                  int save, int saveBackup, int trace);
/** Releases a result and everything in it, honouring each entry's own release function; the
 * only way to release one. Prints "JSON-Q+: freeJsonCfgPlus done.".
 * @param result a result of parseJsonCfgPlus or parseJsonCfgPlusFile; NULL does nothing */
JCP_EXPORT void freeJsonCfgPlus(apiCfgPlusResult* result);
/** Reads the document's top-level "request-id" without building it.
 * @param json the document text
 * @param length bytes of json
 * @return the request id; 0 when absent or when the text does not parse */
JCP_EXPORT int getJsonCfgPlusReqId(const char* json, unsigned int length);
/** Compares the document's "device"/"cen_serial_number" with the AP's serial number, and sets
 * the system clock from the document's "cen_time" (plus half a second) when it has one.
 * @param json the document text
 * @param length bytes of json
 * @param apSerial the AP's serial number; NULL compares nothing
 * @param requestId receives the document's "request-id" when it has one; may be NULL
 * @return -1 when both serial numbers are known and differ; 0 otherwise, also when the text
 *         does not parse (then nothing else happens) */
JCP_EXPORT int checkJsonCfgPlus(const char* json, unsigned int length, const char* apSerial,
                                int* requestId);
/** Prints a result section by section as diagnostic lines, each entry through its own
 * rendering.
 * @param result the result to print; NULL prints nothing */
JCP_EXPORT void printJsonCfgPlus(apiCfgPlusResult* result);

/** Stores a document in Redis.
 * @param pointer a small JSON document naming the server ("ip", "port") and the "key"
 * @param length bytes of pointer
 * @param payload the NUL-terminated text to store
 * @param verbose non-zero also prints the payload
 * @return -1 when the pointer document is unusable or the server unreachable; otherwise 0,
 *         also when the server refuses the value (that is reported as a diagnostic only) */
JCP_EXPORT int sendJsonCfgPlus(const char* pointer, unsigned int length, const char* payload,
                               int verbose);
/** Reads a key from a Redis server, to test the connection.
 * @param host server name or address
 * @param port server port
 * @param key the key to read
 * @return 0 when a string value was read, -1 otherwise */
JCP_EXPORT int testJsonCfgPlusRedis(const char* host, int port, const char* key);

/** Reloads the debug settings file (/home/config/cap.conf.xml).
 * @return the switches; the record belongs to the library and lives as long as it does */
JCP_EXPORT jsonCfgPlusDebug* getJsonCfgPlusDebugCfg(void);
/** Reads the apply-configuration file again.
 * @return its content, owned by the library and valid until the next call of this function or
 *         of setJsonCfgPlusDebugApplyCfg; NULL when there is none */
JCP_EXPORT const char* getJsonCfgPlusDebugApplyCfg(void);
/** Sets the apply-configuration file and clears the content read before.
 * @param path the file; NULL means none */
JCP_EXPORT void setJsonCfgPlusDebugApplyCfg(const char* path);
/** Prints the debug settings as diagnostic lines. */
JCP_EXPORT void printJsonCfgPlusDebugCfg(void);

/** Our addition to the daemon's interface: the most configuration elements one parse may
 * create before it fails with "[ERR] document needs more than the element budget of N
 * elements, build stopped." (a small document naming one huge ACL from thousands of WLANs
 * would otherwise exhaust the AP's memory). An element costs up to about 290 bytes of heap on
 * 32-bit ARM, so the budget is a memory bound: set one that fits the AP. It holds for every
 * later parse, whatever the document's size.
 * @param budget the element budget; 0 restores the default: 1,000,000 elements (a fully loaded
 *        campus AP's document needs under 800,000), or one per byte of a larger document */
JCP_EXPORT void setJsonCfgPlusElementBudget(unsigned long budget);

/** Our addition to the daemon's interface: the directory whose files a document's Passpoint
 * icons name. A document names an icon only by a plain file name in it; the file must be a
 * regular file (not a link) of at most 65535 bytes that starts as a PNG, JPEG, GIF, BMP or
 * ICO image, or the icon is left out with a "[WARN]" line.
 * @param dir the directory; NULL restores the default, /home/config/hs2_icons */
JCP_EXPORT void setJsonCfgPlusIconDir(const char* dir);

/** The conversion pipeline: runs every converter in its fixed order on a built document.
 * @param document the document, as the build passes it
 * @return 0 on success; -1 for a NULL document; else the first non-zero converter result,
 *         which stops the pipeline */
JCP_EXPORT int jsonCfgPlusParserCallback(jsonCfgPlus* document);
/** The wireless-mode bit mask of a list of rate names.
 * @param band 0 for 2.4 GHz, 1 for 5 GHz, 2 for 6 GHz
 * @param rates rate names ("1", "54", "mcs0-7", "basic-1", ...) or one mode keyword
 *        ("default" or a mode name); NULL names are skipped
 * @param count names in rates; NULL rates or a negative count is an empty list
 * @param mode receives the mask (bits 0x1 b, 0x2 g, 0x4 a, 0x10 n, 0x40 ac, 0x100 ax, and
 *        the band bit); may be NULL
 * @param basic receives the first basic rate, pointing into the caller's strings past any
 *        "basic-"; may be NULL
 * @return 0 when a mode was found; -1 when not (mode is left untouched) */
JCP_EXPORT int jsonCfgPlusRates2WirelessMode(int band, const char** rates, int count,
                                             uint32_t* mode, const char** basic);

/** @name Diagnostics
 * The library writes every diagnostic as one line: on standard output, ended and flushed
 * (json-c's parse errors, "Error: ...", on standard error), unless the caller installs a
 * handler. The diagnostics handler is this library's own addition to the interface the AP's
 * daemon has always used: it lets a daemon send the lines to syslog instead of redirecting its
 * own standard output.
 */
///@{

/** Levels of a diagnostic line, in ascending severity, so that a handler can filter with one
 * comparison. */
typedef enum jsonCfgPlusDiagLevel {
    JCP_DIAG_PROGRESS = 0,  /**< build and converter progress; only with the trace flag */
    JCP_DIAG_INFO = 1,      /**< notes, reports and dumps ("[INFO]" and unmarked lines) */
    JCP_DIAG_MILESTONE = 2, /**< the library's milestones ("JSON-Q+: ...") */
    JCP_DIAG_WARNING = 3,   /**< something of the document was dropped or defaulted ("[WARN]") */
    JCP_DIAG_ERROR = 4      /**< something failed ("[ERR]", "[ERROR]", json-c's "Error: ...") */
} jsonCfgPlusDiagLevel;

/** Receives one diagnostic.
 * @param level a jsonCfgPlusDiagLevel
 * @param line the text standard output would have shown, without its line end (a document
 *        echoed back may span several lines); valid only during the call
 * @param context the pointer given to setJsonCfgPlusDiagHandler */
typedef void (*jsonCfgPlusDiagHandler)(int level, const char* line, void* context);

/** Sends every diagnostic line to handler instead of standard output and standard error.
 * The handler runs on the calling thread, inside the library's entry, and must not call back
 * into the library. Install it before a parse, not during one.
 * @param handler the function; NULL restores standard output and standard error
 * @param context passed to every call of handler */
JCP_EXPORT void setJsonCfgPlusDiagHandler(jsonCfgPlusDiagHandler handler, void* context);

///@}

#ifdef __cplusplus
}
#endif

#include "../addr/addrchk.h"

#endif
