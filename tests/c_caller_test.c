/* SPDX-License-Identifier: MIT */
/* A daemon's view of the library: it declares the records itself, field by field, links the
 * shared library and reads what it is handed, without any of the library's headers. */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

typedef struct entry {
    int32_t radio;
    int32_t vns;
    int32_t type;
    char* name;
    void* value;
    int32_t size;
    void (*freeFn)(struct entry*);
    char* (*printFn)(struct entry*, unsigned int);
} entry;

typedef struct {
    int32_t count;
    entry* entries;
} entry_array;

typedef struct {
    entry_array global;
    int32_t radioCount;
    entry_array* radios;
    int32_t vnsCount;
    entry_array* vnsList;
    int32_t meshpointCount;
    entry_array* meshpoints;
} result_record;

extern result_record* parseJsonCfgPlus(const char*, unsigned int, int (*)(void*), int, int, int);
extern void freeJsonCfgPlus(result_record*);
extern int getJsonCfgPlusReqId(const char*, unsigned int);
extern int addrchk(const char*, int);

#include "c_expect.h"

static void expect_entry(const entry* e, const char* name, int type, int size) {
    EXPECT(e->name != NULL && strcmp(e->name, name) == 0);
    EXPECT(e->type == type);
    EXPECT(e->size == size);
    EXPECT(e->freeFn == NULL && e->printFn == NULL);
}

static const char kDocument[] =
    "{\"request-id\":7,"
    "\"device\":{\"name\":\"ap1\",\"profile_name\":\"prof\",\"rf_domain_name\":\"rf\"},"
    "\"profile\":[{\"name\":\"prof\",\"ntp\":[\"a\",\"bc\"],\"flags\":[1,2],"
    "\"nested\":{\"x\":1.5,\"y\":null},\"servers\":[{\"host\":\"h\",\"port\":1}],"
    "\"interface\":["
    "{\"name\":\"radio1\",\"type\":\"radio\",\"power\":14,"
    "\"wlanbssmap\":[{\"bss\":2,\"wlan\":\"w1\"}],"
    "\"meshpointbssmap\":[{\"bss\":1,\"meshpoint\":\"m1\"}]},"
    "{\"name\":\"p1\",\"type\":\"ethernet\",\"wlanbssmap\":[{\"bss\":1,\"wlan\":\"w1\"}]}]}],"
    "\"wlan\":[{\"name\":\"w1\",\"cen_ssid_id\":11,\"ssid\":\"Corp\",\"enable\":true}],"
    "\"meshpoint\":[{\"name\":\"m1\",\"cen_ssid_id\":12}]}";

static void check_global(const entry_array* global) {
    EXPECT(global->count == 7);
    if (global->count != 7) return;
    const entry* e = global->entries;
    for (int i = 0; i < global->count; ++i) EXPECT(e[i].radio == -1 && e[i].vns == -1);

    expect_entry(&e[0], "request-id", 3, 4);
    EXPECT(*(int32_t*)e[0].value == 7);

    expect_entry(&e[1], "ntp", 7, 2 * (int)sizeof(char*));
    EXPECT(strcmp(((char**)e[1].value)[0], "a") == 0 && strcmp(((char**)e[1].value)[1], "bc") == 0);

    expect_entry(&e[2], "flags", 8, 8);
    EXPECT(((int32_t*)e[2].value)[0] == 1 && ((int32_t*)e[2].value)[1] == 2);

    expect_entry(&e[3], "nested/x", 2, 8);
    EXPECT(*(double*)e[3].value == 1.5);

    expect_entry(&e[4], "nested/y", 0, 0);
    EXPECT(e[4].value == NULL);

    expect_entry(&e[5], "servers", 10, (int)sizeof(entry));
    const entry* item = (const entry*)e[5].value;
    expect_entry(item, "", 9, 2 * (int)sizeof(entry));
    const entry* fields = (const entry*)item->value;
    expect_entry(&fields[0], "servers/host", 4, 1);
    EXPECT(strcmp((char*)fields[0].value, "h") == 0);
    expect_entry(&fields[1], "servers/port", 3, 4);
    EXPECT(*(int32_t*)fields[1].value == 1);

    expect_entry(&e[6], "name", 4, 3);
    EXPECT(strcmp((char*)e[6].value, "ap1") == 0);
}

/* The slot layout is the golden files' business; here only that the lists arrive and carry
 * their radio and slot: p1 is pseudo-radio 4, with no radio list but a WLAN list. */
static void check_lists(const result_record* r) {
    EXPECT(r->radioCount == 1 && r->vnsCount == 2 && r->meshpointCount == 1);
    if (r->radioCount != 1 || r->vnsCount != 2 || r->meshpointCount != 1) return;
    const entry_array* radio = &r->radios[0];
    EXPECT(radio->count == 3 && radio->entries[2].radio == 0 && radio->entries[2].vns == -1);
    expect_entry(&radio->entries[2], "power", 3, 4);
    EXPECT(*(int32_t*)radio->entries[2].value == 14);
    const entry_array* wired = &r->vnsList[1];
    EXPECT(wired->count == 5 && wired->entries[4].radio == 3 && wired->entries[4].vns == 0);
    expect_entry(&wired->entries[4], "enable", 1, 4);
    EXPECT(*(int32_t*)wired->entries[4].value == 1);
    const entry_array* mp = &r->meshpoints[0];
    EXPECT(mp->count == 3 && mp->entries[0].radio == 0 && mp->entries[0].vns == 0);
}

int main(void) {
    result_record* r = parseJsonCfgPlus(kDocument, (unsigned int)strlen(kDocument), NULL, 0, 0, 0);
    EXPECT(r != NULL);
    if (r == NULL) return 1;
    EXPECT(getJsonCfgPlusReqId(kDocument, (unsigned int)strlen(kDocument)) == 7);
    EXPECT(addrchk("1.2.3", 2) == 5); /* IPv4 only: three parts, faulted at the last character */
    check_global(&r->global);
    check_lists(r);
    freeJsonCfgPlus(r);
    if (failures != 0) fprintf(stderr, "%d expectation(s) failed\n", failures);
    return failures == 0 ? 0 : 1;
}
