// SPDX-License-Identifier: MIT
// Whole-file reading shared by every entry that takes a path.
#ifndef JSONCFGPLUS_DOCUMENT_READ_FILE_H
#define JSONCFGPLUS_DOCUMENT_READ_FILE_H

#include <string>

namespace jcp {

// Reads the file as bytes into out; false when it cannot be opened or read.
bool readWholeFile(const std::string& path, std::string& out);

}  // namespace jcp

#endif
