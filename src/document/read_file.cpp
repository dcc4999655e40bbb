// SPDX-License-Identifier: MIT
// Whole-file reading.
#include "document/read_file.h"

#include <fstream>
#include <iterator>

namespace jcp {

bool readWholeFile(const std::string& path, std::string& out) {
    std::ifstream in(path, std::ios::binary);
    if (!in.is_open()) return false;
    std::string data((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    // A directory opens but cannot be read; it is not a document.
    if (in.bad()) return false;
    out = std::move(data);
    return true;
}

}  // namespace jcp
