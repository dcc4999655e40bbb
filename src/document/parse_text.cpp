// SPDX-License-Identifier: MIT
// One document text through json-c's tokener; see parse_text_priv.h.
#include "document/parse_text_priv.h"

#include <algorithm>
#include <climits>
#include <new>

namespace jcp {

ParsedText parseDocumentText(const char* text, size_t length) {
    json_tokener* tokener = json_tokener_new();
    if (tokener == nullptr) throw std::bad_alloc();
    ParsedText out{nullptr, json_tokener_continue, 0};
    size_t offset = 0;
    size_t pieceStart = 0;
    do {
        pieceStart = offset;
        size_t piece = std::min<size_t>(length - offset, INT_MAX);
        out.root = json_tokener_parse_ex(tokener, text + offset, static_cast<int>(piece));
        out.error = json_tokener_get_error(tokener);
        offset += piece;
    } while (out.error == json_tokener_continue && offset < length);
    out.end = pieceStart + json_tokener_get_parse_end(tokener);
    json_tokener_free(tokener);
    if (out.error != json_tokener_success && out.root != nullptr) {
        json_object_put(out.root);
        out.root = nullptr;
    }
    return out;
}

}  // namespace jcp
