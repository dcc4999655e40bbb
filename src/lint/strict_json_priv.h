// SPDX-License-Identifier: MIT
// What json-c accepts but a strict JSON parser refuses, found in the document's text: duplicate
// keys, NaN and Infinity, a comma before a closing bracket, comments, single quotes, literals in
// another case, numbers with a leading zero or a bare '.', unescaped control characters in
// strings, and invalid UTF-8. The AP takes such a document as json-c reads it; an editor,
// a validator or another tool may not, so each is a warning with its line and column.
#ifndef JSONCFGPLUS_LINT_STRICT_JSON_PRIV_H
#define JSONCFGPLUS_LINT_STRICT_JSON_PRIV_H

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "lint/lint_priv.h"

namespace jcp::lint {

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

// Where each member of one text starts, by its JSON Pointer: an object member at its key, an
// array item at its value, "" at the document's value. Of duplicate keys the last is kept, as
// it is the one the AP keeps.
class MemberPositions {
  public:
    explicit MemberPositions(const std::string& text) : m_text(text) {}
    const TextPositions& text() const { return m_text; }
    void set(const std::string& pointer, size_t offset) { m_offsets[pointer] = offset; }
    // The position of the member, or of its nearest ancestor in the text when it has none
    // (a missing member is told where it belongs); false only for a text without a document.
    bool locate(const std::string& pointer, int& line, int& column) const;

  private:
    TextPositions m_text;
    std::unordered_map<std::string, size_t> m_offsets;
};

// Adds a warning for every such place in a text json-c has parsed, and returns where each
// member starts; a text it could not parse gives what was found before the scan lost its way.
std::shared_ptr<const MemberPositions> checkStrictJson(const std::string& text, Findings& out);

}  // namespace jcp::lint

#endif
