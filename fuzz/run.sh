#!/bin/sh
# run.sh PROGRAM CORPUS FOLDER OPTION...: fuzzes on a copy of the corpus in FOLDER, where what breaks something is kept.
set -eu
program=$1 corpus=$2 folder=$3
shift 3
rm -rf "$folder/corpus"
mkdir -p "$folder/corpus"
cp -R "$corpus/." "$folder/corpus/"
exec "$program" -artifact_prefix="$folder/" -print_final_stats=1 "$@" "$folder/corpus"
