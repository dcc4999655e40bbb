// SPDX-License-Identifier: MIT
// The wireless mode of a list of rate names, which the exported jsonCfgPlusRates2WirelessMode
// answers with.
#ifndef JSONCFGPLUS_CONVERT_RATES_PRIV_H
#define JSONCFGPLUS_CONVERT_RATES_PRIV_H

#include <cstdint>

namespace jcp {

// 0 with *mode set (when mode is not null) when a mode was found, -1 with *mode untouched when
// not; *basic points into the caller's strings at the first basic rate.
int ratesToWirelessMode(int band, const char** rates, int count, uint32_t* mode,
                        const char** basic);

}  // namespace jcp

#endif
