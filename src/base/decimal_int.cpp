// SPDX-License-Identifier: MIT
// The decimal conversion of a document's numeric texts, whose failure names the text.
#include "base/decimal_int_priv.h"

#include <stdexcept>

#include "base/build_events_priv.h"
#include "base/control_escape_priv.h"

namespace {

// A log line stays one readable line however long or binary the value is.
const size_t kShownBytes = 64;

std::string quoted(const std::string& text) {
    return "\"" +
           jcp::escapeControls(text.substr(0, kShownBytes), jcp::ControlEscape::hexByte, true) +
           (text.size() > kShownBytes ? "\"..." : "\"");
}

}  // namespace

namespace jcp {

int decimalInt(const std::string& text) {
    try {
        size_t used = 0;
        int value = std::stoi(text, &used, 10);
        if (used != text.size())
            reportEvent(EventKind::reinterpreted, "",
                        quoted(text) + " is read as " + std::to_string(value) +
                            "; what follows the number is ignored");
        return value;
    } catch (const std::invalid_argument&) {
        reportEvent(EventKind::refused, "",
                    quoted(text) +
                        " is not a decimal number; the conversion throws and the whole document is "
                        "refused");
        throw std::invalid_argument("not a decimal number: " + quoted(text));
    } catch (const std::out_of_range&) {
        reportEvent(EventKind::refused, "",
                    quoted(text) +
                        " is beyond the int range; the conversion throws and the whole document is "
                        "refused");
        throw std::out_of_range("beyond the int range: " + quoted(text));
    }
}

}  // namespace jcp
