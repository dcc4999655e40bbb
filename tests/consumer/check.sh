#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs a built tree into a temporary prefix, moves it (the installed files must not depend
# on where they were put), then builds and runs the consumer programs against it, once through
# pkg-config and once through find_package(jsoncfgplus), the static library from a C-only
# project too, and a daemon with a MACAddr of its own whose member the library must not call.
# Usage: tests/consumer/check.sh BUILD_DIR
set -euo pipefail
build=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/staged" >/dev/null
mv "$work/staged" "$work/prefix"
prefix="$work/prefix"
pcdir=$(dirname "$(find "$prefix" -name jsoncfgplus.pc)")
libdir=$(dirname "$pcdir")

echo "consumer: pkg-config from $pcdir"
export PKG_CONFIG_PATH="$pcdir"
cc -std=c11 -Wall -Werror "$here/consumer.c" -o "$work/pc_c" \
    -DJCP_PACKAGE_VERSION="\"$(pkg-config --modversion jsoncfgplus)\"" \
    $(pkg-config --cflags --libs jsoncfgplus)
c++ -std=c++17 -Wall -Werror "$here/consumer.cpp" -o "$work/pc_cpp" \
    $(pkg-config --cflags --libs jsoncfgplus)
LD_LIBRARY_PATH="$libdir" "$work/pc_c" >/dev/null
LD_LIBRARY_PATH="$libdir" "$work/pc_cpp"
c++ -std=c++17 -Wall -Werror -rdynamic "$here/interposer.cpp" -o "$work/interposer" \
    $(pkg-config --cflags --libs jsoncfgplus)
LD_LIBRARY_PATH="$libdir" "$work/interposer" "$here/../../examples/ap-config.json"

# A firmware with headers of the same names as ours on its own search path, ahead of ours: its
# "platform/platform.h" is the one it gets, and our headers reach only each other. The fixed
# records of every kind are decoded from the example, from C, as the package installs them.
cc -std=c11 -Wall -Werror -I"$here/firmware" -include platform/platform.h \
    "$here/../c_records_test.c" -o "$work/records_c" $(pkg-config --cflags --libs jsoncfgplus)
(cd "$here/../.." && LD_LIBRARY_PATH="$libdir" "$work/records_c" >/dev/null)
echo "consumer: every record kind decoded beside a firmware's own platform/platform.h"

echo "consumer: find_package(jsoncfgplus) from $prefix"
unset PKG_CONFIG_PATH
cmake -S "$here" -B "$work/cm" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/cm" >/dev/null
"$work/cm/consumer_c" >/dev/null
"$work/cm/consumer_cpp"

echo "consumer: the static library from a C-only project"
cmake -S "$here/c-only" -B "$work/c-only" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/c-only" >/dev/null
"$work/c-only/consumer_c_static" >/dev/null
echo "consumer: the C and C++ programs built and ran, through pkg-config and find_package," \
    "the static library from C alone, the library's calls its own"
