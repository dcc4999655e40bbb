#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs the Debian packages the build and the tests need, and nothing when all are present.
# Usage: scripts/install-deps.sh [m32|armhf|deb|fuzz|docs|abi|coverage]
#   m32    adds the i386 libraries of the 32-bit check build
#   armhf  adds the ARM cross compiler, the armhf libraries and qemu to run the tests under
#   deb    adds what building and checking the Debian packages needs
#   fuzz   adds clang and its libFuzzer runtime
#   docs   adds Doxygen for the API reference
#   abi    adds libabigail's abidw and abidiff (the ABI baseline and its check)
#   coverage adds gcovr (line coverage of the library)
set -u

packages=(cmake make g++ pkg-config libjson-c-dev libhiredis-dev libtinyxml2-dev
          libgtest-dev googletest libbenchmark-dev redis-server python3-jsonschema patch)
if [ "${1:-}" = "m32" ]; then
    # The versioned multilib package: the unversioned one conflicts with the ARM cross compiler.
    packages+=(g++-12-multilib libjson-c-dev:i386 libhiredis-dev:i386 libtinyxml2-dev:i386)
fi
foreign=""
[ "${1:-}" = "m32" ] && foreign=i386
if [ "${1:-}" = "armhf" ]; then
    foreign=armhf
    # GoogleTest comes as source (googletest) and is built for the target by the cross build.
    packages+=(g++-arm-linux-gnueabihf qemu-user libjson-c-dev:armhf libhiredis-dev:armhf
               libtinyxml2-dev:armhf libstdc++6:armhf)
fi
if [ "${1:-}" = "deb" ]; then
    packages+=(dpkg-dev file lintian)
fi
if [ "${1:-}" = "fuzz" ]; then
    packages+=(clang libclang-rt-dev)
fi
if [ "${1:-}" = "docs" ]; then
    packages+=(doxygen)
fi
if [ "${1:-}" = "abi" ]; then
    packages+=(abigail-tools)
fi
if [ "${1:-}" = "coverage" ]; then
    packages+=(gcovr)
fi

native=$(dpkg --print-architecture)
installed() {
    # With i386 libraries beside the host's, a bare name would match both: ask for the host's
    # own, falling back to the bare name for architecture-independent packages.
    local query="$1"
    [[ "$query" == *:* ]] || query="$query:$native"
    local status
    status=$(dpkg-query -W -f='${Status}' "$query" 2>/dev/null ||
             dpkg-query -W -f='${Status}' "$1" 2>/dev/null || true)
    [ "$status" = "install ok installed" ]
}

missing=()
for p in "${packages[@]}"; do
    installed "$p" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "install-deps: installing ${missing[*]}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
if [ -n "$foreign" ] && ! dpkg --print-foreign-architectures | grep -qx "$foreign"; then
    $sudo dpkg --add-architecture "$foreign"
fi
# A package index that cannot be refreshed is not fatal: the cached one may still do.
$sudo apt-get update -q || echo "install-deps: apt-get update failed, using the cached index"
# Another build may be installing at the same time: wait for its dpkg lock rather than fail.
$sudo apt-get install -y -q --no-install-recommends -o DPkg::Lock::Timeout=600 "${missing[@]}"
