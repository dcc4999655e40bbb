// SPDX-License-Identifier: MIT
// The guard every exported C entry runs its body in: a document must never kill a C daemon.
#ifndef JSONCFGPLUS_BASE_ENTRY_GUARD_PRIV_H
#define JSONCFGPLUS_BASE_ENTRY_GUARD_PRIV_H

#include <stdexcept>
#include <type_traits>
#include <utility>

namespace jcp {

// Prints the one "[ERR]" line for a value the decimal conversion refused.
void reportUnconvertedValue(const char* entry, const std::logic_error& error);

// Runs body and returns its result; when the decimal conversion throws on the way (the C++
// helpers do, on purpose), prints one "[ERR]" line naming the entry and the value and returns
// failure instead. Allocation failure and every other exception still propagate: only those
// two are a document's doing. Whatever body held is released by the unwinding.
template <typename Body>
std::invoke_result_t<Body&> guardEntry(const char* entry, std::invoke_result_t<Body&> failure,
                                       Body&& body) {
    try {
        return body();
    } catch (const std::invalid_argument& error) {
        reportUnconvertedValue(entry, error);
    } catch (const std::out_of_range& error) {
        reportUnconvertedValue(entry, error);
    }
    return failure;
}

// The same for an entry that returns nothing.
template <typename Body>
void guardVoidEntry(const char* entry, Body&& body) {
    guardEntry(entry, false, [&body] {
        body();
        return true;
    });
}

}  // namespace jcp

#endif
