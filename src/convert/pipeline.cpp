// SPDX-License-Identifier: MIT
// The conversion pipeline: every converter in its fixed order, stopping at the first failure.
#include "convert/pipeline_priv.h"

#include "convert/converter.h"

namespace {

using Step = int (cfgPlusApiConverter::*)(jsonCfgPlus&);

// The order is part of the design: later steps see what earlier ones left, meshpoints become
// WLANs after every other per-WLAN step, and the WLAN ordering is always last.
constexpr Step kPipeline[] = {
    &cfgPlusApiConverter::jsonCfgPlusBlackList,
    &cfgPlusApiConverter::jsonCfgPlusEthMode,
    &cfgPlusApiConverter::jsonCfgPlusApName,
    &cfgPlusApiConverter::jsonCfgPlusFabricAttach,
    &cfgPlusApiConverter::jsonCfgPlusVnsVlan,
    &cfgPlusApiConverter::jsonCfgPlusVnsSessionAvail,
    &cfgPlusApiConverter::jsonCfgPlusLocation,
    &cfgPlusApiConverter::jsonCfgPlusAntennaType,
    &cfgPlusApiConverter::jsonCfgPlusLBS,
    &cfgPlusApiConverter::jsonCfgPlusPositioning,
    &cfgPlusApiConverter::jsonCfgPlusIoT,
    &cfgPlusApiConverter::jsonCfgPlusAdspServer,
    &cfgPlusApiConverter::jsonCfgPlusFailoverCfg,
    &cfgPlusApiConverter::jsonCfgPlusRouteCfg,
    &cfgPlusApiConverter::jsonCfgPlusTopologies,
    &cfgPlusApiConverter::jsonCfgPlusArpGuard,
    &cfgPlusApiConverter::jsonCfgPlusLocAp,
    &cfgPlusApiConverter::jsonCfgPlusRadioFallbackChannelList,
    &cfgPlusApiConverter::jsonCfgPlusRadioDtim,
    &cfgPlusApiConverter::jsonCfgPlusRadioOcsChannelList,
    &cfgPlusApiConverter::jsonCfgPlusRadioSensorChannelList,
    &cfgPlusApiConverter::jsonCfgPlusRadioProbeSuppress,
    &cfgPlusApiConverter::jsonCfgPlusRadioLoadBalancing,
    &cfgPlusApiConverter::jsonCfgPlusRadioAxParamsDefault,
    &cfgPlusApiConverter::jsonCfgPlusVnsFilters,
    &cfgPlusApiConverter::jsonCfgPlusVnsWepKey,
    &cfgPlusApiConverter::jsonCfgPlusVnsClientBridge,
    &cfgPlusApiConverter::jsonCfgPlusVns11U,
    &cfgPlusApiConverter::jsonCfgPlusVnsPasspoint,
    &cfgPlusApiConverter::jsonCfgPlusMeshpointToWlan,
    &cfgPlusApiConverter::jsonCfgPlusVnsOrderWlans,
};
static_assert(sizeof(kPipeline) / sizeof(kPipeline[0]) == 31, "the pipeline has 31 steps");

}  // namespace

namespace jcp {

int runPipeline(jsonCfgPlus& document) {
    cfgPlusApiConverter converter;
    int result = 0;
    for (Step step : kPipeline) {
        result = (converter.*step)(document);
        if (result != 0) break;
    }
    return result;
}

}  // namespace jcp
