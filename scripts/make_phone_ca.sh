#!/usr/bin/env bash
# make_phone_ca.sh: makes the authority that a phone is delivered with. Run by hand; the certificate is kept in the
# repository. Its key is thrown away at once: nobody can issue anything in its name.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=rootfs/phone/factory/certs/phoneca
mkdir -p "$folder"
openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -noenc -keyout /dev/null -days 36500 \
  -subj "/O=Desk phone/CN=Desk phone root CA" -addext "keyUsage=critical,keyCertSign,cRLSign" \
  -out "$folder/phone-root-ca.pem" 2>/dev/null
openssl x509 -in "$folder/phone-root-ca.pem" -noout -subject -enddate -fingerprint -sha256
