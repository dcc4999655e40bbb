// SPDX-License-Identifier: MIT
// Escaping the control bytes of a document text shown in a log line; see control_escape_priv.h.
#include "base/control_escape_priv.h"

#include <cstdio>

namespace jcp {

std::string escapeControls(const std::string& text, ControlEscape style, bool inQuotes) {
    std::string out;
    out.reserve(text.size());
    for (char ch : text) {
        auto c = static_cast<unsigned char>(ch);
        if (c < 0x20 || c == 0x7F) {
            char code[8];
            if (style == ControlEscape::hexByte)
                std::snprintf(code, sizeof code, "\\x%02X", c);
            else
                std::snprintf(code, sizeof code, "\\u%04x", c);
            out += code;
            continue;
        }
        if (inQuotes && (c == '"' || c == '\\')) out += '\\';
        out += ch;
    }
    return out;
}

}  // namespace jcp
