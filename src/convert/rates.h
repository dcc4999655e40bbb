// SPDX-License-Identifier: MIT
// The 802.11 rate tables and wireless-mode masks shared with outside callers, and the
// translation of configured rate names into a wireless mode (behind the exported
// jsonCfgPlusRates2WirelessMode).
#ifndef JSONCFGPLUS_CONVERT_RATES_H
#define JSONCFGPLUS_CONVERT_RATES_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "../base/export.h"

// The tables live in a namespace so that their link names are C++ names: the library's plain
// (C) exports stay exactly its C entries. The using-declarations below keep the plain names.
namespace jcp {

// Rate names column by column; an empty string is a real entry that keeps a table's columns
// aligned with the full table, and it takes part in lookups like any other name.
extern JCP_EXPORT const std::vector<std::string> dataRates24wb;
extern JCP_EXPORT const std::vector<std::string> dataRates24wbg;
extern JCP_EXPORT const std::vector<std::string> dataRates24wbgn;
extern JCP_EXPORT const std::vector<std::string> dataRates24wg;
extern JCP_EXPORT const std::vector<std::string> dataRates24wgn;
// The strict tables keep only the mandatory OFDM rates 6, 12 and 24.
extern JCP_EXPORT const std::vector<std::string> dataRates24wgnstrict;
extern JCP_EXPORT const std::vector<std::string> dataRates5wanc;
extern JCP_EXPORT const std::vector<std::string> dataRates5wacstrict;

// Wireless-mode name to mask. Bits: 0x1 b, 0x2 g, 0x4 a, 0x10 n, 0x40 ac, 0x100 ax;
// 0x08000000 2.4 GHz, 0x10000000 5 GHz, 0x20000000 6 GHz.
extern JCP_EXPORT const std::map<std::string, uint32_t> modesInfoMap;

}  // namespace jcp

using jcp::dataRates24wb;
using jcp::dataRates24wbg;
using jcp::dataRates24wbgn;
using jcp::dataRates24wg;
using jcp::dataRates24wgn;
using jcp::dataRates24wgnstrict;
using jcp::dataRates5wacstrict;
using jcp::dataRates5wanc;
using jcp::modesInfoMap;

#endif
