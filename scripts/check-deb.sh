#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Checks the Debian packages that `make deb` built: each one's control data and contents as
# dpkg-deb reads them, the symbols file against the library, then lintian, which must report
# no error and no warning (information tags shown too; overrides carry their reasons).
# Usage: scripts/check-deb.sh BUILD_DIR
set -euo pipefail
dir=$1
arch=$(dpkg --print-architecture)
failures=0
# The packages and the library's file are named after the release the header states.
version=$(sed -n 's/^#define JSONCFGPLUS_VERSION_STRING "\(.*\)"$/\1/p' src/api/version.h)
version_re=${version//./\\.}

fail() {
    echo "check-deb: $*" >&2
    failures=$((failures + 1))
}

# package name, then one extended regular expression per line that must match its listing
check_package() {
    local name=$1 deb info contents
    shift
    deb=$(ls "$dir"/"${name}"_"${version}"-*_"$arch".deb 2>/dev/null | head -n 1 || true)
    if [ -z "$deb" ]; then
        fail "no package $name in $dir"
        return
    fi
    info=$(dpkg-deb --info "$deb")
    contents=$(dpkg-deb --contents "$deb")
    for pattern in "$@"; do
        grep -Eq -- "$pattern" <<<"$info"$'\n'"$contents" || fail "$name: nothing matches '$pattern'"
    done
    echo "check-deb: $(basename "$deb") checked"
}

multiarch=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
lib="usr/lib/$multiarch"
check_package libjsoncfgplus1 \
    "^ Package: libjsoncfgplus1$" "^ Section: libs$" \
    "^ Depends: .*libjson-c[0-9]" "^ Depends: .*libhiredis[0-9.]+" "^ Depends: .*libtinyxml2-[0-9]+" \
    "^ +[0-9]+ bytes, +[0-9]+ lines +shlibs" "^ +[0-9]+ bytes, +[0-9]+ lines +triggers" \
    "^ +[0-9]+ bytes, +[0-9]+ lines +symbols" \
    " \./$lib/libjsoncfgplus\.so\.$version_re$" " \./$lib/libjsoncfgplus\.so\.1 -> libjsoncfgplus\.so\.$version_re$" \
    " \./usr/share/doc/libjsoncfgplus1/copyright$"
check_package libjsoncfgplus-dev \
    "^ Package: libjsoncfgplus-dev$" "^ Section: libdevel$" \
    "^ Depends: libjsoncfgplus1 \(= [0-9.]+-1\), libjson-c-dev, libhiredis-dev, libtinyxml2-dev" \
    " \./usr/include/jsoncfgplus/api/jsoncfgplus\.h$" " \./$lib/libjsoncfgplus\.a$" \
    " \./$lib/libjsoncfgplus\.so -> libjsoncfgplus\.so\.1$" " \./$lib/pkgconfig/jsoncfgplus\.pc$" \
    " \./$lib/cmake/jsoncfgplus/jsoncfgplusConfig\.cmake$"
check_package jsoncfgplus \
    "^ Package: jsoncfgplus$" "^ Section: utils$" \
    "^ Depends: .*libjson-c[0-9]" "^ Depends: .*libhiredis[0-9.]+" "^ Depends: .*libtinyxml2-[0-9]+" \
    " \./usr/bin/jsoncfgplus$" " \./usr/share/man/man1/jsoncfgplus\.1\.gz$"

# The runtime package must hold no development file, nor the tool's package a library.
dpkg-deb --contents "$dir"/libjsoncfgplus1_*.deb | grep -Eq '\.(h|a|pc)$|\.so$|cmake' &&
    fail "libjsoncfgplus1 holds development files"
dpkg-deb --contents "$dir"/jsoncfgplus_*.deb | grep -q '\.so' &&
    fail "jsoncfgplus holds a library"

# The trigger registers the library: no maintainer script may call ldconfig again.
dpkg-deb --info "$dir"/libjsoncfgplus1_*.deb | grep -Eq ' (postinst|postrm)$' &&
    fail "libjsoncfgplus1 has maintainer scripts"
scripts/deb-symbols.sh --check "$dir/libjsoncfgplus.so.$version" || fail "the symbols file is stale"

if ! lintian --display-info --fail-on error,warning "$dir"/*.deb; then
    fail "lintian reports errors or warnings"
fi
if [ "$failures" -ne 0 ]; then
    echo "check-deb: $failures failure(s)" >&2
    exit 1
fi
echo "check-deb: three packages, no lintian error or warning"
