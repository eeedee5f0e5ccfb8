#!/bin/bash
# Holds every source file of src/ to .clang-tidy, with the compile commands of the build folder in $1.
# Run in the project's folder. Clang does not know every warning of the compiler that those commands are for.
set -euo pipefail
find src -name '*.cpp' -print0 | xargs -0 -n 1 -P "$(nproc)" clang-tidy -p "$1" --quiet --extra-arg=-Wno-unknown-warning-option
