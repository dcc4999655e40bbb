// SPDX-License-Identifier: MIT
// The lines the library prints while it builds a document, read back by the tool: each with the
// severity its tag gives, and the one line that says why a build failed.
#ifndef JSONCFGPLUS_TOOLS_LIBRARY_LINES_H
#define JSONCFGPLUS_TOOLS_LIBRARY_LINES_H

#include <string>
#include <vector>

namespace tool {

struct LibraryLine {
    // "error" ("[ERR]", "[ERROR]", json-c's "Error:"), "warning" ("[WARN]"), "info" ("[INFO]"),
    // or "note" for an untagged line.
    const char* severity;
    std::string text;  // the line without its tag
};

// Every line of the output but blank ones and "====" separators, which say nothing.
std::vector<LibraryLine> libraryLines(const std::string& output);

// Why a build failed: the last line the library printed, since the build stops where it fails
// (an invalid rule's reason is untagged); empty when it printed nothing useful.
std::string failureReason(const std::string& output);

}  // namespace tool

#endif
