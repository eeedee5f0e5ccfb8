#!/bin/bash
# Checks the macOS edition without a Mac. The project's own build files build it for both architectures with a Darwin
# target, the system's C headers from a package, and the declarations of frameworks under stubs/; the program is linked
# with nothing of its own left open; the analyzer and clang-tidy read what was compiled. README.md says more.
#
# gate.sh WORK           all of it; WORK keeps what is worth keeping for the next run
# gate.sh WORK FILE...   compiles, analyses and lints these files only, with the project's warnings
#
# Ends with 0 when all is well, 1 when not, 77 when the packages it needs cannot be had.
# KESTRUNE_GATE_STAGES and KESTRUNE_GATE_ARCHITECTURES choose fewer stages and architectures, KESTRUNE_GATE_FILES the
# sources that are compiled, analysed and linted.
set -euo pipefail
here=$(cd -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")" && pwd)
project=$(cd -- "$here/../.." && pwd)
work=$(mkdir -p "$1" && cd -- "$1" && pwd)
shift
jobs=$(nproc)
# Names in the project are relative for the compiler cache: a copy of the project finds what was compiled for this one.
export CCACHE_BASEDIR=$project CCACHE_NOHASHDIR=1
read -ra stages <<<"${KESTRUNE_GATE_STAGES:-build rest link bundle analyse tidy}"
read -ra chosen_files <<<"${KESTRUNE_GATE_FILES:-}"
read -ra architectures <<<"${KESTRUNE_GATE_ARCHITECTURES:-arm64 x86_64}"
# shellcheck source=tests/macos-gate/prepare.sh disable=SC1091
source "$here/prepare.sh"

# summary STAGE SENTENCE: one line a stage, with the seconds it took.
summary() {
  printf '%-16s %s, %d s\n' "$1:" "$2" $((SECONDS - stage_began))
  stage_began=$SECONDS
}

stage_failed() { # stage
  echo "FAILED: macOS gate: $1"
  return 1
}

# A log that stays out of sight unless the command fails.
quietly() { # log command...
  local log=$1
  shift
  "$@" >"$log" 2>&1 && return
  grep -vE '^\[[0-9]+/[0-9]+\]' "$log" | grep -E -A6 '([Ee]rror:|CMake Error|FAILED)' | head -n 80 || tail -n 40 -- "$log"
  return 1
}

compile_commands() { # architecture
  python3 -c 'import json, sys; print("\n".join(sorted({e["file"] for e in json.load(open(sys.argv[1]))})))' \
    "$work/$1/compile_commands.json"
}

# A build folder is kept while what it was made with is the same. Build files and sources are ninja's business.
configure() { # architecture
  local key
  key=$({ system_flags "$1" && declare -f configure && cat -- "$here/cmake/darwin.cmake"; } | sha256sum)
  [[ -f $work/$1/build.ninja && $key == "$(cat -- "$work/$1.key" 2>/dev/null)" ]] && return
  rm -rf -- "${work:?}/$1"
  system_flags "$1" >"$work/flags.$1"
  quietly "$work/configure.$1.log" cmake -S "$project" -B "$work/$1" -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE="$here/cmake/darwin.cmake" -DCMAKE_PROJECT_INCLUDE="$here/cmake/stand-ins.cmake" \
    -DKESTRUNE_GATE_WORK="$work" -DKESTRUNE_GATE_ARCHITECTURE="$1" -DKESTRUNE_GATE_LLVM="$llvm" \
    -DQt6_DIR="/usr/lib/$multiarch/cmake/Qt6" -DIntl_INCLUDE_DIR="$work/sdk/opt/include" \
    -DIntl_LIBRARY="$work/sdk/opt/lib/libintl.tbd" -DKESTRUNE_SPARKLE="$work/sdk/Sparkle" \
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DKESTRUNE_TESTS=OFF || return
  echo "$key" >"$work/$1.key"
}

build() { # architecture
  configure "$1" || stage_failed configure || return
  if ! quietly "$work/build.$1.log" ninja -C "$work/$1" -j"$jobs" "${chosen_files[@]/%/^}"; then
    if grep -q '^CMake Error' "$work/build.$1.log"; then
      stage_failed configure
    elif grep -qE '^ld64\.lld(-[0-9]+)?: error' "$work/build.$1.log"; then
      stage_failed link
    elif grep -q 'FAILED: .*/facts/' "$work/build.$1.log"; then
      stage_failed facts
    else
      stage_failed compile
    fi
    return 1
  fi
  if ((${#chosen_files[@]})); then
    summary "build $1" "${#chosen_files[@]} files compiled"
  else
    summary "build $1" "$(compile_commands "$1" | wc -l) files compiled and the program linked"
  fi
}

# Sources of the macOS program that this configuration leaves out, such as the one for a build without an updater.
build_rest() {
  local -a rest
  mapfile -t rest < <(comm -23 <(find "$project/src" -path "$project/src/platform/linux" -prune -o \
    \( -name '*.cpp' -o -name '*.mm' \) -print | sort) <(compile_commands "${architectures[0]}" | sort))
  ((${#rest[@]} == 0)) || check_files "${rest[@]}"
  summary "other sources" "${#rest[@]} files that this configuration leaves out"
}

# Strict link of everything, whether the program uses it or not: no name at all may stay open. What may be used is listed
# in tbd/, in the package's list of the system library, and in the lists of what Qt and the C++ library export.
link_all() { # architecture
  local -a archives lists
  mapfile -t archives < <(find "$work/$1" -name 'libkestrune_*.a')
  mapfile -t lists < <(find -L "$work/sdk" -name '*.tbd' | sort)
  quietly "$work/link.$1.log" ld64.lld-$llvm -arch "$1" -platform_version macos "$oldest" "$oldest" -syslibroot "$work/sdk" \
    -dylib -all_load -demangle --error-limit=0 -o "$work/all.$1" "${archives[@]}" "${lists[@]}" || return
  summary "link $1" "${#archives[@]} libraries linked whole, no name left open"
}

# The bundle as cmake --install lays it out.
bundle() { # architecture
  rm -rf -- "$work/bundle"
  quietly "$work/install.log" cmake --install "$work/$1" --prefix "$work/bundle" || return
  summary "bundle" "$(find "$work/bundle" -type f | wc -l) files installed"
}

inspect() { # stage
  quietly "$work/$1.log" python3 -B "$here/inspect_sources.py" "$1" "$work/${architectures[0]}" "$work/inspected" \
    "$llvm" "$jobs" "${chosen_files[@]}" || return
  summary "$1" "$(tail -n 1 "$work/$1.log")"
}

whole() {
  local stage architecture begun=$SECONDS lock
  # One at a time in this folder; a second one waits.
  exec {lock}>"$work/.whole"
  flock "$lock"
  stage_began=$SECONDS
  for stage in "${stages[@]}"; do
    case $stage in
      build) for architecture in "${architectures[@]}"; do build "$architecture" || return; done ;;
      link) for architecture in "${architectures[@]}"; do link_all "$architecture" || stage_failed link || return; done ;;
      rest) build_rest || stage_failed compile || return ;;
      bundle) bundle "${architectures[0]}" || stage_failed bundle || return ;;
      analyse | tidy) inspect "$stage" || stage_failed "$stage" || return ;;
    esac
  done
  echo "macOS gate passed: $(compile_commands "${architectures[0]}" | wc -l) files, ${architectures[*]}, $((SECONDS - begun)) s"
}

# Some files alone, with the warnings of the project.
file_command() { # architecture file
  local language=
  [[ $2 == *.mm ]] && language='-x objective-c++ -fobjc-arc'
  echo "/usr/bin/clang++-$llvm $(system_flags "$1") -std=c++20 -O1 -Wall -Wextra -Wpedantic -Wshadow -Wconversion" \
    "-Wsign-conversion -Wold-style-cast -Woverloaded-virtual -Wnon-virtual-dtor -Wcast-align -Wformat=2" \
    "-Wimplicit-fallthrough -Wextra-semi -DKESTRUNE_VERSION=\\\"2.1.0\\\" -DQT_NO_KEYWORDS -I$project/src -I$project" \
    "-F$work/sdk/Sparkle -isystem $work/sdk/opt/include -isystem $qt_headers" \
    "$(printf -- "-isystem $qt_headers/%s " QtCore QtGui QtWidgets QtSvg) $language ${EXTRA_FLAGS:-} -c $2"
}

check_files() { # file...
  local folder file architecture failed=0
  folder=$(mktemp -d "$work/single.XXXXXX")
  for architecture in arm64 x86_64; do
    for file in "$@"; do
      printf '%s -Werror -o %s/out.%s.o\n' "$(file_command "$architecture" "$file")" "$folder" "$architecture.${file//\//_}"
    done
  done | xargs -P "$jobs" -I{} bash -c '{}' || failed=1
  for file in "$@"; do
    printf '%s\n%s\n' "$file" "$(file_command arm64 "$file")"
  done | python3 -c 'import json, sys; lines = sys.stdin.read().splitlines()
print(json.dumps([{"file": f, "command": c} for f, c in zip(lines[::2], lines[1::2])]))' >"$folder/compile_commands.json"
  for stage in analyse tidy; do
    python3 -B "$here/inspect_sources.py" "$stage" "$folder" "$work/inspected" "$llvm" "$jobs" "$@" >"$folder/$stage.log" || {
      cat -- "$folder/$stage.log"
      failed=1
    }
  done
  rm -r -- "$folder"
  return "$failed"
}

[[ $project$work != *[[:space:]]* ]] || skip "the path of the project has a space in it"
prepare
stage_began=$SECONDS
cd -- "$project"
if (($# == 0)); then
  whole
else
  check_files "$@"
  echo "checked for macOS: $# files, arm64 and x86_64"
fi
