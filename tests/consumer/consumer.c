/* SPDX-License-Identifier: MIT */
/* A daemon built against an installed jsoncfgplus: the documented include line, the C entries,
 * one document through the conversion pipeline, and the version its package announced
 * (JCP_PACKAGE_VERSION, from pkg-config or the CMake package) against the installed header's. */
#include <jsoncfgplus/api/jsoncfgplus.h>
#include <jsoncfgplus/api/version.h>
#include <stdio.h>
#include <string.h>

#ifndef JCP_PACKAGE_VERSION
#error "build with -DJCP_PACKAGE_VERSION=\"<the package's version>\""
#endif

static const char kDocument[] =
    "{\"device\":{\"name\":\"ap1\",\"profile_name\":\"prof\",\"hostname\":\"lobby-ap\"},"
    "\"profile\":[{\"name\":\"prof\",\"ntp\":[\"a\",\"bc\"]}]}";

int main(void) {
    if (strcmp(JCP_PACKAGE_VERSION, JSONCFGPLUS_VERSION_STRING) != 0) {
        fprintf(stderr, "consumer.c: the package says %s, the header %s\n", JCP_PACKAGE_VERSION,
                JSONCFGPLUS_VERSION_STRING);
        return 1;
    }
    apiCfgPlusResult* r = parseJsonCfgPlus(kDocument, (unsigned int)strlen(kDocument),
                                           jsonCfgPlusParserCallback, 0, 0, 0);
    if (r == NULL) {
        fprintf(stderr, "consumer.c: the document did not build\n");
        return 1;
    }
    int found = 0;
    for (int i = 0; i < r->global.count; ++i) {
        const apiCfgPlusEntry* e = &r->global.entries[i];
        if (strcmp(e->name, "ntp") == 0 && e->type == CFG_STR_LIST &&
            e->size == 2 * (int32_t)sizeof(char*))
            found = 1;
    }
    freeJsonCfgPlus(r);
    if (!found) fprintf(stderr, "consumer.c: no two-string \"ntp\" entry\n");
    return found ? 0 : 1;
}
