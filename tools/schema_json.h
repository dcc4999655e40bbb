// SPDX-License-Identifier: MIT
// The schema table as a JSON Schema (draft 2020-12) document.
#ifndef JSONCFGPLUS_TOOLS_SCHEMA_JSON_H
#define JSONCFGPLUS_TOOLS_SCHEMA_JSON_H

#include "json_out.h"

namespace jcp::schema {

// The schema rejects exactly what lint reports from the table as an error: the wrong JSON
// type, a value outside a range the AP does not keep, a text the AP misreads and a value with
// no meaning. What lint only warns of (the standard's ranges, unknown members) stays in the
// descriptions, since the AP accepts it.
tool::JsonPtr jsonSchema();

}  // namespace jcp::schema

#endif
