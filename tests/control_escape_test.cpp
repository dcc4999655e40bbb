// SPDX-License-Identifier: MIT
// Control bytes of a document text written for a log line, in both styles.
#include <gtest/gtest.h>

#include <string>

#include "base/control_escape_priv.h"

namespace {

using jcp::ControlEscape;

TEST(ControlEscape, EscapesEveryControlByteAndNothingElse) {
    const struct {
        const char* name;
        std::string text;
        ControlEscape style;
        bool inQuotes;
        std::string escaped;
    } rows[] = {
        {"byte: upper-case hex", std::string("a\0\x1b\x1f b", 6), ControlEscape::hexByte, false,
         "a\\x00\\x1B\\x1F b"},
        {"JSON: lower-case hex", std::string("a\0\x1b\x1f b", 6), ControlEscape::jsonUnicode, false,
         "a\\u0000\\u001b\\u001f b"},
        {"DEL is a control byte", "\x7f~", ControlEscape::jsonUnicode, false, "\\u007f~"},
        {"UTF-8 and high bytes stay", "\xc3\xa9\x80\xff", ControlEscape::hexByte, true,
         "\xc3\xa9\x80\xff"},
        {"quotes kept outside quotes", "\"a\\b\"", ControlEscape::hexByte, false, "\"a\\b\""},
        {"quotes escaped inside quotes", "\"a\\b\n", ControlEscape::jsonUnicode, true,
         "\\\"a\\\\b\\u000a"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(jcp::escapeControls(row.text, row.style, row.inQuotes), row.escaped);
    }
}

}  // namespace
