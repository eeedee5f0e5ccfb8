#!/bin/bash
# ./run on a Mac: installs what is missing, builds Kestrune.app and opens it. Arguments go to the program.
# With --dump-menu the menu is printed here and nothing opens. Not yet run on a Mac; bash 3.2 has to do.
set -euo pipefail

here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
root=$(cd -- "$here/../.." && pwd)
# shellcheck source=packaging/macos/packages.sh
source "$here/packages.sh"

build_program() {
  # The tests stay part of a build folder that has them already.
  local tests=OFF
  if [[ -f $root/build/release/CMakeCache.txt ]] && grep -q '^KESTRUNE_TESTS:BOOL=ON' "$root/build/release/CMakeCache.txt"; then
    tests=ON
  fi
  cd -- "$root"
  cmake --preset release "-DKESTRUNE_TESTS=$tests" "-DCMAKE_PREFIX_PATH=$(prefixes)" --log-level=NOTICE
  cmake --build --preset release --target kestrune -j"$(processors)"
  # Notifications and start at login need a signature; one without an identity is enough on the Mac that made it.
  "$here/sign.sh" "$app" -
}

install_missing "${build[@]}"
app=$root/build/release/bin/Kestrune.app
(build_program) >&2

if [[ " $* " == *" --dump-menu "* ]]; then
  exec "$app/Contents/MacOS/Kestrune" ${1+"$@"}
fi
# Through Launch Services, so that permissions are asked for in the program's own name and not in the terminal's, and a
# copy that runs already comes forward. Returns when the program has ended.
exec open -W "$app" --args ${1+"$@"}
