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

#include "../base/records.h"

#ifdef __cplusplus
extern "C" {
#endif

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

/** Our addition to the daemon's interface: what `jsoncfgplus lint` says of a document,
 * before the daemon applies it. The parse accepts a document that, for example, names no SSID
 * at all; this tells the daemon so. Lint builds and converts the document as a parse does (no
 * Redis server is reached and nothing is saved), but prints nothing: the library's lines of
 * that build stay off standard output and off the diagnostics handler. Errors: the AP refuses
 * the document, or drops, clamps, masks, defaults or reinterprets something it says. Warnings:
 * accepted as written, but probably not meant (non-strict JSON, an unused object, a value
 * outside the standard's range). Like a parse, one call at a time per process.
 * @param json the document's text; need not be NUL-terminated
 * @param length bytes of json
 * @param handler receives each problem in order, syntax first; may be NULL
 * @param context passed to every call of handler
 * @param warnings receives the number of warnings; may be NULL
 * @return the number of errors (0: the document is applied exactly as written); -1 when json
 *         is NULL */
JCP_EXPORT int jsonCfgPlusLint(const char* json, unsigned int length,
                               jsonCfgPlusLintHandler handler, void* context,
                               unsigned int* warnings);

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
