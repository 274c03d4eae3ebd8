# shellcheck shell=bash
# shellcheck disable=SC2016 # what is quoted is expanded elsewhere
# Sourced in the tree's root by what needs a bare Debian: makes one in a folder below build/bare, enters it, and takes it
# away. The base system is made once and kept as an archive; packages that were fetched are kept beside it.
# shellcheck source=.ci/packages.sh
. .ci/packages.sh

# unable REASON: ends with the status that says: not tried, rather than failed.
unable() {
  echo "No bare system can be made here: $*" >&2
  exit 77
}

# open_bare SUITE [NAME]: sets bare_root, a new bare system of that release; NAME is its folder's, SUITE if not said.
open_bare() {
  local suite=$1 archive="$PWD/build/bare/$1.tar" log
  bare_root=$PWD/build/bare/${2:-$1}
  bare_packages=$bare_root-packages
  [ "$(id -u)" -eq 0 ] || unable "only root may"
  unshare --mount --pid --fork true 2>/dev/null || unable "this system allows no mounts of one's own"
  is_debian || unable "this is no Debian system"
  mkdir -p build/bare "$bare_packages/partial"
  if [ ! -s "$archive" ]; then
    (need_packages debootstrap) || unable "debootstrap cannot be installed"
    log=build/bare/debootstrap.log
    rm -rf "$bare_root"
    debootstrap --variant=minbase "$suite" "$bare_root" ${BARE_MIRROR:+"$BARE_MIRROR"} >"$log" 2>&1 ||
      unable "debootstrap ends with: $(tail -n 1 "$log")"
    # Without its lists of packages, as a system that has been off for long.
    rm -rf "$bare_root"/var/lib/apt/lists/* "$bare_root"/var/cache/apt/archives/*.deb
    tar -C "$bare_root" --numeric-owner -cf "$archive.part" .
    mv "$archive.part" "$archive"
  fi
  rm -rf "$bare_root"
  mkdir "$bare_root"
  tar -C "$bare_root" --numeric-owner -xf "$archive"
  cp -L /etc/resolv.conf /etc/hosts "$bare_root/etc/"
  chroot "$bare_root" useradd --create-home --shell /bin/bash newcomer
}

# close_bare: takes the system away. Its mounts went with the commands that ran in it.
close_bare() {
  rm -rf "$bare_root" "$bare_root.before"
}

# clone_into FOLDER [USER]: a clone of the last commit at that place of the bare system, owned by root if not said.
clone_into() {
  git clone -q --depth 1 "file://$PWD" "$bare_root$1"
  chroot "$bare_root" chown -R "${2:-root}:" "$1"
}

# enter NAMESPACE-OPTIONS... -- READ-ONLY-FOLDER USER FOLDER COMMAND: one command in a folder of the bare system, with
# processes, devices and mounts of its own, all of which end with it. The devices are bound one by one, so that nothing in
# there can reach or replace those of this machine.
enter() {
  local options=()
  while [ "$1" != -- ]; do
    options+=("$1")
    shift
  done
  unshare --mount --pid --fork --kill-child "${options[@]}" bash -euc '
    root=$1 packages=$2 read_only=$3 user=$4 folder=$5 command=$6
    mount -t proc proc "$root/proc"
    mount -t tmpfs -o mode=755 tmpfs "$root/dev"
    for device in null zero full random urandom tty; do
      touch "$root/dev/$device"
      mount --bind "/dev/$device" "$root/dev/$device"
    done
    mkdir -m 1777 "$root/dev/shm"
    ln -s /proc/self/fd "$root/dev/fd"
    mount --bind "$packages" "$root/var/cache/apt/archives"
    if [ -n "$read_only" ]; then
      mount --bind "$root$read_only" "$root$read_only"
      mount -o remount,bind,ro "$root$read_only"
    fi
    home=$(awk -F: -v user="$user" "\$1 == user { print \$6 }" "$root/etc/passwd")
    proxies=()
    for name in http_proxy https_proxy no_proxy; do
      [ -z "${!name:-}" ] || proxies+=("$name=${!name}")
    done
    chroot --userspec="$user:" "$root" env -i "HOME=$home" "USER=$user" TERM=dumb "${proxies[@]}" \
      PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
      bash -euc "cd \"\$0\"; eval \"\$1\"" "$folder" "$command" </dev/null
  ' enter "$bare_root" "$bare_packages" "${@:2}"
}

# in_bare USER FOLDER COMMAND
in_bare() {
  enter -- "" "$@"
}

# in_bare_without_network USER FOLDER COMMAND
in_bare_without_network() {
  enter --net -- "" "$@"
}

# in_bare_read_only USER FOLDER COMMAND: nothing can be written into the folder.
in_bare_read_only() {
  enter -- "$2" "$@"
}

# packages_installed: one a line, with their versions.
packages_installed() {
  # shellcheck disable=SC2016 # dpkg's own variables
  chroot "$bare_root" dpkg-query -W -f='${Package}:${Architecture}=${Version}\n' | LC_ALL=C sort
}

# megabytes_added FILE: how much had to be fetched for what is installed since packages_installed wrote the file.
megabytes_added() {
  local added
  added=$(packages_installed | LC_ALL=C comm -13 "$1" -)
  if [ -z "$added" ]; then
    echo 0
    return
  fi
  # shellcheck disable=SC2086 # names, one a word
  chroot "$bare_root" apt-cache show --no-all-versions $added | awk '/^Size: / { bytes += $2 } END { printf "%.0f\n", bytes / 1e6 }'
}
