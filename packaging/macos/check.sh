#!/bin/bash
# ./check on a Mac: installs what is missing, builds everything and runs every test that this system can run. Ends with
# ctest's summary; its result is the exit code. Not yet run on a Mac; bash 3.2 has to do.
set -euo pipefail

here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=packaging/macos/packages.sh
source "$here/packages.sh"

if (($# != 0)); then
  say "Usage: ./check (--deep belongs to Linux)"
  exit 2
fi
install_missing "${build[@]}" "${test[@]}"
cd -- "$here/../.."
cmake --preset release -DKESTRUNE_TESTS=ON "-DCMAKE_PREFIX_PATH=$(prefixes)"
cmake --build --preset release -j"$(processors)"
ctest --preset release --no-tests=error --timeout 120 -j"$(processors)"
