# Installs what building and testing need; to be sourced.

packages=(
  g++ cmake ninja-build pkg-config git
  libxerces-c-dev libutfcpp-dev uuid-dev
  libcli11-dev nlohmann-json3-dev libfmt-dev
  libgtest-dev libgmock-dev libbenchmark-dev
)

is_installed() {
  dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed
}

install_missing_packages() {
  local package missing=() as_root=()
  for package in "${packages[@]}"; do
    is_installed "$package" || missing+=("$package")
  done
  # Newer systems have a newer formatter only.
  is_installed clang-format-14 || is_installed clang-format || missing+=(clang-format)
  [ "${#missing[@]}" -gt 0 ] || return 0
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  echo "== Installing ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
