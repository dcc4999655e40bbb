// SPDX-License-Identifier: MIT
// The one way the library writes diagnostics: whole lines, each with its level, to the
// caller's handler (setJsonCfgPlusDiagHandler) or, when none is installed, to standard output,
// ended and flushed. The handler sees exactly the text standard output would have shown.
#ifndef JSONCFGPLUS_BASE_DIAG_H
#define JSONCFGPLUS_BASE_DIAG_H

#include <sstream>
#include <string>

#include "records.h"

namespace jcp {

// The JCP_DIAG_* levels of base/records.h, in the same order of severity.
enum class DiagLevel { progress = 0, info = 1, milestone = 2, warning = 3, error = 4 };

// The level a line announces by its prefix ("JSON-Q+: ", "[WARN]", "[ERR]", ...); info when
// it announces none.
DiagLevel levelOfLine(const std::string& text);

// Sends every line to handler (with context) instead of the standard streams; null restores
// them.
void setDiagHandler(jsonCfgPlusDiagHandler handler, void* context);

// Writes one line at the level its prefix announces.
void writeLine(const std::string& text);
// Writes one line at a level its source knows, whatever its text says.
void writeLine(DiagLevel level, const std::string& text);
// Writes one error line that goes to standard error when no handler is installed.
void writeErrorLine(const std::string& text);

// While alive, this thread's lines are kept here, each ended by a newline, instead of reaching
// the handler or the standard streams: a check that runs the build on a daemon's behalf must
// not speak as if the daemon had applied the document. Captures nest; the innermost keeps.
class DiagCapture {
  public:
    DiagCapture();
    ~DiagCapture();
    DiagCapture(const DiagCapture&) = delete;
    DiagCapture& operator=(const DiagCapture&) = delete;

    // Everything kept so far; its size is a mark to cut one call's lines at.
    const std::string& text() const { return m_text; }
    void keep(const std::string& line) {
        m_text += line;
        m_text += '\n';
    }

  private:
    std::string m_text;
    DiagCapture* m_outer;
};

template <typename... Parts>
std::string joinParts(const Parts&... parts) {
    std::ostringstream line;
    (line << ... << parts);
    return line.str();
}

// Streams every part into one line, at the level its prefix announces.
template <typename... Parts>
void diag(const Parts&... parts) {
    writeLine(joinParts(parts...));
}

// A line that says the document fails, at error level whatever its text: the converters'
// "... is not valid" lines and the Redis connection's carry no prefix that says so.
template <typename... Parts>
void failure(const Parts&... parts) {
    writeLine(DiagLevel::error, joinParts(parts...));
}

// A progress line of the build or a converter, printed only on the document's trace flag.
template <typename... Parts>
void progress(const Parts&... parts) {
    writeLine(DiagLevel::progress, joinParts(parts...));
}

}  // namespace jcp

#endif
