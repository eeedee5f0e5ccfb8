#!/bin/bash
# Every C++ and Objective-C++ file of the project $1 is as clang-format leaves it. A checkout is asked for its tracked files.
set -euo pipefail
cd -- "$1"
repository=(git -c safe.directory='*')
list() {
  if "${repository[@]}" rev-parse --git-dir >/dev/null 2>&1; then
    "${repository[@]}" ls-files -z -- '*.cpp' '*.mm' '*.h'
  else
    find src tests benchmarks \( -name '*.cpp' -o -name '*.mm' -o -name '*.h' \) -print0
  fi
}
[[ $(list | tr -cd '\0' | wc -c) -gt 0 ]]
list | xargs -0 clang-format --dry-run -Werror
