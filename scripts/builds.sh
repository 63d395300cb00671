#!/usr/bin/env bash
# Builds the project in the ways that scripts/test.sh does not, and tries what comes out. Takes ten minutes or so.
#
#   scripts/builds.sh [BUILD...]      all of them unless told otherwise
#
#   clang         clang++ with libstdc++; all tests
#   engineless    without FreeType and fontconfig; all tests
#   static        static libraries, without tests; hosts through find_package and pkg-config
#   spaces        from a directory with spaces in its name; the samples and the test of the installed package
#   subproject    as a part of another project, by add_subdirectory(); its host runs
#   platform      a libvxplatform of the host's own in the place of the one that is installed
#   package       the Debian packages, by the preset of that name
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

bash scripts/setup.sh
top=$PWD
out=$top/build/builds
jobs=$(nproc)
mkdir -p "$out"

configure() {
  local directory=$1
  shift
  cmake -S . -B "$directory" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVXSWF_WERROR=ON -DVXSWF_BUILD_BENCHMARKS=OFF "$@"
}
build() { cmake --build "$1" --parallel "$jobs" "${@:2}"; }
run_tests() { ctest --test-dir "$1" --output-on-failure --no-tests=error --parallel "$jobs" "${@:2}"; }

build_clang() {
  configure "$out/clang" -DCMAKE_CXX_COMPILER=clang++
  build "$out/clang"
  run_tests "$out/clang"
}

build_engineless() {
  # Not by VXSWF_TYPE_ENGINE=OFF, so that the way of a machine without the two is taken.
  configure "$out/engineless" -DCMAKE_DISABLE_FIND_PACKAGE_Freetype=ON
  build "$out/engineless"
  run_tests "$out/engineless"
}

build_static() {
  configure "$out/static" -DBUILD_SHARED_LIBS=OFF -DVXSWF_BUILD_TESTS=OFF
  build "$out/static"
  bash tests/install/run.sh "$out/static" Ninja c++
}

build_spaces() {
  local copy="$out/a path with spaces"
  mkdir -p "$copy"
  git ls-files --cached --others --exclude-standard -z | xargs -0 cp --parents --target-directory "$copy"
  (cd "$copy" && configure "$copy/build here")
  build "$copy/build here" --target docs/samples/all apps/vxswf/all
  run_tests "$copy/build here" --tests-regex '^(samples|install)/'
}

build_subproject() {
  cmake -S tests/install/subproject -B "$out/subproject" -G Ninja
  build "$out/subproject"
  "$out/subproject/consumer"
}

build_platform() {
  local directory=$out/platform
  configure "$directory" -DVXSWF_BUILD_TESTS=OFF -DVXSWF_BUILD_EXAMPLES=OFF
  build "$directory"
  cmake --install "$directory" --prefix "$directory/prefix"
  mkdir -p "$directory/own"
  c++ -std=c++20 -O2 -fPIC -shared -Isrc src/platform/*.cpp -Wl,-soname,libvxplatform.so.0 \
    -o "$directory/own/libvxplatform.so.0"
  c++ -std=c++20 -I"$directory/prefix/include/vxswf" tests/install/Consumer.cpp -o "$directory/consumer" \
    -L"$directory/prefix/lib" -lvxswf -lvxplatform
  export LD_LIBRARY_PATH="$directory/own:$directory/prefix/lib" LD_BIND_NOW=1
  ldd "$directory/consumer" | grep "$directory/own/libvxplatform.so.0"
  "$directory/consumer"
}

build_package() {
  cmake --workflow --preset package
  ls -l build/package/*.deb
}

builds=("$@")
if ((${#builds[@]} == 0)); then
  builds=(clang engineless static spaces subproject platform package)
fi
for name in "${builds[@]}"; do
  printf '\n== %s\n' "$name"
  [[ $(type -t "build_$name") == function ]] || {
    printf 'builds.sh: no build is called %s\n' "$name" >&2
    exit 2
  }
  # In a shell of its own, with all that this one has set; whatever fails there ends this one too.
  ("build_$name")
done
printf '\nbuilt and tried: %s\n' "${builds[*]}"
