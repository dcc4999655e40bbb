/* SPDX-License-Identifier: MIT */
/* The diagnostics handler seen from a C daemon: every line reaches the handler with its level
 * and exactly the text standard output shows without one; removing it restores the output. */
#define _POSIX_C_SOURCE 200809L
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "api/jsoncfgplus.h"

#include "c_expect.h"

/* A radio whose name has no number (a warning), a WLAN without "cen_ssid_id" (an error), and
 * the trace flag for the build's progress lines. */
static const char kDocument[] =
    "{\"device\":{\"name\":\"ap\",\"profile_name\":\"p\"},"
    "\"profile\":[{\"name\":\"p\",\"interface\":["
    "{\"name\":\"radio\",\"type\":\"radio\"},"
    "{\"name\":\"radio1\",\"type\":\"radio\",\"wlanbssmap\":[{\"bss\":1,\"wlan\":\"w\"}]}]}],"
    "\"wlan\":[{\"name\":\"w\"}]}";
static const char kBroken[] = "{\"device\":";

/* What the handler received: the lines, each ended as standard output ends it, and levels. */
static char received[1 << 16];
static size_t receivedLength;
static int levels[512];
static size_t lineCount;

static void collect(int level, const char* line, void* context) {
    EXPECT(context == (void*)&receivedLength);
    size_t length = strlen(line);
    if (receivedLength + length + 1 < sizeof received && lineCount < 512) {
        memcpy(received + receivedLength, line, length);
        received[receivedLength + length] = '\n';
        receivedLength += length + 1;
        levels[lineCount++] = level;
    }
}

/* The level the handler received with the first line that starts with `start`, or -1. */
static int level_of(const char* start) {
    const char* line = received;
    for (size_t i = 0; i < lineCount; ++i) {
        if (strncmp(line, start, strlen(start)) == 0) return levels[i];
        line = strchr(line, '\n') + 1;
    }
    return -1;
}

/* Runs the two parses with standard output and standard error going to temporary files and
 * returns what each received (the caller frees both). */
static void run_parses(char** out, char** err) {
    FILE* files[2] = {tmpfile(), tmpfile()};
    int saved[2] = {dup(1), dup(2)};
    char** texts[2] = {out, err};
    fflush(stdout);
    fflush(stderr);
    dup2(fileno(files[0]), 1);
    dup2(fileno(files[1]), 2);
    apiCfgPlusResult* r = parseJsonCfgPlus(kDocument, sizeof kDocument - 1, NULL, 0, 0, 1);
    EXPECT(r != NULL);
    freeJsonCfgPlus(r);
    EXPECT(parseJsonCfgPlus(kBroken, sizeof kBroken - 1, NULL, 0, 0, 0) == NULL);
    fflush(stdout);
    fflush(stderr);
    for (int i = 0; i < 2; ++i) {
        dup2(saved[i], i + 1);
        close(saved[i]);
        long size = ftell(files[i]);
        *texts[i] = calloc((size_t)size + 1, 1);
        rewind(files[i]);
        EXPECT(fread(*texts[i], 1, (size_t)size, files[i]) == (size_t)size);
        fclose(files[i]);
    }
}

int main(void) {
    char* plainOut;
    char* plainErr;
    run_parses(&plainOut, &plainErr);

    setJsonCfgPlusDiagHandler(collect, &receivedLength);
    char* handledOut;
    char* handledErr;
    run_parses(&handledOut, &handledErr);
    setJsonCfgPlusDiagHandler(NULL, NULL);
    EXPECT(handledOut[0] == '\0' && handledErr[0] == '\0');
    /* Standard output's text, then json-c's line that standard error had. */
    size_t plainLength = strlen(plainOut);
    EXPECT(strncmp(received, plainOut, plainLength) == 0);
    EXPECT(strncmp(plainErr, "Error: ", 7) == 0);
    EXPECT(strcmp(received + plainLength, plainErr) == 0);

    static const struct {
        const char* start;
        int level;
    } kLines[] = {
        {"parseJsonCfgPlus starts...", JCP_DIAG_INFO},
        {"JSON-Q+: buildConfig()...", JCP_DIAG_MILESTONE},
        {"process Radio: 1", JCP_DIAG_PROGRESS},
        {"[WARN] radio without a radio number in its name skipped: radio", JCP_DIAG_WARNING},
        {"[ERROR] cen_ssid_id is not specified.", JCP_DIAG_ERROR},
        {"JSON-Q+: freeJsonCfgPlus done.", JCP_DIAG_MILESTONE},
        {"Error: ", JCP_DIAG_ERROR},
    };
    for (size_t i = 0; i < sizeof kLines / sizeof kLines[0]; ++i) {
        int level = level_of(kLines[i].start);
        if (level != kLines[i].level) {
            fprintf(stderr, "\"%s\": level %d, expected %d\n", kLines[i].start, level,
                    kLines[i].level);
            ++failures;
        }
    }

    /* A converter's failure carries no prefix, yet reaches the handler as an error. */
    static const char kBadRule[] =
        "{\"device\":{\"name\":\"ap\",\"interface\":[{\"name\":\"radio1\",\"type\":"
        "\"radio\",\"wlanbssmap\":[{\"bss\":1,\"wlan\":\"w\"}]}]},"
        "\"wlan\":[{\"name\":\"w\",\"cen_ssid_id\":1,\"ip_in_acl\":\"a\"}],"
        "\"ip_acl\":[{\"name\":\"a\",\"ip_rules\":[{\"precedence\":1,\"allow\":\"deny\","
        "\"dip\":\"10.0.0.0/33\"}]}]}";
    receivedLength = 0;
    lineCount = 0;
    setJsonCfgPlusDiagHandler(collect, &receivedLength);
    EXPECT(parseJsonCfgPlus(kBadRule, sizeof kBadRule - 1, jsonCfgPlusParserCallback, 0, 0, 0) ==
           NULL);
    setJsonCfgPlusDiagHandler(NULL, NULL);
    EXPECT(level_of("IP address in the IP ACL is not valid: 10.0.0.0/33") == JCP_DIAG_ERROR);

    /* Without the handler again, the same text reaches the same streams. */
    char* restoredOut;
    char* restoredErr;
    run_parses(&restoredOut, &restoredErr);
    EXPECT(strcmp(restoredOut, plainOut) == 0 && strcmp(restoredErr, plainErr) == 0);

    free(plainOut);
    free(plainErr);
    free(handledOut);
    free(handledErr);
    free(restoredOut);
    free(restoredErr);
    if (failures != 0) fprintf(stderr, "%d expectation(s) failed\n", failures);
    return failures == 0 ? 0 : 1;
}
