// SPDX-License-Identifier: MIT
// The lint command: every problem of one or more documents, as text lines, one JSON object or
// a SARIF log.
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include "args.h"
#include "commands.h"
#include "lint.h"
#include "lint_report.h"

namespace tool {

int runLint(int argc, char** argv) {
    Args args(argc, argv, {"json"}, {"signature-dir", "format"});
    const std::string format = args.option("format", args.has("json") ? "json" : "text");
    if (format != "text" && format != "json" && format != "sarif")
        throw UsageError("--format takes text, json or sarif, not " + format);
    if (args.has("json") && format != "json")
        throw UsageError("--json asks for --format json, not " + format);
    // Application rules are judged against the signatures the AP would have.
    useSignatureDir(args);

    std::vector<LintedFile> files;
    bool unread = false;
    for (const std::string& name : args.positionalsAtLeast(1)) {
        std::string text;
        try {
            text = readInput(name);
        } catch (const std::runtime_error& e) {
            // As a compiler does: the other files are still linted, the run still fails.
            std::fprintf(stderr, "jsoncfgplus lint: %s\n", e.what());
            unread = true;
            continue;
        }
        files.push_back({name, lint::lintText(text)});
    }
    if (format == "sarif") {
        printLintSarif(files);
    } else if (format == "json") {
        printLintJson(files);
    } else {
        printLintText(files);
    }
    bool errors = unread;
    for (const LintedFile& file : files) errors |= file.findings.count(lint::Severity::Error) != 0;
    return errors ? 1 : 0;
}

}  // namespace tool
