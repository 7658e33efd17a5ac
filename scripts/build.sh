#!/usr/bin/env bash
# build.sh FOLDER [CMAKE OPTION...] [-- TARGET...]: configures a build folder and builds in it.
set -euo pipefail
cd "$(dirname "$0")/.."

# What one checkout compiled serves another.
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1

folder=$1
shift
options=()
while [ $# -gt 0 ] && [ "$1" != -- ]; do
  options+=("$1")
  shift
done
[ $# -eq 0 ] || shift

# Always configured anew: packages may have come since the last time.
mkdir -p "$folder"
cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "${options[@]}" >"$folder.log" 2>&1 ||
  { cat "$folder.log" >&2; exit 1; }
rm -f "$folder.log"
cmake --build "$folder" --target "${@:-all}" -- --quiet
