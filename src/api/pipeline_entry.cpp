// SPDX-License-Identifier: MIT
// The exported pipeline function a caller hands to the parse entry.
#include "api/jsoncfgplus.h"
#include "base/entry_guard_priv.h"
#include "convert/pipeline_priv.h"
#include "document/parse_document_priv.h"

extern "C" int jsonCfgPlusParserCallback(jsonCfgPlus* document) {
    if (document == nullptr) return -1;
    return jcp::guardEntry("jsonCfgPlusParserCallback", -1, [document] {
        jcp::releaseTableBeforeOwnPipeline(*document);
        return jcp::runPipeline(*document);
    });
}
