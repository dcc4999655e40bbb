// SPDX-License-Identifier: MIT
// The exported wireless-mode query over the rate tables.
#include "api/jsoncfgplus.h"
#include "convert/rates_priv.h"

extern "C" int jsonCfgPlusRates2WirelessMode(int band, const char** rates, int count,
                                             uint32_t* mode, const char** basic) {
    return jcp::ratesToWirelessMode(band, rates, count, mode, basic);
}
