/* SPDX-License-Identifier: MIT */
/* lint as a C daemon asks it through the shared library before applying a document: each
 * problem as a record with its place, the counts, and not one line of the build it runs on
 * standard output or the diagnostics handler. */
#define _POSIX_C_SOURCE 200809L
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include "api/jsoncfgplus.h"

#include "c_expect.h"

/* A duplicate key (a warning) and a deny rule whose action is misspelt (an error: the AP
 * treats it as allow), in a rule a WLAN on a radio uses. */
static const char kDocument[] =
    "{\"device\":{\"name\":\"ap\",\"profile_name\":\"p\",\"name\":\"ap\"},\n"
    " \"profile\":[{\"name\":\"p\",\"interface\":[{\"name\":\"radio1\",\"type\":\"radio\","
    "\"wlanbssmap\":[{\"bss\":1,\"wlan\":\"w\"}]}]}],\n"
    " \"wlan\":[{\"name\":\"w\",\"cen_ssid_id\":1,\"ssid\":\"s\",\"mac_in_acl\":\"m\"}],\n"
    " \"mac_acl\":[{\"name\":\"m\",\"mac_rules\":[{\"precedence\":10,\"allow\":\"dney\","
    "\"smac\":\"00-de-ad-be-ef-00\"}]}]}";

struct Kept {
    int severity, line, column;
    char pointer[64], message[160], rule[16];
};
static struct Kept kept[8];
static int keptCount;

static void keep(const jsonCfgPlusLintProblem* problem, void* context) {
    EXPECT(context == (void*)kept);
    if (keptCount == 8) return;
    struct Kept* k = &kept[keptCount++];
    k->severity = problem->severity;
    k->line = problem->line;
    k->column = problem->column;
    snprintf(k->pointer, sizeof k->pointer, "%s", problem->pointer);
    snprintf(k->message, sizeof k->message, "%s", problem->message);
    snprintf(k->rule, sizeof k->rule, "%s", problem->rule);
}

static int diagLines;
static void countDiag(int level, const char* line, void* context) {
    (void)level, (void)line, (void)context;
    ++diagLines;
}

/* Bytes written to standard output while fn runs. */
static long printedBy(void (*fn)(void)) {
    fflush(stdout);
    FILE* sink = tmpfile();
    int saved = dup(STDOUT_FILENO);
    dup2(fileno(sink), STDOUT_FILENO);
    fn();
    fflush(stdout);
    dup2(saved, STDOUT_FILENO);
    close(saved);
    fseek(sink, 0, SEEK_END);
    long size = ftell(sink);
    fclose(sink);
    return size;
}

static int errors = -2;
static unsigned int warnings = 99;
static void lintDocument(void) {
    errors = jsonCfgPlusLint(kDocument, (unsigned int)strlen(kDocument), keep, kept, &warnings);
}

int main(void) {
    EXPECT(printedBy(lintDocument) == 0);
    EXPECT(errors == 1);
    EXPECT(warnings == 1);
    EXPECT(keptCount == 2);
    EXPECT(kept[0].severity == JCP_LINT_WARNING);
    EXPECT(kept[0].line == 1 && kept[0].column == 43);
    EXPECT(strcmp(kept[0].pointer, "/device/name") == 0);
    EXPECT(strcmp(kept[0].message,
                  "duplicate key \"name\" (first at line 1, column 12); the AP keeps only the "
                  "last value given for it") == 0);
    EXPECT(strcmp(kept[0].rule, "strict-json") == 0);
    EXPECT(kept[1].severity == JCP_LINT_ERROR);
    EXPECT(kept[1].line == 4 && kept[1].column == 55);
    EXPECT(strcmp(kept[1].pointer, "/mac_acl/0/mac_rules/0/allow") == 0);
    EXPECT(strcmp(kept[1].message,
                  "\"dney\" is not an action; treated as allow (did you mean \"deny\"?)") == 0);
    EXPECT(strcmp(kept[1].rule, "document") == 0);

    /* The build lint runs keeps its lines off a daemon's handler too. */
    setJsonCfgPlusDiagHandler(countDiag, NULL);
    keptCount = 0;
    lintDocument();
    setJsonCfgPlusDiagHandler(NULL, NULL);
    EXPECT(diagLines == 0);
    EXPECT(keptCount == 2);

    /* Counts alone, a syntax error at its place, and no text at all. */
    const char broken[] = "{\"device\":\n  }";
    keptCount = 0;
    EXPECT(jsonCfgPlusLint(broken, (unsigned int)strlen(broken), keep, kept, NULL) == 1);
    EXPECT(keptCount == 1 && kept[0].line == 2 && kept[0].column == 3);
    EXPECT(strcmp(kept[0].rule, "syntax") == 0);
    EXPECT(jsonCfgPlusLint(kDocument, (unsigned int)strlen(kDocument), NULL, NULL, NULL) == 1);
    EXPECT(jsonCfgPlusLint(NULL, 10, keep, kept, &warnings) == -1);
    EXPECT(warnings == 0);

    if (failures != 0) fprintf(stderr, "%d failure(s)\n", failures);
    return failures == 0 ? 0 : 1;
}
