#!/usr/bin/env bash
# build.sh FOLDER [CMAKE OPTION...] [-- TARGET...]: configures a build folder where needed and builds in it.
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

# A folder that was configured otherwise is configured anew.
stamp="$folder/options"
wanted="${options[*]}"
mkdir -p "$folder"
if [ ! -f "$folder/build.ninja" ] || [ "$(cat "$stamp" 2>/dev/null)" != "$wanted" ]; then
  cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "${options[@]}" >"$folder.log" 2>&1 ||
    { cat "$folder.log" >&2; exit 1; }
  rm -f "$folder.log"
  echo "$wanted" >"$stamp"
fi
cmake --build "$folder" --target "${@:-all}" -- --quiet
