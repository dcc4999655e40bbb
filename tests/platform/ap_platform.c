/* The AP's platform library as a separate shared object: the slot values the AP has stored. */
__attribute__((visibility("default"))) int apCfgVlanVIDGet(int radio, int slot) {
    return radio == 0 && slot == 5 ? 105 : 0;
}

__attribute__((visibility("default"))) int apCfgBoardSubTypeGet(void) {
    return 7;
}
