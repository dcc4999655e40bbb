// SPDX-License-Identifier: MIT
// The tool's JSON output: a built result as entries decoded field by field, and a quiet build
// that keeps the library's own lines out of what the tool prints.
#ifndef JSONCFGPLUS_TOOLS_JSON_OUT_H
#define JSONCFGPLUS_TOOLS_JSON_OUT_H

#include <json-c/json.h>

#include <memory>
#include <string>
#include <vector>

#include "api/jsoncfgplus.h"
#include "library_lines.h"

namespace tool {

struct JsonRelease {
    void operator()(json_object* o) const { json_object_put(o); }
};
using JsonPtr = std::unique_ptr<json_object, JsonRelease>;

// Writes the object as indented JSON and a line end to standard output.
void printJsonDocument(json_object* document);

// The result as {"global": [...], "radios": [...], "vns": [...], "meshpoints": [...]}.
JsonPtr resultToJson(const apiCfgPlusResult& result);

// Builds text with the full pipeline into its JSON form; the library's lines (its progress,
// its warnings and its reasons for a failure, json-c's parse errors included) go to
// libraryLines instead of the tool's output. Null when the document was not built.
JsonPtr buildToJson(const std::string& text, std::vector<LibraryLine>& libraryLines);

}  // namespace tool

#endif
