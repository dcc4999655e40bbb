// SPDX-License-Identifier: MIT
// The lint command: every problem of a document, as text lines or as one JSON object.
#include <json-c/json.h>

#include <cstdio>
#include <string>

#include "args.h"
#include "commands.h"
#include "json_out.h"
#include "lint.h"

namespace tool {

namespace {

const char* severityName(lint::Severity severity) {
    return severity == lint::Severity::Error ? "error" : "warning";
}

// A problem with a position leads with it as compilers do, so editors and CI jump to it.
void printText(const std::string& file, const lint::Findings& findings) {
    for (const lint::Problem& p : findings.problems()) {
        if (p.line > 0) std::printf("%s:%d:%d: ", file.c_str(), p.line, p.column);
        std::printf("%s: %s: %s\n", severityName(p.severity),
                    p.pointer.empty() ? "(document)" : p.pointer.c_str(), p.message.c_str());
    }
    if (!findings.problems().empty()) {
        std::printf("%zu error(s), %zu warning(s)\n", findings.count(lint::Severity::Error),
                    findings.count(lint::Severity::Warning));
    }
}

void printJson(const lint::Findings& findings) {
    JsonPtr report(json_object_new_object());
    json_object* problems = json_object_new_array();
    for (const lint::Problem& p : findings.problems()) {
        json_object* item = json_object_new_object();
        json_object_object_add(item, "severity", json_object_new_string(severityName(p.severity)));
        json_object_object_add(item, "pointer", json_object_new_string(p.pointer.c_str()));
        json_object_object_add(item, "message", json_object_new_string(p.message.c_str()));
        if (p.line > 0) {
            json_object_object_add(item, "line", json_object_new_int(p.line));
            json_object_object_add(item, "column", json_object_new_int(p.column));
        }
        json_object_array_add(problems, item);
    }
    json_object_object_add(report.get(), "problems", problems);
    json_object_object_add(
        report.get(), "errors",
        json_object_new_int64(static_cast<int64_t>(findings.count(lint::Severity::Error))));
    json_object_object_add(
        report.get(), "warnings",
        json_object_new_int64(static_cast<int64_t>(findings.count(lint::Severity::Warning))));
    printJsonDocument(report.get());
}

}  // namespace

int runLint(int argc, char** argv) {
    Args args(argc, argv, {"json"}, {"signature-dir"});
    // Application rules are judged against the signatures the AP would have.
    useSignatureDir(args);
    const std::string& file = args.positionals(1)[0];
    lint::Findings findings = lint::lintText(readInput(file));
    if (args.has("json")) {
        printJson(findings);
    } else {
        printText(file, findings);
    }
    return findings.count(lint::Severity::Error) == 0 ? 0 : 1;
}

}  // namespace tool
