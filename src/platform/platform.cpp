// Weak default definitions of the AP platform calls, for builds off the AP.
#include "platform/platform.h"

extern "C" {

__attribute__((weak)) int apCfgVlanVIDGet(int, int) {
    return 0;
}
__attribute__((weak)) int apCfgBoardSubTypeGet(void) {
    return 0;
}
}
