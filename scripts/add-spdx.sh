#!/usr/bin/env bash
# Heads every tracked source file with its SPDX licence line, in the file's own comment style
# (after a shebang); files that already carry one are left alone. Run from the repository root.
# Usage: scripts/add-spdx.sh
set -euo pipefail
line="SPDX-License-Identifier: MIT"

git ls-files -z '*.h' '*.c' '*.cpp' '*.sh' '*.py' '*.cmake' 'cmake/*.cmake.in' 'cmake/*.pc.in' 'CMakeLists.txt' '*/CMakeLists.txt' \
    'Makefile' | while IFS= read -r -d '' file; do
    grep -q "$line" "$file" && continue
    case "$file" in
        *.h | *.c | *.cpp)
            # Headers a C caller reads keep C comments; the rest follow their first line.
            if head -n 1 "$file" | grep -q '^/\*'; then text="/* $line */"; else text="// $line"; fi
            ;;
        *) text="# $line" ;;
    esac
    if head -n 1 "$file" | grep -q '^#!'; then
        sed -i "1a $text" "$file"
    else
        sed -i "1i $text" "$file"
    fi
done
