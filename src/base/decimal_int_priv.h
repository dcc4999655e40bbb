// SPDX-License-Identifier: MIT
// The decimal conversion of a document's numeric texts, whose failure names the text.
#ifndef JSONCFGPLUS_BASE_DECIMAL_INT_PRIV_H
#define JSONCFGPLUS_BASE_DECIMAL_INT_PRIV_H

#include <string>

namespace jcp {

// std::stoi in base 10: leading blanks skipped, trailing non-digits ignored. Throws
// std::invalid_argument for a text that does not start with a number and std::out_of_range
// beyond int, as std::stoi does, but with a what() that quotes the text, so whoever catches
// it can say which value does not convert.
int decimalInt(const std::string& text);

}  // namespace jcp

#endif
