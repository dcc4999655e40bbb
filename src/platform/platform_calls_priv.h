// SPDX-License-Identifier: MIT
// The AP's platform calls as the library makes them.
//
// Each call is looked up in the process at first use (dlsym with RTLD_DEFAULT), so the AP's
// definitions answer whatever the link or load order; the binding is made once and kept. The
// lookup sees the program's exported symbols, the libraries it links and those opened with
// RTLD_GLOBAL. A platform library opened with RTLD_LOCAL, or only after the first call, is not
// seen: the fallback answers.
//
// The fallback is the only part the two libraries bind differently; neither defines a symbol
// of the AP's names, so the lookup can never find one of its own. The shared library falls back
// to its hidden defaults; the static one to the names as the link resolved them (the program's
// own definitions), else to the defaults.
#ifndef JSONCFGPLUS_PLATFORM_PLATFORM_CALLS_PRIV_H
#define JSONCFGPLUS_PLATFORM_PLATFORM_CALLS_PRIV_H

namespace jcp {

// apCfgVlanVIDGet and apCfgBoardSubTypeGet as the process answers them.
int storedVlanVid(int radio, int slot);
int boardSubType();

// What answers when the process does not define the call.
int fallbackVlanVid(int radio, int slot);
int fallbackBoardSubType();

// The library's own answers: 0, with one "[WARN]" line per call the first time.
int defaultVlanVid(int radio, int slot);
int defaultBoardSubType();

}  // namespace jcp

#endif
