#!/bin/bash
# Holds every source file of src/ to .clang-tidy, with the compile commands of the build folder in $1.
# Run in the project's folder.
set -euo pipefail
find src -name '*.cpp' -print0 | xargs -0 -n 1 -P "$(nproc)" clang-tidy -p "$1" --quiet
