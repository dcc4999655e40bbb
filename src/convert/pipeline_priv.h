// SPDX-License-Identifier: MIT
// The conversion pipeline, which the exported jsonCfgPlusParserCallback runs.
#ifndef JSONCFGPLUS_CONVERT_PIPELINE_PRIV_H
#define JSONCFGPLUS_CONVERT_PIPELINE_PRIV_H

#include "document/json_cfg_plus.h"

namespace jcp {

// Runs every converter in its fixed order on a built document; the first non-zero result stops
// the pipeline and is returned.
int runPipeline(jsonCfgPlus& document);

}  // namespace jcp

#endif
