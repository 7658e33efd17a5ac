#!/bin/sh
# exports.sh MODULE PAGES_CONF: the module shows exactly the factories that the page list names, and the filter's.
set -eu
found=$(nm -D --defined-only "$1" | awk '{print $3}' | LC_ALL=C sort)
wanted=$({ echo createLoginListener; sed -n 's/^[^#]*= *\(create[A-Za-z0-9]*\) *$/\1/p' "$2"; } | LC_ALL=C sort -u)
[ "$found" = "$wanted" ] || { printf 'exported:\n%s\n\nlisted:\n%s\n' "$found" "$wanted"; exit 1; }
