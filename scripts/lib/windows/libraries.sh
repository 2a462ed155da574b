# SPDX-License-Identifier: Apache-2.0
# Builds the libraries for Windows; to be sourced in the project's folder.

windows_folder=$PWD/build/windows
windows_prefix=$windows_folder/prefix
windows_compiler=x86_64-w64-mingw32-g++-posix
windows_toolchain=$PWD/cmake/windows/toolchain.cmake

# Each library is installed into the prefix by the function build_NAME, if it is of another version,
# or made by another recipe, than what its stamp there tells.
build_windows_libraries() {
  mkdir -p "$windows_prefix/stamps" "$windows_folder"/{sources,libraries}
  library_from_source xerces-c
  library_from_source expat
  library_from_source fmtlib
  library googletest "$(package_version googletest)"
  library headers "$(package_version libutfcpp-dev libcli11-dev nlohmann-json3-dev)"
  library runtime "$(package_version gcc-mingw-w64-x86-64-posix-runtime)"
}

# Fetched once: a newer version is taken when build/windows/sources is gone.
library_from_source() {
  local sources=$windows_folder/sources
  if [ ! -f "$sources/$1.version" ]; then
    echo "== Fetching the sources of $1"
    scripts/lib/windows/fetch_source "$1" "$sources"
  fi
  library "$1" "$(cat "$sources/$1.version")"
}

package_version() {
  dpkg-query -W -f='${Package} ${Version}\n' "$@"
}

# library NAME VERSION
library() {
  local stamp=$windows_prefix/stamps/$1 log=$windows_folder/libraries/$1.log made
  made=$2$'\n'$(recipe_checksum "build_$1")
  [ ! -f "$stamp" ] || [ "$(cat "$stamp")" != "$made" ] || return 0
  echo "== Building $1 for Windows"
  rm -rf "$stamp" "${windows_folder:?}/libraries/$1"
  (
    trap '[ $? -eq 0 ] || tell_failure "$1" "$log"' EXIT
    "build_$1" "$windows_folder/sources/$1" "$windows_folder/libraries/$1" >"$log" 2>&1
  )
  echo "$made" >"$stamp"
}

tell_failure() {
  tail -n 40 "$2" >&2
  echo "building $1 failed; $2 has everything" >&2
}

recipe_checksum() {
  {
    declare -f "$1" configure_library
    "$windows_compiler" --version
    cat "$windows_toolchain"
  } | sha256sum | cut -d ' ' -f 1
}

# configure_library SOURCE BUILD OPTION...
configure_library() {
  cmake -S "$1" -B "$2" -G Ninja --toolchain "$windows_toolchain" \
    -DCMAKE_INSTALL_PREFIX="$windows_prefix" -DCMAKE_INSTALL_LIBDIR=lib -DCMAKE_BUILD_TYPE=Release \
    -DBUILD_SHARED_LIBS=OFF "${@:3}"
}

# Static, so that a test program has everything in one file. Installing all of it would want the samples.
build_xerces-c() {
  configure_library "$1" "$2" -Dnetwork=OFF -Dtranscoder=windows -Dmessage-loader=inmemory \
    -Dxmlch-type=wchar_t
  cmake --build "$2" -j "$(nproc)" --target xerces-c
  cmake --install "$2/src"
}

# A correction of Debian's compares XML_DTD with 1, which CMake defines without a value.
build_expat() {
  sed -i 's/^#cmakedefine XML_DTD$/#cmakedefine XML_DTD 1/' "$1/expat/expat_config.h.cmake"
  configure_library "$1/expat" "$2" -DEXPAT_SHARED_LIBS=OFF -DEXPAT_BUILD_TOOLS=OFF \
    -DEXPAT_BUILD_EXAMPLES=OFF -DEXPAT_BUILD_TESTS=OFF -DEXPAT_BUILD_DOCS=OFF
  cmake --build "$2" -j "$(nproc)"
  cmake --install "$2"
}

# As a library: from the headers alone, each of our files would compile all of it again.
build_fmtlib() {
  configure_library "$1" "$2" -DFMT_TEST=OFF -DFMT_DOC=OFF
  cmake --build "$2" -j "$(nproc)"
  cmake --install "$2"
}

build_googletest() {
  configure_library /usr/src/googletest "$2"
  cmake --build "$2" -j "$(nproc)"
  cmake --install "$2"
}

# Copies, as the folders of this machine hold headers that are not for Windows, too.
build_headers() {
  mkdir -p "$windows_prefix"/{include,share/cmake}
  rm -rf "$windows_prefix"/include/{utf8.h,utf8,CLI,nlohmann}
  cp -RL /usr/include/{utf8.h,utf8,CLI,nlohmann} "$windows_prefix/include"
  cp -RL /usr/share/cmake/{CLI11,nlohmann_json} "$windows_prefix/share/cmake"
  # Debian's own package file for it names folders of this machine.
  mkdir -p "$windows_prefix/share/cmake/utf8cpp"
  cat >"$windows_prefix/share/cmake/utf8cpp/utf8cppConfig.cmake" <<'END'
if(TARGET utf8cpp)
  return()
endif()
add_library(utf8cpp INTERFACE IMPORTED)
target_include_directories(utf8cpp INTERFACE ${CMAKE_CURRENT_LIST_DIR}/../../../include)
END
}

# The compiler's DLLs, for programs that are not linked with them statically.
build_runtime() {
  local dll
  mkdir -p "$windows_prefix/bin"
  for dll in libstdc++-6 libgcc_s_seh-1 libwinpthread-1; do
    cp "$("$windows_compiler" -print-file-name="$dll.dll")" "$windows_prefix/bin"
  done
}
