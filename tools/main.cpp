// SPDX-License-Identifier: MIT
// jsoncfgplus: the library's translation, checks and transport for people working by hand.
#include <cstdio>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>

#include "api/version.h"
#include "args.h"
#include "commands.h"

namespace {

const tool::Command kCommands[] = {
    {"dump",
     "FILE [--no-convert] [--trace] [--save] [--save-backup] [--json] [--signature-dir DIR] "
     "[--icon-dir DIR]",
     "build a document and print every entry handed to the daemon", tool::runDump},
    {"summary", "FILE [--signature-dir DIR] [--icon-dir DIR]",
     "build a document and print its radios, WLAN services, meshpoints, records and warnings",
     tool::runSummary},
    {"lint", "FILE... [--json] [--format text|json|sarif] [--signature-dir DIR]",
     "report every problem of each document at its line and column; exit 1 on an error",
     tool::runLint},
    {"diff", "OLD NEW | --saved [--saved-dir DIR] [--json] [--verbose] [--icon-dir DIR]",
     "report what would change on the AP (--saved: between the two documents it saved last); "
     "exit 1 when something would",
     tool::runDiff},
    {"schema", "", "print the document schema as JSON Schema (draft 2020-12)", tool::runSchema},
    {"validate", "FILE", "check that a file holds JSON and print it back", tool::runValidate},
    {"reqid", "FILE", "print the document's request id (0 when absent)", tool::runReqId},
    {"check", "FILE [--serial SN] [--set-clock]",
     "compare the document's serial number with SN; set the clock only when asked", tool::runCheck},
    {"redis-send", "POINTER PAYLOAD [--verbose]",
     "store PAYLOAD under the Redis key that the POINTER document names", tool::runRedisSend},
    {"redis-test", "HOST PORT KEY", "read KEY from the Redis server at HOST:PORT",
     tool::runRedisTest},
    {"debug-config", "[--file XML]",
     "reload the debug settings (default /home/config/cap.conf.xml) and print them",
     tool::runDebugConfig},
};

void printUsage(FILE* out) {
    std::fprintf(out, "usage: jsoncfgplus <command> [options]   (FILE may be - for stdin)\n");
    std::fprintf(out, "       jsoncfgplus <command> --help | --help | --version\n\n");
    for (const tool::Command& c : kCommands)
        std::fprintf(out, "  %-13s %s\n  %-13s   %s\n", c.name, c.usage, "", c.summary);
}

bool wantsHelp(int argc, char** argv) {
    for (int i = 0; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) return true;
    }
    return false;
}

int reportBadNumber(const char* command, const char* what) {
    std::fprintf(stderr,
                 "jsoncfgplus %s: a numeric text in the input is not a usable number (%s)\n",
                 command, what);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || std::strcmp(argv[1], "--help") == 0 || std::strcmp(argv[1], "-h") == 0) {
        printUsage(argc < 2 ? stderr : stdout);
        return argc < 2 ? 2 : 0;
    }
    if (std::strcmp(argv[1], "--version") == 0) {
        std::printf("jsoncfgplus %s\n", JSONCFGPLUS_VERSION_STRING);
        return 0;
    }
    for (const tool::Command& c : kCommands) {
        if (std::strcmp(argv[1], c.name) != 0) continue;
        if (wantsHelp(argc - 2, argv + 2)) {
            std::printf("usage: jsoncfgplus %s %s\n  %s\n", c.name, c.usage, c.summary);
            return 0;
        }
        try {
            return c.run(argc - 2, argv + 2);
        } catch (const std::invalid_argument& e) {
            // Only the decimal conversions of numeric texts (channels, ports, switches) throw
            // these two.
            return reportBadNumber(c.name, e.what());
        } catch (const std::out_of_range& e) {
            return reportBadNumber(c.name, e.what());
        } catch (const tool::UsageError& e) {
            std::fprintf(stderr, "jsoncfgplus %s: %s (usage: jsoncfgplus %s %s)\n", c.name,
                         e.what(), c.name, c.usage);
            return 2;
        } catch (const std::exception& e) {
            std::fprintf(stderr, "jsoncfgplus %s: %s\n", c.name, e.what());
            return 1;
        }
    }
    std::fprintf(stderr, "jsoncfgplus: unknown command '%s' (see jsoncfgplus --help)\n", argv[1]);
    return 2;
}
