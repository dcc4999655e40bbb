/* SPDX-License-Identifier: MIT */
/* The records a daemon reads, laid out by a C compiler as the daemon's own build lays them
 * out: every field at the offset of the AP's 32-bit ABI, or of the LP64 host's. */
#include <stddef.h>
#include <stdio.h>

#include "api/jsoncfgplus.h"

typedef struct layout_row {
    const char* name;
    size_t actual;
    size_t ilp32;
    size_t lp64;
} layout_row;

#define FIELD(type, field, ilp32, lp64) \
    { #type "." #field, offsetof(type, field), ilp32, lp64 }
#define SIZE(type, ilp32, lp64) \
    { "sizeof " #type, sizeof(type), ilp32, lp64 }

static const layout_row kRows[] = {
    SIZE(apiCfgPlusEntry, 32, 56),
    FIELD(apiCfgPlusEntry, radio, 0, 0),
    FIELD(apiCfgPlusEntry, vns, 4, 4),
    FIELD(apiCfgPlusEntry, type, 8, 8),
    FIELD(apiCfgPlusEntry, name, 12, 16),
    FIELD(apiCfgPlusEntry, value, 16, 24),
    FIELD(apiCfgPlusEntry, size, 20, 32),
    FIELD(apiCfgPlusEntry, freeFn, 24, 40),
    FIELD(apiCfgPlusEntry, printFn, 28, 48),
    SIZE(apiCfgPlusEntryArray, 8, 16),
    FIELD(apiCfgPlusEntryArray, count, 0, 0),
    FIELD(apiCfgPlusEntryArray, entries, 4, 8),
    SIZE(apiCfgPlusResult, 32, 64),
    FIELD(apiCfgPlusResult, global, 0, 0),
    FIELD(apiCfgPlusResult, radioCount, 8, 16),
    FIELD(apiCfgPlusResult, radios, 12, 24),
    FIELD(apiCfgPlusResult, vnsCount, 16, 32),
    FIELD(apiCfgPlusResult, vnsList, 20, 40),
    FIELD(apiCfgPlusResult, meshpointCount, 24, 48),
    FIELD(apiCfgPlusResult, meshpoints, 28, 56),
    SIZE(jsonCfgPlusDebug, 4, 4),
    FIELD(jsonCfgPlusDebug, saveCfg, 3, 3),
};

int main(void) {
    const int wide = sizeof(void*) == 8;
    int failures = 0;
    for (size_t i = 0; i < sizeof kRows / sizeof kRows[0]; ++i) {
        size_t expected = wide ? kRows[i].lp64 : kRows[i].ilp32;
        if (kRows[i].actual != expected) {
            fprintf(stderr, "%s: %zu, expected %zu\n", kRows[i].name, kRows[i].actual, expected);
            ++failures;
        }
    }
    printf("%s layout: %d of %zu rows differ\n", wide ? "LP64" : "ILP32", failures,
           sizeof kRows / sizeof kRows[0]);
    return failures == 0 ? 0 : 1;
}
