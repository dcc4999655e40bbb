// SPDX-License-Identifier: MIT
// What the library's own pipeline may do with the parse entry's document before it runs.
#ifndef JSONCFGPLUS_DOCUMENT_PARSE_DOCUMENT_PRIV_H
#define JSONCFGPLUS_DOCUMENT_PARSE_DOCUMENT_PRIV_H

#include "document/json_cfg_plus.h"

namespace jcp {

// Releases the object table, and the JSON tree it owns, when document is the parse entry's
// own and its callback is the library's pipeline, which reads elements alone: the tree would
// only add to the pipeline's peak. Any other document, or callback, keeps the table whole.
void releaseTableBeforeOwnPipeline(jsonCfgPlus& document);

}  // namespace jcp

#endif
