// SPDX-License-Identifier: MIT
// Pipeline steps that keep their place in the order but leave the elements as built.
#include "convert/converter.h"

// Association black list: not specified further; passes the elements through.
int cfgPlusApiConverter::jsonCfgPlusBlackList(jsonCfgPlus&) {
    return 0;
}
// Wired port modes: not specified further; passes the elements through.
int cfgPlusApiConverter::jsonCfgPlusEthMode(jsonCfgPlus&) {
    return 0;
}
// Fabric Attach: not specified further; passes the elements through.
int cfgPlusApiConverter::jsonCfgPlusFabricAttach(jsonCfgPlus&) {
    return 0;
}
// Location-based-service forwarding: not specified further; passes the elements through.
int cfgPlusApiConverter::jsonCfgPlusLBS(jsonCfgPlus&) {
    return 0;
}
// IoT radio settings: not specified further; passes the elements through.
int cfgPlusApiConverter::jsonCfgPlusIoT(jsonCfgPlus&) {
    return 0;
}
// Location AP list: not specified further; passes the elements through.
int cfgPlusApiConverter::jsonCfgPlusLocAp(jsonCfgPlus&) {
    return 0;
}
// WEP keys: not specified further; passes the elements through.
int cfgPlusApiConverter::jsonCfgPlusVnsWepKey(jsonCfgPlus&) {
    return 0;
}
// Client bridge: not specified further; passes the elements through.
int cfgPlusApiConverter::jsonCfgPlusVnsClientBridge(jsonCfgPlus&) {
    return 0;
}
