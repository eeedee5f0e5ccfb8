#!/bin/bash
# Signs Kestrune.app: sign.sh APP [IDENTITY]. Without an identity, or with -, for this Mac alone; with the name of a
# Developer ID certificate for everybody, with the hardened runtime and a time stamp, as notarization wants it.
#
# From the inside out, each piece by itself: codesign(1) advises against --deep for signing, and it would give the
# program's entitlements to the updater's helpers. What those carry of their own is kept.
set -euo pipefail

here=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)
app=${1:?the bundle to sign}
identity=${2:--}

for_everybody() {
  [[ $identity != - ]]
}

# sign OPTION... PATH. Libraries without a team would not load into a program with the hardened runtime.
sign() {
  if for_everybody; then
    codesign --force --sign "$identity" --options runtime --timestamp "$@"
  else
    codesign --force --sign - "$@"
  fi
}

# Deeper places come first: services and helpers before the framework that holds them, libraries before the program.
find "$app/Contents" -depth \
  \( -type d \( -name '*.xpc' -o -name '*.app' -o -name '*.framework' \) \
  -o -type f \( -name '*.dylib' -o -name '*.so' -o -name Autoupdate \) \) -print0 |
  while IFS= read -r -d '' piece; do
    sign --preserve-metadata=entitlements "$piece"
  done
sign --entitlements "$here/Kestrune.entitlements" "$app"
codesign --verify --strict --deep "$app"
