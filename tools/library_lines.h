// SPDX-License-Identifier: MIT
// The lines the library reports while the tool builds a document, taken through the library's
// diagnostics handler with the level the library gives each, instead of printed among the
// tool's own output.
#ifndef JSONCFGPLUS_TOOLS_LIBRARY_LINES_H
#define JSONCFGPLUS_TOOLS_LIBRARY_LINES_H

#include <string>
#include <utility>
#include <vector>

namespace tool {

struct LibraryLine {
    int level;         // a jsonCfgPlusDiagLevel
    std::string text;  // as standard output would have shown it, without the line end
};

// Collects every line the library reports, json-c's parse errors included, from construction
// to destruction; destruction gives the lines back to the standard streams.
class LibraryLines {
  public:
    LibraryLines();
    ~LibraryLines();
    LibraryLines(const LibraryLines&) = delete;
    LibraryLines& operator=(const LibraryLines&) = delete;

    std::vector<LibraryLine> take() { return std::move(m_lines); }

  private:
    static void collect(int level, const char* line, void* context);

    std::vector<LibraryLine> m_lines;
};

// A blank line or a "====" separator, which says nothing.
bool saysNothing(const LibraryLine& line);

// Why a build failed: the last line that says something, since the build stops where it fails
// (an invalid rule's reason is untagged); empty when there is none.
std::string failureReason(const std::vector<LibraryLine>& lines);

}  // namespace tool

#endif
