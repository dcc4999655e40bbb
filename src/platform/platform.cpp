// Weak default definitions of the AP platform calls, for builds off the AP.
#include "platform/platform.h"

// Exported with default visibility: the library's own calls then bind through the dynamic
// symbol table, so the AP's platform library, loaded ahead of this one, supplies the real
// answers. A hidden default would be bound inside the library and never be replaced.
extern "C" {

__attribute__((weak)) int apCfgVlanVIDGet(int, int) {
    return 0;
}
__attribute__((weak)) int apCfgBoardSubTypeGet(void) {
    return 0;
}
}
