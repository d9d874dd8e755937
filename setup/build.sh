#!/usr/bin/env bash
# Builds the named targets (all without a name) of the preset FLURAX_PRESET, else of "release", which builds into build/.
# Configures only when needed: the build itself sees new and changed files.
set -euo pipefail
root=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.." && pwd)
cd "$root"

preset=${FLURAX_PRESET:-release}
folder=build
[ "$preset" = release ] || folder=build-$preset
cache=$folder/CMakeCache.txt
if [ ! -f "$folder/build.ninja" ] || ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache" 2>/dev/null; then
  fresh=()
  [ ! -f "$cache" ] || fresh=(--fresh) # a folder that was moved or a first try that broke off
  if ! said=$(cmake --preset "$preset" "${fresh[@]}" 2>&1); then
    printf '%s\n' "$said" >&2
    echo "Flurax: Das Bauen konnte nicht vorbereitet werden (configuring failed)." >&2
    exit 1
  fi
fi
targets=()
for target in "$@"; do targets+=(--target "$target"); done
cmake --build --preset "$preset" "${targets[@]}"
