#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The Debian symbols file of libjsoncfgplus1 (cmake/deb/libjsoncfgplus1.symbols), from a built
# shared library: written, or with --check compared, failing on any added or missing symbol.
# A new symbol is marked with the current version, the others keep theirs: regenerate after
# changing the exports.
# Usage: scripts/deb-symbols.sh [--check] LIBRARY    (from the repository root)
set -euo pipefail
check=0
if [ "${1:-}" = "--check" ]; then
    check=1
    shift
fi
library=$(realpath "$1")
committed=cmake/deb/libjsoncfgplus1.symbols
version=$(sed -n 's/^#define JSONCFGPLUS_VERSION_STRING "\(.*\)"$/\1/p' src/api/version.h)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# dpkg-gensymbols reads the package's control data from a source tree.
mkdir -p "$work/debian"
printf 'Source: jsoncfgplus\n\nPackage: libjsoncfgplus1\nArchitecture: any\n' >"$work/debian/control"
(cd "$work" && dpkg-gensymbols -q -plibjsoncfgplus1 -v"$version" -e"$library" -O"$work/raw")
# Packages built against the -dev package take their minimum version from this file.
{
    head -n 1 "$work/raw"
    echo "* Build-Depends-Package: libjsoncfgplus-dev"
    tail -n +2 "$work/raw" | LC_ALL=C sort
} >"$work/all-new"
# A symbol keeps the version it first appeared in, so a package built against the library needs
# only the release that brought the symbols it uses.
touch "$work/previous"
[ -f "$committed" ] && cp "$committed" "$work/previous"
awk 'NR == FNR { if ($1 ~ /@/) first[$1] = $2; next }
     $1 ~ /@/ && ($1 in first) { print " " $1 " " first[$1]; next }
     { print }' "$work/previous" "$work/all-new" >"$work/symbols"

if [ "$check" -eq 0 ]; then
    cp "$work/symbols" "$committed"
    echo "deb-symbols: $committed written ($(($(wc -l <"$committed") - 2)) symbols)"
elif ! diff -u "$committed" "$work/symbols"; then
    echo "deb-symbols: $committed differs from $library; regenerate it with make deb-symbols" >&2
    exit 1
fi
