# The Debian packages this project needs, and how they get onto the machine. Sourced by ./run and ./check.
# shellcheck shell=bash disable=SC2034

build=(
  ca-certificates ccache cmake g++ gettext git ninja-build
  libsodium-dev libxcb1-dev libxcb-res0-dev nlohmann-json3-dev pkgconf qt6-base-dev qt6-svg-dev
)

run=(
  fonts-dejavu-core fonts-noto-color-emoji libglib2.0-bin libqt6svg6 perl-base x11-utils
)

# The private desktop (display server, window manager, notification daemon, tray host), what drives it, and the
# applications that are listed on it.
desktop=(
  at-spi2-core dbus dbus-daemon dunst fonts-inter gir1.2-atspi-2.0 imagemagick openbox procps python3 python3-gi
  x11-utils xdotool xfce4-panel xvfb
  galculator mousepad
)

# Tools that the tests compare with, more applications to end, and what the tests are built with.
test=(
  appstream desktop-file-utils iproute2 lsof openssl python3-pytest systemd trash-cli util-linux
  featherpad sway xterm
  clang-format libbenchmark-dev libgmock-dev libgtest-dev
)

# What makes a Debian package of it.
package=(dpkg-dev)

deep=(clang-tidy debootstrap lintian mount pkexec polkitd strace)

# What tests/macos-gate checks the macOS edition with. npm may have come by another way than this system's packages.
macos_gate=(clang-22 clang-tidy-22 lld-22 llvm-22)
command -v npm >/dev/null || macos_gate+=(npm)

say() {
  printf '%s\n' "$*" >&2
}

is_installed() {
  [[ $(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

# install_missing PACKAGE...: installs those that are not there yet, and asks for nothing when all are.
install_missing() {
  local package
  local -a missing=() as_root=()
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  ((${#missing[@]})) || return 0

  if ! command -v apt-get >/dev/null; then
    say "There is no apt-get here. Install the equivalents of these Debian packages, then start again: ${missing[*]}"
    return 1
  fi
  if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
      say "sudo is missing. As root, install these packages, then start again: ${missing[*]}"
      return 1
    fi
    as_root=(sudo)
  fi
  say "Installing ${#missing[@]} packages: ${missing[*]}"
  local -a install=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300
    install -y --no-install-recommends "${missing[@]}")
  # The package lists are only fetched when they turn out to be missing or too old.
  if "${install[@]}" >/dev/null 2>&1; then
    return 0
  fi
  if "${as_root[@]}" apt-get -qq -o DPkg::Lock::Timeout=300 update && "${install[@]}" >/dev/null; then
    return 0
  fi
  say "apt-get could not install these packages: ${missing[*]}. See its message above, mend that and start again."
  return 1
}
