#!/bin/sh
# stage_rootfs.sh SOURCE TARGET: copies the delivered tree and puts NAME.gz beside each text file of htdocs.
set -eu
source=$1 target=$2
rm -rf "$target.new"
cp -a "$source" "$target.new"
rm -f "$target.new/CMakeLists.txt"
find "$target.new/phone/www/htdocs" -type f \( -name '*.css' -o -name '*.js' -o -name '*.svg' -o -name '*.ico' \) \
  -exec gzip -9 -n -k {} +
rm -rf "$target"
mv "$target.new" "$target"
