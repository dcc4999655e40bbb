// SPDX-License-Identifier: MIT
// The exported lint: the problems of one document, handed to the caller one record at a time.
#include <string>

#include "api/jsoncfgplus.h"
#include "base/entry_guard_priv.h"
#include "lint/lint_priv.h"

extern "C" int jsonCfgPlusLint(const char* json, unsigned int length,
                               jsonCfgPlusLintHandler handler, void* context,
                               unsigned int* warnings) {
    return jcp::guardEntry("jsonCfgPlusLint", -1, [&]() -> int {
        if (warnings != nullptr) *warnings = 0;
        if (json == nullptr) return -1;
        jcp::lint::Findings findings = jcp::lint::lintText(std::string(json, length));
        int errors = 0;
        for (const jcp::lint::Problem& p : findings.problems()) {
            bool error = p.severity == jcp::lint::Severity::Error;
            if (error) {
                ++errors;
            } else if (warnings != nullptr) {
                ++*warnings;
            }
            if (handler == nullptr) continue;
            jsonCfgPlusLintProblem record{error ? JCP_LINT_ERROR : JCP_LINT_WARNING,
                                          p.line,
                                          p.column,
                                          p.pointer.c_str(),
                                          p.message.c_str(),
                                          p.rule.c_str()};
            handler(&record, context);
        }
        return errors;
    });
}
