#!/bin/bash
# Builds the disk image: dmg.sh [BUILD_FOLDER [IDENTITY [PROFILE [CMAKE_OPTION…]]]]. It ends up in BUILD_FOLDER, which is
# build/dmg unless said otherwise. IDENTITY is the name of a Developer ID certificate, PROFILE what the account for
# notarization was stored under with "xcrun notarytool store-credentials"; without them the image is for this Mac alone.
# Options say who publishes it (-DKESTRUNE_FEED_URL=… and its like). Not yet run on a Mac; bash 3.2 has to do.
set -euo pipefail

here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
root=$(cd -- "$here/../.." && pwd)
# shellcheck source=packaging/macos/packages.sh
source "$here/packages.sh"

folder=${1:-$root/build/dmg}
identity=${2:--}
profile=${3:-}
shift $(($# < 3 ? $# : 3))

install_missing "${build[@]}"
umask 022
cmake -S "$root" -B "$folder" -G Ninja --log-level=NOTICE -DCMAKE_BUILD_TYPE=Release -DKESTRUNE_TESTS=OFF \
  "-DCMAKE_PREFIX_PATH=$(prefixes)" ${1+"$@"}
cmake --build "$folder" -j"$(processors)"

# The program with everything it loads, laid out anew each time.
cmake -E rm -rf "$folder/signed"
cmake --install "$folder" --prefix "$folder/signed"
app=$folder/signed/Kestrune.app
# Of the Qt that was built with, which need not be Homebrew's.
qt=$(sed -n 's/^Qt6_DIR:PATH=//p' "$folder/CMakeCache.txt")
"$qt/../../../bin/macdeployqt" "$app"
"$here/sign.sh" "$app" "$identity"

rm -f -- "$folder"/Kestrune-*.dmg
(cd -- "$folder" && cpack --config CPackConfig.cmake -G DragNDrop)
image=$(echo "$folder"/Kestrune-*.dmg)
if [[ $identity != - ]]; then
  codesign --force --sign "$identity" --timestamp "$image"
fi
if [[ -n $profile ]]; then
  xcrun notarytool submit "$image" --keychain-profile "$profile" --wait
  xcrun stapler staple "$image"
fi
say "The disk image is $image"
