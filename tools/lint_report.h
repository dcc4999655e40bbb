// SPDX-License-Identifier: MIT
// lint's reports of one run over several files: compiler-style text lines, one JSON object, or
// a SARIF 2.1.0 log for code-scanning dashboards.
#ifndef JSONCFGPLUS_TOOLS_LINT_REPORT_H
#define JSONCFGPLUS_TOOLS_LINT_REPORT_H

#include <string>
#include <vector>

namespace tool {

// One problem as the library's lint entry reports it, kept past the report's call.
struct LintProblem {
    bool error;
    int line;  // 0: the problem has no position in the text
    int column;
    std::string pointer;
    std::string message;
    std::string rule;
};

struct LintedFile {
    std::string name;  // as given on the command line, so the reader finds it again
    std::vector<LintProblem> problems;
    unsigned int errors = 0;
    unsigned int warnings = 0;
};

// "FILE:LINE:COL: severity: POINTER: message" per problem ("FILE: severity: ..." for one without
// a position), then one summary line when any.
void printLintText(const std::vector<LintedFile>& files);
// {"problems": [{"file", "line", "column", "severity", "pointer", "message"}], "errors",
// "warnings"}.
void printLintJson(const std::vector<LintedFile>& files);
void printLintSarif(const std::vector<LintedFile>& files);

}  // namespace tool

#endif
