// SPDX-License-Identifier: MIT
// Replacing a file whole: the only way the library writes one.
#ifndef JSONCFGPLUS_DOCUMENT_REPLACE_FILE_H
#define JSONCFGPLUS_DOCUMENT_REPLACE_FILE_H

#include <cstddef>
#include <string>

namespace jcp {

// Writes the bytes to a new file of mode 0600 created exclusively beside path, then renames
// it over path: path is never half-written, never written through a link, never readable by
// other users. False, with nothing left behind and path as it was, when any step fails.
bool replaceFile(const std::string& path, const char* data, size_t length);

}  // namespace jcp

#endif
