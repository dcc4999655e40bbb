#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The shared library's ABI against the committed baseline, with libabigail.
#   baseline LIBRARY  writes abi/<SONAME>.abi from the library (built with debugging information)
#   check LIBRARY     compares the library with that baseline: new functions and variables pass;
#                     a removed symbol or a changed type or signature fails, unless the SONAME's
#                     major number moved, which asks for a new baseline instead.
# Usage: scripts/abi.sh baseline|check LIBRARY    (from the repository root)
set -euo pipefail
mode=$1
library=$2
soname=$(readelf -d "$library" | sed -n 's/.*Library soname: \[\(.*\)\]/\1/p')
baseline=abi/$soname.abi

# Paths and locations left out, so the baseline does not depend on where it was built.
dump() {
    abidw --no-corpus-path --no-comp-dir-path --short-locs --drop-undefined-syms \
        --headers-dir src --drop-private-types --out-file "$2" "$1"
}

case "$mode" in
baseline)
    mkdir -p abi
    dump "$library" "$baseline"
    echo "abi: $baseline written; commit it"
    ;;
check)
    if [ ! -f "$baseline" ]; then
        echo "abi: no baseline $baseline: the major version moved (SONAME $soname)." >&2
        echo "abi: if that is intended, run make abi-baseline and commit the new baseline" >&2
        exit 1
    fi
    current=$(mktemp)
    trap 'rm -f "$current"' EXIT
    dump "$library" "$current"
    # abidiff's status is a bit set: 1 error, 2 usage error, 4 a change, 8 an incompatible
    # change (a removed symbol). Additions alone also set 4, so the changes are counted again
    # with additions left out: whatever remains changes what existing callers rely on.
    status=0
    abidiff --no-added-syms "$baseline" "$current" || status=$?
    if [ $((status & 3)) -ne 0 ]; then
        echo "abi: abidiff failed (status $status)" >&2
        exit 1
    fi
    if [ $((status & 12)) -ne 0 ]; then
        echo "abi: $library is not compatible with $baseline (abidiff status $status)." >&2
        echo "abi: keep the interface, or move the major version in src/api/version.h and" \
            "regenerate the baseline with make abi-baseline" >&2
        exit 1
    fi
    added=0
    abidiff --stat "$baseline" "$current" >/dev/null || added=$?
    echo "abi: $soname compatible with $baseline$([ $added -ne 0 ] && echo ' (with additions)')"
    ;;
*)
    echo "usage: scripts/abi.sh baseline|check LIBRARY" >&2
    exit 2
    ;;
esac
