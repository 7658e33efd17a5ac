#!/bin/sh
# imageScale.sh SOURCE WIDTH HEIGHT DESTINATION LIMIT: fills WIDTH x HEIGHT pixels with the middle of a bitmap, JPEG or
# PNG picture of at most LIMIT bytes. Leaves its result in /tmp/imageScale.out:
#   1  DESTINATION is the new picture, in the format that its suffix names
#   2  the picture has too many pixels
#   0  anything else; DESTINATION is as it was
# Paths are absolute. Pictures go through standard input and output, so that no part of a file name means anything to
# the programs that read and write them.
set -uf
umask 022
tmp=${PHONE_ROOT:-}/tmp
max_pixels=16777216
max_side=8192
export LC_ALL=C MAGICK_TEMPORARY_PATH="$tmp" TMPDIR="$tmp"
# shellcheck disable=SC3045  # every shell that a phone may have knows it
ulimit -t 20

new=
finish() {
  [ -z "$new" ] || rm -f -- "$new"
  rm -f "$tmp/imageScale.out.new"
  echo "$1" >"$tmp/imageScale.out.new" && mv -f "$tmp/imageScale.out.new" "$tmp/imageScale.out"
  exit "$((1 - ($1 == 1)))"
}

# True for a decimal number from 1 to $2.
is_number() {
  case $1 in '' | 0* | *[!0-9]* | ??????????*) return 1 ;; esac
  [ "$1" -le "$2" ]
}

limited() {
  program=$1
  shift
  "$program" -limit memory 256MiB -limit map 256MiB -limit disk 0 -limit thread 1 -limit time 20 "$@"
}

[ $# -eq 5 ] || finish 0
source=$1 width=$2 height=$3 destination=$4 limit=$5
case $source in /*) ;; *) finish 0 ;; esac
case $destination in /*) ;; *) finish 0 ;; esac
is_number "$width" 4096 || finish 0
is_number "$height" 4096 || finish 0
is_number "$limit" 999999999 || finish 0
[ -f "$source" ] || finish 0
[ ! -d "$destination" ] || finish 0
[ "$(wc -c <"$source")" -le "$limit" ] || finish 0

case $(head -c 8 <"$source" | od -An -tx1 | tr -d ' \n') in
  424d*) format=bmp ;;
  ffd8*) format=jpeg ;;
  89504e470d0a1a0a) format=png ;;
  *) finish 0 ;;
esac
case $destination in
  *.[bB][mM][pP]) target=bmp3 ;;
  *.[jJ][pP][gG] | *.[jJ][pP][eE][gG]) target=jpeg ;;
  *.[pP][nN][gG]) target=png ;;
  *) target=$format ;;
esac

# Width and height from the head of the file: nothing is decoded before it is known to fit. A PNG tells them at a fixed
# place; the others are asked for by a program that refuses what is far too large in words of its own.
resolution() {
  if [ "$format" = png ]; then
    od -An -v -tu1 -j16 -N8 "$source" 2>/dev/null | {
      read -r a b c d e f g h
      echo "$((a << 24 | b << 16 | c << 8 | d)) $((e << 24 | f << 16 | g << 8 | h))"
    }
  else
    limited identify -ping -format '%w %h' "$format:-[0]" <"$source" 2>&1
  fi
}
size=$(resolution)
case $size in *'exceeds limit'* | *'Maximum supported image dimension'*) finish 2 ;; esac
columns=${size%% *} rows=${size#* }
rows=${rows%%[!0-9]*}
is_number "$columns" 999999999 || finish 0
is_number "$rows" 999999999 || finish 0
[ "$columns" -le "$max_side" ] || finish 2
[ "$rows" -le "$max_side" ] || finish 2
[ $((columns * rows)) -le "$max_pixels" ] || finish 2

new=$destination.new
rm -f -- "$new"
set -C
limited convert "$format:-[0]" -auto-orient -thumbnail "${width}x$height^" -gravity center -extent "${width}x$height" \
  -background white -alpha remove -alpha off -depth 8 -quality 88 "$target:-" <"$source" >"$new" 2>/dev/null || finish 0
set +C
[ -s "$new" ] || finish 0
mv -f -- "$new" "$destination" || finish 0
finish 1
