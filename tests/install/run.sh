#!/usr/bin/env bash
# Installs a build into a place of its own and builds and runs a host against it, once through find_package and once
# through pkg-config; then a host in plain C, and the program that the README shows.
#
#   tests/install/run.sh BUILD_DIR GENERATOR CXX
set -euo pipefail

build=$1 generator=$2 cxx=$3
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix=$scratch/prefix

cmake --install "$build" --prefix "$prefix" >"$scratch/install.log" || {
  cat "$scratch/install.log"
  exit 1
}

if [[ -n $(find "$prefix" -name '*_p.h') ]]; then
  printf 'private headers were installed:\n'
  find "$prefix" -name '*_p.h'
  exit 1
fi

printf 'find_package\n'
cmake -S "$here" -B "$scratch/cmake" -G "$generator" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$prefix"
cmake --build "$scratch/cmake"
"$scratch/cmake/consumer"

printf 'pkg-config\n'
libdir=$(dirname "$(find "$prefix" -name 'libvxswf.so')")
export PKG_CONFIG_PATH=$libdir/pkgconfig LD_LIBRARY_PATH=$libdir
read -r -a flags < <(pkg-config --cflags --libs vxswf)
compile() {
  "$cxx" -std=c++20 -Wall -Wextra -Wconversion -Wshadow -Woverloaded-virtual -Werror "$1" -o "$2" "${flags[@]}"
}
compile "$here/Consumer.cpp" "$scratch/consumer"
"$scratch/consumer"

printf 'a host in plain C\n'
cc -Wall -Wextra -Werror "$here/Component.c" -o "$scratch/component" -ldl
"$scratch/component"

printf 'the program in the README\n'
awk '/^```/ { inside = /cpp/; next } inside' "$here/../../README.md" >"$scratch/Readme.cpp"
compile "$scratch/Readme.cpp" "$scratch/readme"
cd "$scratch"
cp "$here/../../apps/vxswf/assets/demo.swf" in.swf
./readme
if [[ $(head -c 3 out.swf) != CWS ]]; then
  printf 'out.swf is no compressed movie\n'
  exit 1
fi
