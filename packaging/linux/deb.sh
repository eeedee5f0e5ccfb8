#!/bin/bash
# Builds the Debian package: deb.sh [BUILD_FOLDER [VERSION [CMAKE_OPTION…]]]. It ends up in BUILD_FOLDER, which is
# build/deb unless said otherwise, with the compiler and linker settings that Debian hardens its packages with. An empty
# VERSION is the project's own; options say who publishes the package (-DKESTRUNE_FEED_URL=… and its like).
set -euo pipefail

here=$(cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")" && pwd)
root=$(cd -- "$here/../.." && pwd)
# shellcheck source=packaging/linux/packages.sh
source "$here/packages.sh"

folder=${1:-$root/build/deb}
version=${2:-}

flags() {
  DEB_BUILD_MAINT_OPTIONS=hardening=+all DEB_CXXFLAGS_MAINT_STRIP='-g -O2' dpkg-buildflags --get "$1"
}

install_missing "${build[@]}" "${package[@]}"
umask 022
cmake -S "$root" -B "$folder" -G Ninja --log-level=NOTICE -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
  -DKESTRUNE_TESTS=OFF "-DCMAKE_CXX_FLAGS=$(flags CPPFLAGS) $(flags CXXFLAGS)" \
  "-DCMAKE_EXE_LINKER_FLAGS=$(flags LDFLAGS)" "${@:3}"
cmake --build "$folder" -j"$(nproc)"
(cd -- "$folder" && cpack --config CPackConfig.cmake -G DEB ${version:+-D "CPACK_PACKAGE_VERSION=$version"})
