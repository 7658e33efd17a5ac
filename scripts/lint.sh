#!/usr/bin/env bash
# lint.sh BUILD_FOLDER: format, clang-tidy over what is delivered, scripts, styles and shell, and the rules of the house.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
failed=0
refuse() {
  printf '%s\n%s\n' "$1" "$2" >&2
  failed=1
}
files() { git ls-files -co --exclude-standard "$@"; }

# --- Tools

mapfile -t sources < <(files '*.h' '*.cpp')
clang-format --dry-run -Werror "${sources[@]}" || failed=1

mapfile -t shells < <(files '*.sh')
shellcheck "${shells[@]}" run test .ci/run || failed=1

mapfile -t scripts < <(files '*.js' '*.mjs')
scripts/lint/node_modules/.bin/eslint --config scripts/lint/eslint.config.mjs --max-warnings 0 "${scripts[@]}" || failed=1

mapfile -t styles < <(files '*.css')
scripts/lint/node_modules/.bin/stylelint --config scripts/lint/stylelint.config.mjs "${styles[@]}" || failed=1

# It counts what it found in system headers, and says nothing more of it; everything else it says is shown.
tidy_counts='^[0-9]+ warnings? (and [0-9]+ errors? )?generated\.$'
printf '%s\n' "${sources[@]}" | grep -E '^(framework|dsskey|servlet|template|host|simulator)/.*\.cpp$' |
  xargs -P "$(nproc)" -n 4 clang-tidy -p "$build" --quiet 2> >(grep -vE "$tidy_counts" >&2) || failed=1

# --- Rules of the house

if found=$(git grep -nE --untracked '#include "\.\./' -- '*.h' '*.cpp'); then
  refuse 'Headers are included as "folder/file.h":' "$found"
fi
if found=$(git grep -nE --untracked '\b(atoi|atol|strcpy|strcat|sprintf)\(' -- '*.h' '*.cpp'); then
  refuse 'Parse with parseInt(), copy into std::string:' "$found"
fi
if found=$(git grep -nE --untracked '\b(osShell|popen|shellQuote)\b|\b(system|fork|posix_spawnp?|exec[lv][a-z]*)\(' \
  -- servlet framework dsskey ':!framework/shell_command.*'); then
  refuse 'Run programs as ShellCommand values:' "$found"
fi

# Files that may be longer, each for a reason.
long_files=(
  servlet/account/account_adv_servlet.cpp          # a table of the page's keys, a line each
  servlet/features/features_general_servlet.cpp    # the same
  tests/host/server_test.cpp                       # rows of requests
)
# longer_than LINES FILE...: the files that have more lines, but for those above.
longer_than() {
  local limit=$1 file lines
  shift
  for file in "$@"; do
    lines=$(wc -l <"$file")
    [ "$lines" -gt "$limit" ] && ! printf '%s\n' "${long_files[@]}" | grep -qxF "$file" && echo "$file: $lines lines, at most $limit"
  done
  return 0
}
mapfile -t pages < <(files 'servlet/*.cpp')
mapfile -t programs < <(files '*.js' '*.mjs' '*.sh' ':!rootfs/phone/www/htdocs/language')
found=$(longer_than 170 "${pages[@]}"; longer_than 300 "${sources[@]}"; longer_than 400 "${programs[@]}")
[ -z "$found" ] || refuse 'Files that hold more than one thing:' "$found"

exit "$failed"
