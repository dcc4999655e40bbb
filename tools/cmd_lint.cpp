// SPDX-License-Identifier: MIT
// The lint command: every problem of one or more documents, as text lines, one JSON object or
// a SARIF log.
#include <climits>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

#include "api/jsoncfgplus.h"
#include "args.h"
#include "commands.h"
#include "lint_report.h"

namespace tool {

namespace {

void keepProblem(const jsonCfgPlusLintProblem* problem, void* context) {
    static_cast<LintedFile*>(context)->problems.push_back(
        {problem->severity == JCP_LINT_ERROR, problem->line, problem->column, problem->pointer,
         problem->message, problem->rule});
}

// The library's own lint: what a daemon asking before it applies the document is told.
LintedFile lintFile(const std::string& name, const std::string& text) {
    LintedFile file{name, {}};
    if (text.size() > UINT_MAX) throw std::runtime_error(name + ": larger than 4 GiB");
    int errors = jsonCfgPlusLint(text.data(), static_cast<unsigned int>(text.size()), keepProblem,
                                 &file, &file.warnings);
    file.errors = errors < 0 ? 1 : static_cast<unsigned int>(errors);
    return file;
}

}  // namespace

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
        try {
            files.push_back(lintFile(name, readInput(name)));
        } catch (const std::runtime_error& e) {
            // As a compiler does: the other files are still linted, the run still fails.
            std::fprintf(stderr, "jsoncfgplus lint: %s\n", e.what());
            unread = true;
        }
    }
    if (format == "sarif") {
        printLintSarif(files);
    } else if (format == "json") {
        printLintJson(files);
    } else {
        printLintText(files);
    }
    bool errors = unread;
    for (const LintedFile& file : files) errors |= file.errors != 0;
    return errors ? 1 : 0;
}

}  // namespace tool
