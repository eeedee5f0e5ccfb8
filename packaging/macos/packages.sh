# The Homebrew packages this project needs, and how they get onto the Mac. Sourced by run.sh, check.sh and dmg.sh.
# Written for bash 3.2, the one that macOS has: no empty arrays are expanded, no mapfile.
# shellcheck shell=bash disable=SC2034

build=(ccache cmake gettext ninja nlohmann-json qt)

test=(googletest python3)

say() {
  printf '%s\n' "$*" >&2
}

processors() {
  sysctl -n hw.ncpu
}

# install_missing PACKAGE...: installs those that are not there yet, and asks for nothing when all are.
install_missing() {
  local package missing=""
  if ! xcode-select -p >/dev/null 2>&1; then
    say "The compiler is missing. Run xcode-select --install, then start again."
    return 1
  fi
  if ! command -v brew >/dev/null; then
    say "There is no Homebrew here. Install it, or the equivalents of these packages: $*"
    return 1
  fi
  for package in "$@"; do
    brew list --formula --versions "$package" >/dev/null 2>&1 || missing="$missing $package"
  done
  [[ -n $missing ]] || return 0
  say "Installing these packages:$missing"
  # shellcheck disable=SC2086
  if brew install --quiet $missing >&2; then
    return 0
  fi
  say "Homebrew could not install these packages:$missing. See its message above, mend that and start again."
  return 1
}

# Where CMake finds what Homebrew keeps out of the common folders.
prefixes() {
  printf '%s;%s;%s' "$(brew --prefix)" "$(brew --prefix qt)" "$(brew --prefix gettext)"
}
