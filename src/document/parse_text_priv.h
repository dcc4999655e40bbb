// SPDX-License-Identifier: MIT
// One document text through json-c's tokener, as the build reads it. Internal: not part of the
// exported interface.
#ifndef JSONCFGPLUS_DOCUMENT_PARSE_TEXT_PRIV_H
#define JSONCFGPLUS_DOCUMENT_PARSE_TEXT_PRIV_H

#include <json-c/json.h>

#include <cstddef>

namespace jcp {

struct ParsedText {
    json_object* root;         // the caller's reference; null unless error is success
    json_tokener_error error;  // json_tokener_continue: the text ended inside the document
    size_t end;                // where the tokener stopped: after the document, or at the fault
};

// Parses with the tokener's default nesting limit; json-c takes an int length, so a longer
// text is fed in pieces of the same parse.
ParsedText parseDocumentText(const char* text, size_t length);

}  // namespace jcp

#endif
