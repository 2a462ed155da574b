# SPDX-License-Identifier: Apache-2.0
# Archives of what is installed; to be sourced.

# make_archive PRESET FOLDER SUFFIX [EMULATOR]: builds the preset, which lies in FOLDER, and packs it
# into build/packages/PRESET. The archive is unpacked once, and the tool in it tells its version.
make_archive() {
  local preset=$1 folder=$2 suffix=$3 run=("${@:4}")
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" -j "$(nproc)"

  local packages=$PWD/build/packages/$preset
  rm -rf "$packages"
  cpack --config "$folder/CPackConfig.cmake" -B "$packages" >"$folder/package.log" ||
    { cat "$folder/package.log" >&2; return 1; }
  rm -rf "$packages/_CPack_Packages"

  local archive unpacked
  unpacked=$(mktemp -d)
  for archive in "$packages"/*.zip "$packages"/*.tar.gz; do
    [ -f "$archive" ] || continue
    (cd "$unpacked" && cmake -E tar xf "$archive")
    "${run[@]}" "$unpacked"/*/bin/tarnmf"$suffix" --version >"$unpacked/version"
    echo "== $(basename "$archive"), $(du -h "$archive" | cut -f 1): version $(cat "$unpacked/version")"
  done
  rm -rf "$unpacked"
}
