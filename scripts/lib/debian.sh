# SPDX-License-Identifier: Apache-2.0
# Debian packages of the tree as it is; to be sourced.

# debian_version: what debian/changelog says.
debian_version() {
  dpkg-parsechangelog -S Version
}

# build_debian_packages FOLDER: builds them in FOLDER/tarnmf-VERSION, so that they and what belongs to
# them lie in FOLDER.
build_debian_packages() {
  local folder=$1 version sources
  version=$(debian_version)
  sources=$folder/tarnmf-${version%-*}
  rm -rf "$folder"
  mkdir -p "$sources"
  # All that is not ignored; git also names files that have just been deleted.
  git ls-files -z --cached --others --exclude-standard | xargs -0 ls -d 2>/dev/null |
    tar --create --files-from=- | tar --extract --directory="$sources"
  (
    cd "$sources"
    export SOURCE_DATE_EPOCH
    SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -S Timestamp)
    tar --create --exclude=./debian --sort=name --owner=0 --group=0 --numeric-owner \
      --mtime="@$SOURCE_DATE_EPOCH" --transform="s,^\.,${sources##*/}," . |
      gzip --no-name >"../tarnmf_${version%-*}.orig.tar.gz"
    dpkg-buildpackage --unsigned-source --unsigned-changes >../build.log 2>&1 ||
      { tail -40 ../build.log >&2; exit 1; }
  )
}

# judge_debian_packages FOLDER: what lintian finds, of which no error or warning may be left.
judge_debian_packages() {
  echo "== $(lintian --version): what it finds, and what is overridden for a reason (O)"
  # Shown overrides would count as what they override.
  (cd "$1" && lintian --fail-on none --allow-root --display-info --show-overrides ./*.changes)
  (cd "$1" && lintian --fail-on error,warning --allow-root --quiet ./*.changes)
}

# compare_debian_packages FOLDER OTHER: builds them anew in OTHER; byte by byte they are the same.
compare_debian_packages() {
  local package
  build_debian_packages "$2"
  for package in "$1"/*.deb; do
    cmp "$package" "$2/${package##*/}"
    echo "== Twice the same: ${package##*/}"
  done
}

# try_debian_packages FOLDER: installs them, runs their tests, removes them.
try_debian_packages() {
  local as_root=() names
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  mapfile -t names < <(cd "$1" && for package in *.deb; do echo "${package%%_*}"; done)
  echo "== Installing them"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "$1"/*.deb >/dev/null
  local status=0 work
  work=$(mktemp -d)
  AUTOPKGTEST_TMP=$work debian/tests/embed || status=1
  rm -rf "$work"
  echo "== Removing them"
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get remove -y -qq "${names[@]}" >/dev/null
  [ "$status" -eq 0 ] || { echo "the installed packages do not work" >&2; return 1; }
  local left
  left=$(ls -d /usr/bin/tarnmf /usr/include/tarnmf-* /usr/lib/*/lib{tarnmf,btkhost}.* \
    /usr/share/tarnmf /usr/share/doc/*tarnmf* 2>/dev/null || true)
  [ -z "$left" ] || { echo "left behind: $left" >&2; return 1; }
  ls -l --human-readable "$1"/*.deb | awk '{print "==", $5, $NF}' | sed 's,[^ ]*/,,'
}
