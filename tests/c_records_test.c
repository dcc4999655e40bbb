/* SPDX-License-Identifier: MIT */
/* The daemon's use of the installed headers from C: every header a C caller includes, as an
 * installed tree names them, and one record of each kind decoded through ap_records.h from the
 * example document's translation. The consumer check builds it again against the installed
 * package, beside a firmware's own headers of the same names. */
#include <stdint.h>
#include <stdio.h>
#include <string.h>

#include <jsoncfgplus/addr/addrchk.h>
#include <jsoncfgplus/api/jsoncfgplus.h>
#include <jsoncfgplus/base/export.h>
#include <jsoncfgplus/base/records.h>
#include <jsoncfgplus/convert/ap_records.h>
#include <jsoncfgplus/platform/byte_order.h>
#include <jsoncfgplus/platform/platform.h>

#include "c_expect.h"

/* The records of a CFG_BYTES entry and how many whole ones it holds; NULL when the entry is
 * missing or its size is not a whole number of records. */
static const void* records(const apiCfgPlusEntryArray* list, const char* name, size_t size,
                           int* count) {
    *count = 0;
    for (int i = 0; list != NULL && i < list->count; ++i) {
        const apiCfgPlusEntry* e = &list->entries[i];
        if (strcmp(e->name, name) != 0) continue;
        EXPECT(e->type == CFG_BYTES && e->size > 0 && (size_t)e->size % size == 0);
        if (e->type != CFG_BYTES || e->size <= 0 || (size_t)e->size % size != 0) return NULL;
        *count = (int)((size_t)e->size / size);
        return e->value;
    }
    fprintf(stderr, "no entry %s\n", name);
    ++failures;
    return NULL;
}

/* The WLAN slot of a radio (0-based index) in vnsList, found by the entries' own tags. */
static const apiCfgPlusEntryArray* wlan(const apiCfgPlusResult* r, int radio, int slot) {
    for (int i = 0; i < r->vnsCount; ++i) {
        const apiCfgPlusEntryArray* a = &r->vnsList[i];
        if (a->count > 0 && a->entries[0].radio == radio && a->entries[0].vns == slot) return a;
    }
    return NULL;
}

static int ipv4_octets_are(const uint32_t* field, int a, int b, int c, int d) {
    const uint8_t* o = (const uint8_t*)field;
    return o[0] == a && o[1] == b && o[2] == c && o[3] == d;
}

/* The values are the golden dump's business (ap-config.dump.txt); here one record of each kind,
 * as a C caller of the shared library reads it through the installed headers. */
static void check_global(const apiCfgPlusEntryArray* global) {
    int n = 0;
    const TOPOLOGY_ENTRY* t = records(global, "cen_topologies", sizeof *t, &n);
    EXPECT(n == 3);
    if (n == 3) {
        EXPECT(strcmp(t[2].name, "tunnel-hq") == 0 && t[2].type == 9);
        EXPECT(t[2].remote_endpoint_count == 2);
        EXPECT(t[2].remote_endpoint[0].addr == 0xC000020Au); /* 192.0.2.10, host order */
        EXPECT(strcmp(t[2].remote_endpoint[0].ikev2_psk, "hq-tunnel-secret") == 0);
    }
    const EXT_APP_CONFIG* app = records(global, "cen_ext_applications", sizeof *app, &n);
    EXPECT(n == 4);
    if (n == 4)
        EXPECT(strcmp(app[1].matchStr, "intranet.example.net") == 0 && app[1].groupId == 40);
    const ARP_GUARD_ACL* arp = records(global, "cen_arp_guard_acl", sizeof *arp, &n);
    EXPECT(n == 1);
    if (n == 1) EXPECT(arp->count == 2 && ipv4_octets_are(&arp->addr[1], 10, 20, 0, 2));
}

/* The "corp" WLAN: radio1, BSS 1. */
static void check_filters(const apiCfgPlusEntryArray* corp) {
    int n = 0;
    const apiCfgPlusFilterRule* rule = records(corp, "cen_filter_rules", sizeof *rule, &n);
    EXPECT(n >= 12);
    if (n >= 12) {
        /* First MAC rule: deny from 00-de-ad-be-ef-00. */
        static const uint8_t mac[6] = {0x00, 0xDE, 0xAD, 0xBE, 0xEF, 0x00};
        EXPECT(rule[0].rule.precedence == 10 && memcmp(rule[0].rule.r_mac, mac, 6) == 0);
        EXPECT(rule[0].rule.r_filter_flags == (kFilterInDir | kFilterSourceIpIn));
        EXPECT(rule[0].rule.r_action_flags == (kActionAccessCtrl | kActionDeny));
    }
    const ap_cos_entry* cos = records(corp, "cen_default_cos", sizeof *cos, &n);
    EXPECT(n == 1);
    if (n == 1) EXPECT(cos->r_flags == (kCosUp | kCosTxq | kCosIrl) && cos->r_prio_txq == 0x31);
    const uint32_t* table = records(corp, "cen_resource_table", 2 * sizeof(uint32_t), &n);
    EXPECT(n == 9);
    if (n == 9) EXPECT(table[0] == 20000 && table[1] == 10000);
}

/* The "guest" WLAN: radio1, BSS 2, with the Hotspot 2.0 policy. */
static void check_hotspot(const apiCfgPlusEntryArray* guest) {
    int n = 0;
    const _3GPP_CELL_NET* plmn = records(guest, "passpoint_policy/cen_plmnid", sizeof *plmn, &n);
    EXPECT(n == 2);
    if (n == 2) EXPECT(strcmp(plmn[1].mcc, "262") == 0 && strcmp(plmn[1].mnc, "01") == 0);
    const NAI_REALM* realm = records(guest, "passpoint_policy/cen_nai_realm", sizeof *realm, &n);
    EXPECT(n == 2);
    if (n == 2) {
        const EAP_METHOD* m = &realm[0].eap_method[0];
        EXPECT(realm[0].eap_count == 3 && m->method == 21 && m->auth_val == 4);
    }
    const NAME_LANG* venue =
        records(guest, "passpoint_policy/cen_venue_name_lang", sizeof *venue, &n);
    EXPECT(n == 2);
    if (n == 2) EXPECT(strcmp(venue[1].name, "Foyer des Beispielhotels") == 0);
    const CONN_CAP* cc = records(guest, "passpoint_policy/cen_cc_variable", sizeof *cc, &n);
    EXPECT(n == 3);
    if (n == 3) EXPECT(cc[1].protocol == 17 && cc[1].port == 500 && cc[1].status == 1);

    /* The OSU provider list: head, one provider, then both icons' bytes (92 and 159). */
    const size_t osuBytes = sizeof(OSU_SP_LIST) + sizeof(OSU_SP) + 92 + 159;
    const uint8_t* osu = records(guest, "passpoint_policy/cen_osu_provider", osuBytes, &n);
    EXPECT(n == 1);
    if (n != 1) return;
    const OSU_SP_LIST* head = (const OSU_SP_LIST*)osu;
    const OSU_SP* sp = (const OSU_SP*)(osu + sizeof *head);
    EXPECT(head->count == 1 && head->icon_bytes == 92 + 159 && sp->icon_count == 2);
    const jsonHS2Icon* icon = &sp->icons[1];
    EXPECT(strcmp(icon->icon_name, "example-logo.png") == 0 && icon->icon_data_len == 159);
    EXPECT(icon->icon_data == sizeof *head + sizeof *sp + 92);
    EXPECT(memcmp(osu + icon->icon_data, "\x89PNG", 4) == 0);
}

int main(void) {
    /* The example's icon files, in the source tree where the test runs. */
    setJsonCfgPlusIconDir("examples/icons");
    apiCfgPlusResult* r =
        parseJsonCfgPlusFile("examples/ap-config.json", jsonCfgPlusParserCallback, 0, 0, 0);
    EXPECT(r != NULL);
    if (r == NULL) return 1;
    check_global(&r->global);
    const apiCfgPlusEntryArray* corp = wlan(r, 0, 0);
    const apiCfgPlusEntryArray* guest = wlan(r, 0, 1);
    EXPECT(corp != NULL && guest != NULL);
    if (corp != NULL) check_filters(corp);
    if (guest != NULL) check_hotspot(guest);
    freeJsonCfgPlus(r);
    if (failures != 0) fprintf(stderr, "%d expectation(s) failed\n", failures);
    return failures == 0 ? 0 : 1;
}
