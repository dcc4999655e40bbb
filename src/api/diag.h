// The one way the library writes diagnostics: whole lines on standard output, flushed.
#ifndef JSONCFGPLUS_API_DIAG_H
#define JSONCFGPLUS_API_DIAG_H

#include <sstream>
#include <string>

namespace jcp {

// Writes text and a line end to standard output and flushes it.
void writeLine(const std::string& text);

// Streams every part into one line.
template <typename... Parts>
void diag(const Parts&... parts) {
    std::ostringstream line;
    (line << ... << parts);
    writeLine(line.str());
}

}  // namespace jcp

#endif
