// SPDX-License-Identifier: MIT
// lint's reports of one run over several files: compiler-style text lines, one JSON object, or
// a SARIF 2.1.0 log for code-scanning dashboards.
#ifndef JSONCFGPLUS_TOOLS_LINT_REPORT_H
#define JSONCFGPLUS_TOOLS_LINT_REPORT_H

#include <string>
#include <vector>

#include "lint.h"

namespace tool {

struct LintedFile {
    std::string name;  // as given on the command line, so the reader finds it again
    lint::Findings findings;
};

// "FILE:LINE:COL: severity: POINTER: message" per problem, then one summary line when any.
void printLintText(const std::vector<LintedFile>& files);
// {"problems": [{"file", "line", "column", "severity", "pointer", "message"}], "errors",
// "warnings"}.
void printLintJson(const std::vector<LintedFile>& files);
void printLintSarif(const std::vector<LintedFile>& files);

}  // namespace tool

#endif
