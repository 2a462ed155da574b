# SPDX-License-Identifier: Apache-2.0
# Installs what the scripts need; to be sourced.

build_packages=(
  g++ cmake ninja-build pkg-config git
  libxerces-c-dev libexpat1-dev libutfcpp-dev uuid-dev
  libcli11-dev nlohmann-json3-dev libfmt-dev
  libgtest-dev libgmock-dev
)
# Manual pages are made where this is.
manual_packages=(pandoc)
test_packages=(neovim gdb graphviz bash zsh fish man-db "${manual_packages[@]}")
# Some machines have these commands from elsewhere.
command -v node >/dev/null || test_packages+=(nodejs)
command -v npm >/dev/null || test_packages+=(npm)
command -v python3 >/dev/null || test_packages+=(python3)
# The libraries for Windows are built from sources, with what build_packages has of headers.
windows_packages=(g++-mingw-w64-x86-64-posix wine64 dpkg-dev googletest)
debian_packages=(debhelper dpkg-dev lintian doxygen "${manual_packages[@]}")
# Tools that the results depend on: version 14, or the system's own where it has no such package.
format_packages=(clang-format-14)
bench_packages=(python3 strace valgrind)
check_packages=(clang-14 clang-tidy-14 libclang-rt-14-dev doxygen graphviz trang jing libxml2-utils
  python3-jsonschema emacs-nox elpa-eglot)

is_installed() {
  dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed
}

# install_missing_packages PACKAGE...
install_missing_packages() {
  local package missing=() as_root=()
  for package in "$@"; do
    is_installed "$package" || is_installed "${package/-14/}" || missing+=("$package")
  done
  [ "${#missing[@]}" -gt 0 ] || return 0
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" apt-get update -qq
  for package in "${!missing[@]}"; do
    apt-cache show "${missing[package]}" >/dev/null 2>&1 ||
      missing[package]=${missing[package]/-14/}
  done
  echo "== Installing ${missing[*]}"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# tool NAME: the command of a tool in version 14, or else the system's own.
tool() {
  command -v "$1-14" || command -v "$1"
}
