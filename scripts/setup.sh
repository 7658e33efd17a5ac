#!/usr/bin/env bash
# setup.sh build|test|bench: installs the Debian packages that are missing for it; quiet when there are none.
set -euo pipefail

build=(g++ cmake ninja-build ccache pkg-config gzip curl libmicrohttpd-dev libctemplate-dev nlohmann-json3-dev
  libsimpleini-dev libpugixml-dev libcrypt-dev libssl-dev libgnutls28-dev libgumbo-dev zlib1g-dev)
test=("${build[@]}" clang g++-arm-linux-gnueabihf libclang-rt-14-dev llvm clang-format clang-tidy shellcheck
  libgtest-dev libgmock-dev imagemagick chromium openssl tcpdump)
bench=("${build[@]}" libbenchmark-dev libgtest-dev libgmock-dev wrk)

case ${1:?build, test or bench} in
  build) wanted=("${build[@]}") ;;
  test) wanted=("${test[@]}") ;;
  bench) wanted=("${bench[@]}") ;;
esac
# The browser tests run in node, wherever that came from.
if [ "$1" = test ] && ! command -v npm >/dev/null; then wanted+=(nodejs npm); fi

missing=()
for package in "${wanted[@]}"; do
  dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "These packages are missing, and only root can install them: ${missing[*]}" >&2; exit 1; }
  as_root=(sudo)
fi
echo "Installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
export DEBIAN_FRONTEND=noninteractive
if ! { "${as_root[@]}" apt-get -q update && "${as_root[@]}" apt-get -q install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
  tail -n 20 "$log" >&2
  exit 1
fi
