// SPDX-License-Identifier: MIT
// Reading back the library's printed lines; see library_lines.h.
#include "library_lines.h"

#include <cstring>

namespace tool {

namespace {

struct Tag {
    const char* prefix;
    const char* severity;
};

const Tag kTags[] = {
    {"[ERR]", "error"},    {"[ERROR]", "error"},     {"Error:", "error"},
    {"[WARN]", "warning"}, {"[WARNING]", "warning"}, {"[INFO]", "info"},
};

bool saysNothing(const std::string& line) {
    return line.find_first_not_of(" \t\r=") == std::string::npos;
}

LibraryLine classify(const std::string& line) {
    for (const Tag& tag : kTags) {
        size_t length = std::strlen(tag.prefix);
        if (line.compare(0, length, tag.prefix) != 0) continue;
        size_t text = line.find_first_not_of(' ', length);
        return LibraryLine{tag.severity, text == std::string::npos ? "" : line.substr(text)};
    }
    return LibraryLine{"note", line};
}

}  // namespace

std::vector<LibraryLine> libraryLines(const std::string& output) {
    std::vector<LibraryLine> lines;
    size_t start = 0;
    while (start < output.size()) {
        size_t end = output.find('\n', start);
        if (end == std::string::npos) end = output.size();
        std::string line = output.substr(start, end - start);
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!saysNothing(line)) lines.push_back(classify(line));
        start = end + 1;
    }
    return lines;
}

std::string failureReason(const std::string& output) {
    // Whole, tag and all: "[ERR] not found mandatory device." reads as the library printed it.
    size_t end = output.size();
    while (end > 0) {
        size_t start = output.rfind('\n', end - 1);
        start = start == std::string::npos ? 0 : start + 1;
        std::string line = output.substr(start, end - start);
        if (!line.empty() && line.back() == '\n') line.pop_back();
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (!saysNothing(line)) return line;
        end = start == 0 ? 0 : start - 1;
    }
    return "";
}

}  // namespace tool
