// SPDX-License-Identifier: MIT
// What json-c accepts but a strict JSON parser refuses, found in the document's text: duplicate
// keys, NaN and Infinity, a comma before a closing bracket, comments, single quotes, literals in
// another case, numbers with a leading zero or a bare '.', unescaped control characters in
// strings, and invalid UTF-8. The AP takes such a document as json-c reads it; an editor,
// a validator or another tool may not, so each is a warning with its line and column.
#ifndef JSONCFGPLUS_TOOLS_STRICT_JSON_H
#define JSONCFGPLUS_TOOLS_STRICT_JSON_H

#include <string>
#include <vector>

#include "lint.h"

namespace lint {

// Adds a warning for every such place in a text json-c has parsed; a text it could not parse
// gives what was found before the scan lost its way.
void checkStrictJson(const std::string& text, Findings& out);

// Lines and byte columns (both from 1) of offsets in one text, each found in logarithmic time,
// so a document with many problems is not read again for each.
class TextPositions {
  public:
    explicit TextPositions(const std::string& text);
    void at(size_t offset, int& line, int& column) const;

  private:
    std::vector<size_t> m_lineStarts;
    size_t m_size;
};

}  // namespace lint

#endif
