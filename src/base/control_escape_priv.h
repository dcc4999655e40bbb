// SPDX-License-Identifier: MIT
// Document texts made safe for a log line: a control byte in a text can neither end the line
// nor forge another. Internal: not part of the exported interface.
#ifndef JSONCFGPLUS_BASE_CONTROL_ESCAPE_PRIV_H
#define JSONCFGPLUS_BASE_CONTROL_ESCAPE_PRIV_H

#include <string>

namespace jcp {

// How a control byte (below 0x20, and 0x7F) is written.
enum class ControlEscape {
    hexByte,     // "\x1B", upper-case: a byte, as C writes it
    jsonUnicode  // "\u001b", lower-case: a character, as JSON writes it
};

// text with each control byte escaped in style; every other byte, UTF-8 included, as it is.
// With inQuotes, '"' and '\\' take a backslash too, so that the text reads back unambiguously
// between double quotes.
std::string escapeControls(const std::string& text, ControlEscape style, bool inQuotes);

}  // namespace jcp

#endif
