/* SPDX-License-Identifier: MIT */
/* A C daemon handed documents whose numeric texts do not convert: each parse returns NULL
 * with one "[ERR]" line naming the value, and the daemon lives on to parse the next one. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

extern void* parseJsonCfgPlus(const char*, unsigned int, int (*)(void*), int, int, int);
extern void freeJsonCfgPlus(void*);
extern int jsonCfgPlusParserCallback(void*);

#define RADIO_WITH_WLAN                                                         \
    "\"device\":{\"name\":\"ap\",\"interface\":[{\"name\":\"radio1\",\"type\":" \
    "\"radio\",\"wlanbssmap\":[{\"bss\":1,\"wlan\":\"w\"}]}]}"

#define MAC_RULE(match_type)                                                 \
    "{" RADIO_WITH_WLAN                                                      \
    ",\"wlan\":[{\"name\":\"w\",\"cen_ssid_id\":1,\"mac_in_acl\":"           \
    "\"a\"}],\"mac_acl\":[{\"name\":\"a\",\"mac_rules\":[{\"precedence\":1," \
    "\"match_type\":" match_type "}]}]}"

static const struct {
    const char* name;
    const char* document;
    const char* errLine; /* the whole line, as the daemon's log shows it */
} kRows[] = {
    {"captive portal HTTP ports",
     "{" RADIO_WITH_WLAN ",\"wlan\":[{\"name\":\"w\",\"cen_ssid_id\":1,\"captive_portal\":"
     "\"cp\"}],\"captive_portal\":[{\"name\":\"cp\",\"cen_http_ports\":\"80,http\"}]}",
     "[ERR] jsonCfgPlusParserCallback: not a decimal number: \"http\"\n"},
    {"meshpoint ACS channel list",
     "{\"device\":{\"name\":\"ap\",\"profile_name\":\"p\"},\"profile\":[{\"name\":\"p\","
     "\"meshpoint_device\":[{\"name\":\"m\",\"acs_channel_list_5\":[\"36,auto\"]}],"
     "\"interface\":[{\"name\":\"radio1\",\"type\":\"radio\",\"rf_mode\":\"5GHz-wlan\","
     "\"meshpointbssmap\":[{\"bss\":1,\"meshpoint\":\"m\"}]}]}],"
     "\"meshpoint\":[{\"name\":\"m\",\"cen_ssid_id\":3,\"is_root\":false}]}",
     "[ERR] jsonCfgPlusParserCallback: not a decimal number: \"auto\"\n"},
    {"empty MAC rule Ether type", MAC_RULE("\"\""),
     "[ERR] jsonCfgPlusParserCallback: not a decimal number: \"\"\n"},
    {"MAC rule Ether type beyond int", MAC_RULE("\"99999999999\""),
     "[ERR] jsonCfgPlusParserCallback: beyond the int range: \"99999999999\"\n"},
};

static int failures;

/* Everything the parse wrote to standard output, in a buffer the caller frees. */
static char* parse_capturing_stdout(const char* document, void** result) {
    FILE* capture = tmpfile();
    int saved = dup(STDOUT_FILENO);
    if (capture == NULL || saved < 0) return NULL;
    fflush(stdout);
    dup2(fileno(capture), STDOUT_FILENO);
    *result = parseJsonCfgPlus(document, (unsigned int)strlen(document), jsonCfgPlusParserCallback,
                               0, 0, 0);
    fflush(stdout);
    dup2(saved, STDOUT_FILENO);
    close(saved);

    off_t size = lseek(fileno(capture), 0, SEEK_END);
    char* text = size >= 0 ? calloc((size_t)size + 1, 1) : NULL;
    if (text != NULL) {
        lseek(fileno(capture), 0, SEEK_SET);
        if (read(fileno(capture), text, (size_t)size) != (ssize_t)size) text[0] = '\0';
    }
    fclose(capture);
    return text;
}

static int count_lines_starting(const char* text, const char* prefix) {
    int n = 0;
    for (const char* line = text; line != NULL && *line != '\0';) {
        if (strncmp(line, prefix, strlen(prefix)) == 0) ++n;
        line = strchr(line, '\n');
        if (line != NULL) ++line;
    }
    return n;
}

int main(void) {
    for (size_t i = 0; i < sizeof kRows / sizeof kRows[0]; ++i) {
        void* result = (void*)1;
        char* out = parse_capturing_stdout(kRows[i].document, &result);
        if (result != NULL) {
            fprintf(stderr, "%s: expected NULL, got a result\n", kRows[i].name);
            freeJsonCfgPlus(result);
            ++failures;
        }
        if (out == NULL || count_lines_starting(out, "[ERR]") != 1 ||
            strstr(out, kRows[i].errLine) == NULL) {
            fprintf(stderr, "%s: expected exactly the line %s in:\n%s\n", kRows[i].name,
                    kRows[i].errLine, out != NULL ? out : "(nothing captured)");
            ++failures;
        }
        free(out);
    }
    if (failures != 0) fprintf(stderr, "%d row(s) failed\n", failures);
    return failures == 0 ? 0 : 1;
}
