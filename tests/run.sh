#!/usr/bin/env bash
# run.sh: what ./run prints for all addresses, over TLS too, leads to the login and to the phone in software.
set -euo pipefail
cd "$(dirname "$0")/.."
PHONE_WEB_RUN=$(mktemp -d)
export PHONE_WEB_RUN
./run 0.0.0.0:0 >"$PHONE_WEB_RUN/printed" &
run=$!
trap 'kill "$run"; wait "$run" || true; rm -rf "$PHONE_WEB_RUN"' EXIT
until grep -q '^Ctrl-C' "$PHONE_WEB_RUN/printed"; do
  kill -0 "$run"
  sleep 0.1
done
pages=$(sed -n 's/^  The phone.s web interface: *//p' "$PHONE_WEB_RUN/printed")
curl -fsSL "$pages" | grep -q 'name="pwd"'
curl -fsS "${pages}simulator/state" | grep -q '"rebootSeconds":4'
grep -q '^ *https://127' "$PHONE_WEB_RUN/printed"
grep -Eo 'https?://[^/]*/$' "$PHONE_WEB_RUN/printed" | while read -r address; do curl -fsSk -o /dev/null "$address"; done
