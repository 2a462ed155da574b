# Installs what building and testing need; to be sourced.

packages=(
  g++ cmake ninja-build pkg-config git
  libxerces-c-dev libutfcpp-dev uuid-dev
  libcli11-dev nlohmann-json3-dev libfmt-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  clang-format-14
)

install_missing_packages() {
  local package missing=() as_root=()
  for package in "${packages[@]}"; do
    dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
      missing+=("$package")
  done
  [ "${#missing[@]}" -gt 0 ] || return 0
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  echo "== Installing ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
    "${missing[@]}" >/dev/null
}
