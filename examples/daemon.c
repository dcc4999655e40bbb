/* SPDX-License-Identifier: MIT */
/* A configuration daemon's whole use of jsoncfgplus, in C: route the library's diagnostics,
 * lint a JSON-Q+ document and refuse it on an error, translate it, walk every entry array,
 * decode fixed records through the C header, release the result.
 *
 *   cc -std=c11 daemon.c $(pkg-config --cflags --libs jsoncfgplus) -o daemon
 *   ./daemon ap-config.json
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <jsoncfgplus/api/jsoncfgplus.h>
#include <jsoncfgplus/convert/ap_records.h>

/* Diagnostics: a daemon would hand each line to syslog, e.g. with LOG_DEBUG, LOG_INFO,
 * LOG_NOTICE, LOG_WARNING and LOG_ERR for the five levels. This one counts them and shows
 * warnings and errors. */
static int diagCounts[JCP_DIAG_ERROR + 1];

static void onDiagnostic(int level, const char* line, void* context) {
    int* counts = context;
    if (level >= JCP_DIAG_PROGRESS && level <= JCP_DIAG_ERROR) ++counts[level];
    if (level >= JCP_DIAG_WARNING)
        fprintf(stderr, "jsoncfgplus %s: %s\n", level == JCP_DIAG_ERROR ? "error" : "warning",
                line);
}

/* The entry of a list with that name, or NULL. */
static const apiCfgPlusEntry* findEntry(const apiCfgPlusEntryArray* list, const char* name) {
    for (int i = 0; i < list->count; ++i)
        if (strcmp(list->entries[i].name, name) == 0) return &list->entries[i];
    return NULL;
}

/* An integer entry's value, or fallback when the list has no such integer. */
static int intEntry(const apiCfgPlusEntryArray* list, const char* name, int fallback) {
    const apiCfgPlusEntry* e = findEntry(list, name);
    return e != NULL && e->type == CFG_INT ? *(const int32_t*)e->value : fallback;
}

/* How many fixed records of `size` bytes a CFG_BYTES entry holds; 0 when it is absent. */
static int recordCount(const apiCfgPlusEntry* e, size_t size) {
    return e != NULL && e->type == CFG_BYTES ? (int)((size_t)e->size / size) : 0;
}

static void showTopologies(const apiCfgPlusEntryArray* global) {
    const apiCfgPlusEntry* e = findEntry(global, "cen_topologies");
    const TOPOLOGY_ENTRY* topology = e != NULL ? e->value : NULL;
    for (int i = 0; i < recordCount(e, sizeof(TOPOLOGY_ENTRY)); ++i)
        printf("topology %d: %s, type %u, VLAN %u, %u remote endpoint(s)\n",
               topology[i].internal_key, topology[i].name, topology[i].type, topology[i].vlan,
               topology[i].remote_endpoint_count);
}

/* A radio's entries carry radio id - 1; radios[i] is not always radio i + 1. */
static void showRadios(const apiCfgPlusResult* r) {
    for (int i = 0; i < r->radioCount; ++i) {
        const apiCfgPlusEntryArray* radio = &r->radios[i];
        printf("radio %d: %d entries\n", intEntry(radio, "cen_radio_id", -1), radio->count);
    }
}

/* After the pipeline every radio and wired port has eight WLAN slots; a free slot's
 * "cen_ssid_id" is 0. */
static void showWlans(const apiCfgPlusResult* r) {
    for (int i = 0; i < r->vnsCount; ++i) {
        const apiCfgPlusEntryArray* wlan = &r->vnsList[i];
        int ssidId = intEntry(wlan, "cen_ssid_id", 0);
        if (wlan->count == 0 || ssidId == 0) continue;
        const apiCfgPlusEntry* ssid = findEntry(wlan, "ssid");
        const apiCfgPlusEntry* rules = findEntry(wlan, "cen_filter_rules");
        printf("radio %d slot %d: ssid id %d \"%s\", %d filter rule(s)\n",
               wlan->entries[0].radio + 1, wlan->entries[0].vns, ssidId,
               ssid != NULL && ssid->type == CFG_STRING ? (const char*)ssid->value : "",
               recordCount(rules, sizeof(apiCfgPlusFilterRule)));
    }
}

static void showMeshpoints(const apiCfgPlusResult* r) {
    for (int i = 0; i < r->meshpointCount; ++i) {
        const apiCfgPlusEntryArray* mp = &r->meshpoints[i];
        if (mp->count > 0)
            printf("meshpoint on radio %d slot %d: %d entries\n", mp->entries[0].radio + 1,
                   mp->entries[0].vns, mp->count);
    }
}

/* The whole file in a buffer the caller frees; NULL when it cannot be read. */
static char* readDocument(const char* path, unsigned int* length) {
    FILE* f = fopen(path, "rb");
    if (f == NULL) return NULL;
    char* text = NULL;
    size_t size = 0;
    char chunk[65536];
    size_t got;
    while ((got = fread(chunk, 1, sizeof chunk, f)) > 0) {
        char* grown = realloc(text, size + got);
        if (grown == NULL) break;
        text = grown;
        memcpy(text + size, chunk, got);
        size += got;
    }
    fclose(f);
    *length = (unsigned int)size;
    return text;
}

/* lint's problems, as a daemon would log them before deciding. */
static void onLintProblem(const jsonCfgPlusLintProblem* p, void* path) {
    fprintf(stderr, "%s:%d:%d: %s: %s: %s\n", *(const char**)path, p->line, p->column,
            p->severity == JCP_LINT_ERROR ? "error" : "warning", p->pointer, p->message);
}

int main(int argc, char** argv) {
    const char* path = argc > 1 ? argv[1] : "examples/ap-config.json";
    setJsonCfgPlusDiagHandler(onDiagnostic, diagCounts);

    unsigned int length = 0;
    char* text = readDocument(path, &length);
    if (text == NULL) {
        fprintf(stderr, "%s: cannot be read\n", path);
        return 1;
    }
    /* Asked before applying: the parse would accept a document that drops what it says. */
    unsigned int warnings = 0;
    int errors = jsonCfgPlusLint(text, length, onLintProblem, &path, &warnings);
    printf("lint: %d error(s), %u warning(s)\n", errors, warnings);
    if (errors != 0) {
        fprintf(stderr, "%s: refused, the AP would not apply it as written\n", path);
        free(text);
        return 1;
    }

    apiCfgPlusResult* r = parseJsonCfgPlus(text, length, jsonCfgPlusParserCallback, 0, 0, 0);
    free(text);
    if (r == NULL) {
        fprintf(stderr, "%s: not translated\n", path);
        return 1;
    }
    printf("%d global entries, %d radio(s), %d WLAN slot(s), %d meshpoint(s)\n", r->global.count,
           r->radioCount, r->vnsCount, r->meshpointCount);
    showTopologies(&r->global);
    showRadios(r);
    showWlans(r);
    showMeshpoints(r);
    freeJsonCfgPlus(r);

    setJsonCfgPlusDiagHandler(NULL, NULL);
    printf("released; diagnostics: %d milestone(s), %d info, %d warning(s), %d error(s)\n",
           diagCounts[JCP_DIAG_MILESTONE], diagCounts[JCP_DIAG_INFO], diagCounts[JCP_DIAG_WARNING],
           diagCounts[JCP_DIAG_ERROR]);
    return 0;
}
