// SPDX-License-Identifier: MIT
// The schema command: the document schema as JSON Schema on standard output, for editors and
// for validating documents in any language.
#include "args.h"
#include "commands.h"
#include "json_out.h"
#include "schema_json.h"

namespace tool {

int runSchema(int argc, char** argv) {
    Args args(argc, argv, {}, {});
    args.positionals(0);
    JsonPtr schema = jcp::schema::jsonSchema();
    printJsonDocument(schema.get());
    return 0;
}

}  // namespace tool
