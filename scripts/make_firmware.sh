#!/usr/bin/env bash
# make_firmware.sh VERSION BYTES >FILE: a firmware image for the phone in software, of that many bytes and a head.
set -euo pipefail

usage() {
  echo "make_firmware.sh VERSION BYTES >FILE: VERSION of up to 31 letters, digits, \".\", \"-\" and \"_\"; BYTES from 1 to 67108864" >&2
  exit 2
}
[ $# -eq 2 ] || usage
version=$1
bytes=$2
[[ $version =~ ^[A-Za-z0-9._-]{1,31}$ && $bytes =~ ^[1-9][0-9]{0,7}$ && $bytes -le 67108864 ]] || usage

# The same version has the same bytes.
body() { yes "firmware $version" | head -c "$bytes" || true; }
printf 'PHONE-FIRMWARE 1\nversion: %s\nsize: %s\nsha256: %s\n\n' "$version" "$bytes" "$(body | sha256sum | cut -d ' ' -f 1)"
body
