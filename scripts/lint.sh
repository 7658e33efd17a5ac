#!/usr/bin/env bash
# lint.sh BUILD_FOLDER: format, clang-tidy over what is delivered, shellcheck, and the rules of the house.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
failed=0
refuse() {
  printf '%s\n%s\n' "$1" "$2" >&2
  failed=1
}

sources=$(git ls-files -co --exclude-standard '*.h' '*.cpp')
# shellcheck disable=SC2086
clang-format --dry-run -Werror $sources || failed=1

# shellcheck disable=SC2046
shellcheck $(git ls-files -co --exclude-standard '*.sh') run test .ci/run || failed=1

if found=$(git grep -nE --untracked '#include "\.\./' -- '*.h' '*.cpp'); then
  refuse 'Headers are included as "folder/file.h":' "$found"
fi
if found=$(git grep -nE --untracked '\b(atoi|atol|strcpy|strcat|sprintf)\(' -- '*.h' '*.cpp'); then
  refuse 'Parse with parseInt(), copy into std::string:' "$found"
fi
printf '%s\n' "$sources" | grep -E '^(framework|servlet|host|simulator)/.*\.cpp$' |
  xargs -P "$(nproc)" -n 4 clang-tidy -p "$build" --quiet 2>/dev/null || failed=1

exit "$failed"
