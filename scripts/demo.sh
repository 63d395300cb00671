#!/usr/bin/env bash
# Builds the command and takes a small movie through it: list, copy plain and compressed, merge; then builds a movie of
# everything that the library makes. What it writes lies in build/demo afterwards.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

bash scripts/setup.sh
cmake --preset release
cmake --build --preset release --parallel "$(nproc)" --target apps/vxswf/all

out=build/demo
rm -rf "$out"
mkdir -p "$out"

# Runs the command and shows how it was called.
vxswf() {
  printf '\n$ vxswf %s\n' "$*"
  build/release/apps/vxswf/vxswf "$@"
}

movie=apps/vxswf/assets/demo.swf
vxswf info "$movie"
vxswf copy --plain "$movie" "$out/plain.swf"
vxswf copy --compress "$movie" "$out/compressed.swf"
vxswf merge --name copy --at 40,20 "$movie" "$out/compressed.swf" "$out/merged.swf"
vxswf info "$out/plain.swf" "$out/compressed.swf" "$out/merged.swf"

vxswf demo "$out/demo.swf"
vxswf info "$out/demo.swf" | head -n 20
vxswf demo --font 'DejaVu Serif' --jpeg apps/vxswf/assets/photo.jpg --png apps/vxswf/assets/rings.png \
  --mp3 apps/vxswf/assets/chime.mp3 "$out/demo-serif.swf"
vxswf merge --at 100,60 "$out/demo.swf" "$movie" "$out/demo-with-movie.swf"
mkdir "$out/plain"
vxswf copy --plain "$out"/*.swf "$out/plain"

printf '\nWritten:\n'
ls -lR "$out"
