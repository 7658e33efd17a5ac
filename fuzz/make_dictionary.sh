#!/bin/sh
# make_dictionary.sh OUTPUT SOURCE...: the names in the pages' sources as a dictionary: as they are, as a form's field.
set -eu
output=$1
shift
{
  printf '"?"\n"@var"\n"&"\n"\\x0a"\n"q=load"\n"q=write"\n"=********"\n"%%00"\n"%%0d%%0a"\n"..%%2f"\n"=-1"\n"=99999999999"\n'
  grep -oh '"[A-Za-z_][A-Za-z0-9_-]\{1,47\}"' "$@" | LC_ALL=C sort -u | sed 's/^"\(.*\)"$/"\1"\n"\&\1="/'
} >"$output"
