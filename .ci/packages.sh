# shellcheck shell=bash
# shellcheck disable=SC2034 # the lists are for those who source this
# Sourced by play, gallery, check, soak and fuzz/run, which are in the tree's root then: sees that this machine has what they
# need. It installs Debian packages that are missing, as root or with sudo; otherwise it says what is missing, in one
# message, and ends the script. Where nothing is missing it says nothing and needs no network.

# What building the game and its data needs. libsdl2-mixer-dev brings SDL2, libglu1-mesa-dev OpenGL and its drivers.
build_packages=(
  g++ cmake ninja-build pkg-config libcli11-dev
  libsdl2-mixer-dev libglu1-mesa-dev
  libfreetype-dev fonts-dejavu-core
)
# What showing and testing it without a display needs.
virtual_display_packages=(xvfb xdotool imagemagick)
# What the tools, tests and benchmarks are built with.
test_packages=(libgtest-dev libbenchmark-dev assimp-utils imagemagick sox)

# end SENTENCE...: to stderr, one a line; then the script is over.
end() {
  printf '%s\n' "$@" >&2
  exit 1
}

is_installed() {
  [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

is_debian() {
  command -v dpkg-query >/dev/null && command -v apt-get >/dev/null
}

# as_root COMMAND...
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  else
    sudo "$@"
  fi
}

# install_packages NAME...: the last lines of what the package manager says are shown only when it fails.
install_packages() {
  local log status=0 command="apt-get update && apt-get install --no-install-recommends $*"
  if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
    end "Packages are missing that only root can install. Please have this run as root, then start again:" "$command"
  fi
  echo "Installing $*"
  log=$(mktemp)
  # A list that cannot be fetched need not matter; a package that cannot be does.
  as_root apt-get update -qq </dev/null >"$log" 2>&1 || true
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@" \
    </dev/null >>"$log" 2>&1 || status=$?
  if [ "$status" -ne 0 ]; then
    grep -E '^E: ' "$log" | tail -n 2 >&2 || tail -n 2 "$log" >&2
    rm -f "$log"
    end "The packages could not be installed: is there a network, and room on the disk? As root, by hand:" "$command"
  fi
  rm -f "$log"
}

# need_packages NAME...
need_packages() {
  if ! is_debian; then
    echo "This is no Debian system. These packages, or what they are called here, have to be installed: $*" >&2
    return 0
  fi
  local missing=() package
  for package in "$@"; do
    is_installed "$package" || missing+=("$package")
  done
  if [ ${#missing[@]} -gt 0 ]; then
    install_packages "${missing[@]}"
  fi
}

# newest_clang: prints the version of the newest clang that is installed together with its runtime libraries, or else of the
# newest that can be installed with them; nothing when there is none.
newest_clang() {
  local version
  for version in $(dpkg-query -W -f='${Package}\n' 'clang-[0-9]*' | sed -n 's/^clang-\([0-9]*\)$/\1/p' | sort -rn); do
    if is_installed "clang-$version" && is_installed "libclang-rt-$version-dev"; then
      echo "$version"
      return
    fi
  done
  for version in $(apt-cache pkgnames clang- | sed -n 's/^clang-\([0-9]*\)$/\1/p' | sort -rn); do
    if [ -n "$(apt-cache madison "libclang-rt-$version-dev")" ]; then
      echo "$version"
      return
    fi
  done
} 2>/dev/null

# clang_packages: prints the names of the packages of that clang.
clang_packages() {
  local version
  version=$(newest_clang)
  [ -z "$version" ] || echo "clang-$version libclang-rt-$version-dev"
}

# need_clang: installs the newest clang where none is installed, and puts its program's name into clang; the name is empty
# where there is none to be had.
need_clang() {
  local packages
  read -ra packages <<<"$(clang_packages)"
  if [ ${#packages[@]} -gt 0 ]; then
    need_packages "${packages[@]}"
    clang=${packages[0]/clang/clang++}
  else
    clang=$(command -v clang++ || true)
  fi
}

# need_room MB: that a build of this size can be written into the tree, counting what is built already.
need_room() {
  local free built
  mkdir -p build 2>/dev/null || true
  [ -w build ] ||
    end "Nothing can be written into $PWD: please copy the tree to where that is allowed, and start again there."
  free=$(df -Pm build | awk 'NR == 2 { print $4 }')
  built=$(du -sm build | cut -f1)
  [ $((free + built)) -ge "$1" ] ||
    end "The build takes up to $1 MB, and only $free MB are free on the disk that holds $PWD."
}
