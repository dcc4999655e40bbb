// SPDX-License-Identifier: MIT
// The two documents the AP saved last (its two-slot rotation json_q1.json, json_q2.json), for
// comparing what the last push changed.
#ifndef JSONCFGPLUS_TOOLS_SAVED_DOCUMENTS_H
#define JSONCFGPLUS_TOOLS_SAVED_DOCUMENTS_H

#include <string>
#include <vector>

namespace tool {

// The slots of dir that hold a file, older first. The library keeps its slot counter in
// memory only, so which is newer is told by modification time; on equal times slot 1 counts
// as the older.
std::vector<std::string> savedDocumentsOldestFirst(const std::string& dir);

}  // namespace tool

#endif
