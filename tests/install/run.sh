#!/usr/bin/env bash
# Installs a build into a place of its own and builds and runs a host against it, once through find_package and once
# through pkg-config; then a host in plain C, and the program that the README shows. Does the same with what the Debian
# packages hold, which has to be what was installed. Works for shared and for static libraries.
#
#   tests/install/run.sh BUILD_DIR GENERATOR CXX
set -euo pipefail

build=$1 generator=$2 cxx=$3
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() {
  printf '%s\n' "$*" >&2
  exit 1
}
# Says nothing of what succeeds.
quietly() {
  "$@" >"$scratch/log" 2>&1 || {
    cat "$scratch/log"
    exit 1
  }
}
compile() {
  "$cxx" -std=c++20 -Wall -Wextra -Wconversion -Wshadow -Woverloaded-virtual -Werror "$1" -o "$2" "${flags[@]}"
}
files_of() { (cd "$1" && find . ! -type d | sort); }

# Sets `flags`, and lets programs find the libraries under a prefix.
use() {
  local library
  library=$(find "$1" -name 'libvxswf.so' -o -name 'libvxswf.a')
  export PKG_CONFIG_PATH=${library%/*}/pkgconfig LD_LIBRARY_PATH=${library%/*}
  if [[ $library == *.a ]]; then
    read -r -a flags < <(pkg-config --static --cflags --libs vxswf)
  else
    read -r -a flags < <(pkg-config --cflags --libs vxswf)
  fi
}

printf 'install\n'
prefix=$scratch/prefix
quietly cmake --install "$build" --prefix "$prefix"
private=$(find "$prefix" -name '*_p.h')
[[ -z $private ]] || fail "private headers were installed: $private"

printf 'find_package\n'
quietly cmake -S "$here" -B "$scratch/cmake" -G "$generator" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_PREFIX_PATH="$prefix"
quietly cmake --build "$scratch/cmake"
"$scratch/cmake/consumer"

printf 'pkg-config\n'
use "$prefix"
compile "$here/Consumer.cpp" "$scratch/consumer"
"$scratch/consumer"

if [[ -n $(find "$prefix" -name 'libvxswf.so') ]]; then
  printf 'a host in plain C\n'
  cc -Wall -Wextra -Werror "$here/Component.c" -o "$scratch/component" -ldl
  "$scratch/component"
fi

printf 'the program in the README\n'
awk '/^## / { section = /Load/ } /^```/ { inside = section && /cpp/; next } inside' "$here/../../README.md" >"$scratch/Readme.cpp"
compile "$scratch/Readme.cpp" "$scratch/readme"
cp "$here/../../apps/vxswf/assets/demo.swf" "$scratch/in.swf"
(cd "$scratch" && ./readme)
[[ $(head -c 3 "$scratch/out.swf") == CWS ]] || fail 'out.swf is no compressed movie'

printf 'a part of another project\n'
quietly cmake -S "$here/subproject" -B "$scratch/around" -G "$generator" -DCMAKE_CXX_COMPILER="$cxx"

printf 'packages\n'
quietly cpack --config "$build/CPackConfig.cmake" -G DEB -B "$scratch/packages"
for package in "$scratch"/packages/*.deb; do
  name=$(dpkg-deb --field "$package" Package)
  depends=$(dpkg-deb --field "$package" Depends)
  printf '%s: %s\n' "$name" "$depends"
  dpkg-deb --extract "$package" "$scratch/$name"
  files_of "$scratch/$name/usr" >>"$scratch/packaged"
  dpkg-deb --extract "$package" "$scratch/root"
  case $name in
    libvxswf0) [[ $depends == *libc6*zlib1g* ]] || fail 'the libraries do not ask for what they link' ;;
    libvxswf-dev) [[ $depends == *'libvxswf0 (= '* || $depends == *zlib1g-dev* ]] || fail 'the headers come alone' ;;
    vxswf) [[ $depends == *'libvxswf0 (= '* || $depends == *zlib1g* ]] || fail 'the command comes alone' ;;
    *) fail "nobody knows the package $name" ;;
  esac
done
diff <(files_of "$prefix") <(sort "$scratch/packaged") || fail 'the packages do not hold what is installed, each file once'
use "$scratch/root/usr"
compile "$here/Consumer.cpp" "$scratch/consumer"
"$scratch/consumer"
if [[ -n $(find "$prefix" -name vxswf -type f) ]]; then
  "$scratch/root/usr/bin/vxswf" --version
fi
