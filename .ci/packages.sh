# shellcheck shell=bash
# shellcheck disable=SC2034 # the lists are for those who source this
# Sourced by play and check: installs Debian packages that are missing. Needs no network and says nothing when none is.

# What building the game and its data needs.
build_packages=(
  build-essential cmake ninja-build pkg-config
  libsdl2-dev libsdl2-mixer-dev libgl-dev libglu1-mesa-dev
  libfreetype-dev fonts-dejavu-core
)
# What running it needs beyond the libraries those bring.
run_packages=(libgl1-mesa-dri)
# What showing and testing it without a display needs.
virtual_display_packages=(xvfb xdotool imagemagick)
# What the tools, tests and benchmarks are built with.
test_packages=(libcli11-dev libgtest-dev libbenchmark-dev assimp-utils imagemagick sox)
# What fuzzing is done with.
fuzz_packages=(clang-14 libclang-rt-14-dev)

is_installed() {
  [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# need_packages NAME...
need_packages() {
  if ! command -v dpkg-query >/dev/null; then
    echo "This is no Debian system: please see that these packages, or what they are called here, are installed: $*" >&2
    return 0
  fi
  local missing=() package
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  if [ ${#missing[@]} -eq 0 ]; then
    return 0
  fi
  echo "Installing ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Only root can install packages, and there is no sudo. As root: apt-get install ${missing[*]}" >&2
      return 1
    fi
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update -qq </dev/null
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" </dev/null >/dev/null
}
