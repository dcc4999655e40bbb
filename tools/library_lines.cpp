// SPDX-License-Identifier: MIT
// Collecting the library's lines through its diagnostics handler; see library_lines.h.
#include "library_lines.h"

#include "api/jsoncfgplus.h"

namespace tool {

LibraryLines::LibraryLines() {
    setJsonCfgPlusDiagHandler(&LibraryLines::collect, this);
}

LibraryLines::~LibraryLines() {
    setJsonCfgPlusDiagHandler(nullptr, nullptr);
}

void LibraryLines::collect(int level, const char* line, void* context) {
    static_cast<LibraryLines*>(context)->m_lines.push_back(LibraryLine{level, line});
}

bool saysNothing(const LibraryLine& line) {
    return line.text.find_first_not_of(" \t\r\n=") == std::string::npos;
}

std::string failureReason(const std::vector<LibraryLine>& lines) {
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (!saysNothing(*line)) return line->text;
    }
    return "";
}

}  // namespace tool
