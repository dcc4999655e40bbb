/* The one header the configuration daemon includes: the records handed across the boundary
 * and every exported C entry. The whole header compiles as C and as C++. */
#ifndef JSONCFGPLUS_API_JSONCFGPLUS_H
#define JSONCFGPLUS_API_JSONCFGPLUS_H

#include <stdint.h>

#include "api/export.h"

#ifdef __cplusplus
extern "C" {
class jsonCfgPlus;
#else
typedef struct jsonCfgPlus jsonCfgPlus;
#endif

/* Value kinds; the numbers cross the boundary in apiCfgPlusEntry.type. */
typedef enum cfgElementKind {
    CFG_NULL = 0,
    CFG_BOOL = 1,
    CFG_DOUBLE = 2,
    CFG_INT = 3,
    CFG_STRING = 4,
    CFG_BYTES = 5,
    CFG_EMPTY_ARRAY = 6,
    CFG_STR_LIST = 7,
    CFG_INT_LIST = 8,
    CFG_OBJECT = 9,
    CFG_OBJ_ARRAY = 10
} cfgElementKind;

struct apiCfgPlusEntry;
typedef void (*apiCfgPlusFreeFn)(struct apiCfgPlusEntry*);
/* Returns a heap string (strdup) that the caller frees. */
typedef char* (*apiCfgPlusPrintFn)(struct apiCfgPlusEntry*, unsigned int indent);

/* Radio indexes, as apiCfgPlusEntry.radio carries them (the document's radio id - 1), never
 * below -1:
 *   -1           the global list (and the entries of a "radio0")
 *   0 to 2       wireless radios "radio1" to "radio3" (only radios up to index 2 get a radio
 *                entry array; "radioN" up to N = 99999 is index N - 1)
 *   3 to 5       wired ports "p1" to "p3" ("pN" up to N = 99996 is index N + 2)
 *   99999        the IoT radio "bluetooth1" (its settings also come as "iot/..." globals)
 *   100000 + N   bridge port "brN"
 * The wired ports, the IoT radio and the bridges bring WLAN arrays but no radio entry array;
 * after jsonCfgPlusParserCallback every one of them has eight WLAN slots (vns 0 to 7). */
#define JSONCFGPLUS_IOT_RADIO_INDEX 99999
#define JSONCFGPLUS_BRIDGE_RADIO_INDEX(n) (100000 + (n))

/* One element as the caller sees it. radio and vns are set on top-level entries only. */
typedef struct apiCfgPlusEntry {
    int32_t radio; /* 0-based radio index (see above), -1 for the global list */
    int32_t vns;   /* VNS or meshpoint id, -1 for global and radio lists */
    int32_t type;  /* cfgElementKind */
    char* name;
    void* value;               /* laid out by type; NULL for CFG_NULL and CFG_EMPTY_ARRAY */
    int32_t size;              /* bytes behind value */
    apiCfgPlusFreeFn freeFn;   /* NULL: the standard release by type */
    apiCfgPlusPrintFn printFn; /* NULL: the standard rendering by type */
} apiCfgPlusEntry;

typedef struct apiCfgPlusEntryArray {
    int32_t count;
    apiCfgPlusEntry* entries; /* NULL when count is 0 */
} apiCfgPlusEntryArray;

typedef struct apiCfgPlusResult {
    apiCfgPlusEntryArray global;
    int32_t radioCount;
    apiCfgPlusEntryArray* radios;
    int32_t vnsCount;
    apiCfgPlusEntryArray* vnsList;
    int32_t meshpointCount;
    apiCfgPlusEntryArray* meshpoints;
} apiCfgPlusResult;

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

/* Debug switches read from the settings file; four bytes. */
typedef struct jsonCfgPlusDebug {
    uint8_t cap;
    uint8_t tproxy;
    uint8_t cfcgi;
    uint8_t saveCfg; /* boolean */
} jsonCfgPlusDebug;

/* The conversion pipeline run at the end of a build; jsonCfgPlusParserCallback is one. */
typedef int (*jsonCfgPlusCallback)(jsonCfgPlus* document);

/* Builds a document; NULL on any failure (the reason has been printed). The caller releases
 * the result with freeJsonCfgPlus. */
JCP_EXPORT apiCfgPlusResult* parseJsonCfgPlus(const char* json, unsigned int length,
                                              jsonCfgPlusCallback callback, int save,
                                              int saveBackup, int trace);
/* As parseJsonCfgPlus on a file's content; NULL silently when the file cannot be opened. */
JCP_EXPORT apiCfgPlusResult* parseJsonCfgPlusFile(const char* path, jsonCfgPlusCallback callback,
                                                  int save, int saveBackup, int trace);
/* Releases every entry, honouring each entry's own release function. NULL does nothing. */
JCP_EXPORT void freeJsonCfgPlus(apiCfgPlusResult* result);
/* The top-level "request-id"; 0 when absent or when the text does not parse. */
JCP_EXPORT int getJsonCfgPlusReqId(const char* json, unsigned int length);
/* -1 when the document's serial number differs from apSerial, else 0. Sets the clock from
 * "cen_time" when the text parses. */
JCP_EXPORT int checkJsonCfgPlus(const char* json, unsigned int length, const char* apSerial,
                                int* requestId);
/* Prints a result record section by section; NULL prints nothing. */
JCP_EXPORT void printJsonCfgPlus(apiCfgPlusResult* result);

/* Stores payload in Redis under the key named by the pointer document's "ip", "port" and
 * "key"; -1 when the pointer document is unusable or the server unreachable. */
JCP_EXPORT int sendJsonCfgPlus(const char* pointer, unsigned int length, const char* payload,
                               int verbose);
/* Reads key from host:port; 0 when a string value was read, -1 otherwise. */
JCP_EXPORT int testJsonCfgPlusRedis(const char* host, int port, const char* key);

/* Reloads the debug settings file; the record lives as long as the library. */
JCP_EXPORT jsonCfgPlusDebug* getJsonCfgPlusDebugCfg(void);
/* The apply-configuration file's content, re-read on every call; NULL when there is none. */
JCP_EXPORT const char* getJsonCfgPlusDebugApplyCfg(void);
/* Sets the apply-configuration file path (NULL means none) and clears the payload. */
JCP_EXPORT void setJsonCfgPlusDebugApplyCfg(const char* path);
JCP_EXPORT void printJsonCfgPlusDebugCfg(void);

/* Our addition to the daemon's interface. The most configuration elements one parse may create
 * before it fails with "[ERR] document needs more than the element budget of N elements, build
 * stopped." (a small document naming one huge ACL from thousands of WLANs would otherwise
 * exhaust the AP's memory). An element costs up to about 290 bytes of heap on 32-bit ARM, so
 * the budget is a memory bound: set one that fits the AP. It holds for every later parse,
 * whatever the document's size. 0 restores the default: 1,000,000 elements (a fully loaded
 * campus AP's document needs under 800,000), or one per byte of a larger document. */
JCP_EXPORT void setJsonCfgPlusElementBudget(unsigned long budget);

/* The conversion pipeline; -1 for a null document, else the first non-zero converter result. */
JCP_EXPORT int jsonCfgPlusParserCallback(jsonCfgPlus* document);
/* The wireless-mode bit mask of a list of rate names for a band (0 2.4 GHz, 1 5 GHz, 2 6 GHz). */
JCP_EXPORT int jsonCfgPlusRates2WirelessMode(int band, const char** rates, int count,
                                             uint32_t* mode, const char** basic);

#ifdef __cplusplus
}
#endif

#include "addr/addrchk.h"

#endif
