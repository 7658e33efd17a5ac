#!/bin/sh
# stage_rootfs.sh SOURCE TARGET: copies the delivered tree, puts the phone's rings, contact photos and wallpapers where
# browsers find them, with a list of the rings, and NAME.gz beside each text file of htdocs.
set -eu
source=$1 target=$2
rm -rf "$target.new"
cp -a "$source" "$target.new"
rm -f "$target.new/CMakeLists.txt"

htdocs=$target.new/phone/www/htdocs
rings=$htdocs/media/sound
mkdir -p "$rings"
cp "$target.new"/phone/resource/sysdata/sound/*.wav "$rings"
photos=$htdocs/media/contact-image
mkdir -p "$photos"
cp "$target.new"/phone/resource/sysdata/contact-image/*.png "$target.new"/phone/resource/sysdata/default_contact_image.png "$photos"
wallpapers=$htdocs/media/wallpaper
mkdir -p "$wallpapers"
cp "$target.new"/phone/resource/sysdata/wallpaper/*.png "$target.new"/phone/resource/sysdata/Default.jpg "$wallpapers"
(cd "$rings" && printf '"%s"\n' *.wav | paste -s -d , - | sed 's/.*/[&]/' >list.json)

find "$htdocs" -type f \( -name '*.css' -o -name '*.js' -o -name '*.svg' -o -name '*.ico' \) -exec gzip -9 -n -k {} +
rm -rf "$target"
mv "$target.new" "$target"
