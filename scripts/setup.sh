#!/usr/bin/env bash
# Installs what the build and its checks need and the machine lacks, from Debian's packages. Does nothing, and needs no
# network and no rights, when all of it is there.
set -euo pipefail

packages=(
  # the compilers and what drives them; libclang-rt-dev holds clang's sanitizers and libFuzzer
  cmake ninja-build g++ clang libclang-rt-dev pkg-config python3
  # checks of the sources, reference pages, memcheck and the counter of instructions
  clang-format clang-tidy doxygen valgrind
  # the libraries
  zlib1g-dev liblzma-dev libfreetype-dev libfontconfig-dev fonts-dejavu-core
  # the command, the tests and the benchmarks
  libcli11-dev nlohmann-json3-dev libpng-dev libjpeg62-turbo-dev libgtest-dev libgmock-dev libbenchmark-dev
  # Debian packages
  dpkg-dev file
)

# dpkg-query fails when it knows nothing of one of the names: that package is missing like any other.
declare -A installed=()
while read -r status name; do
  if [[ $status == ii || $status == hi ]]; then
    installed[$name]=1
  fi
done < <(dpkg-query --show --showformat='${db:Status-Abbrev} ${Package}\n' "${packages[@]}" 2>/dev/null || true)

missing=()
for name in "${packages[@]}"; do
  if [[ -z ${installed[$name]:-} ]]; then
    missing+=("$name")
  fi
done
if ((${#missing[@]} == 0)); then
  exit 0
fi

if ! command -v apt-get >/dev/null; then
  printf 'setup.sh: no apt-get here; this system has to provide what Debian calls:\n  %s\n' "${missing[*]}" >&2
  exit 1
elif ((EUID == 0)); then
  as_root=(env)
elif command -v sudo >/dev/null; then
  as_root=(sudo env)
else
  printf 'setup.sh: these packages are missing, and installing them takes root or sudo:\n  %s\n' "${missing[*]}" >&2
  exit 1
fi

apt() {
  local attempt
  for attempt in 1 2 3; do
    if "${as_root[@]}" DEBIAN_FRONTEND=noninteractive apt-get -q -y \
      -o Acquire::Retries=3 -o DPkg::Lock::Timeout=300 "$@"; then
      return 0
    fi
    printf 'setup.sh: apt-get %s failed (attempt %d of 3)\n' "$1" "$attempt" >&2
    sleep $((attempt * 5))
  done
  return 1
}

printf 'setup.sh: installing %s\n' "${missing[*]}"
# An old list of packages may still do, for instance where one of several sources is out of reach.
apt update || printf 'setup.sh: going on with the package lists at hand\n' >&2
apt install --no-install-recommends "${missing[@]}"
