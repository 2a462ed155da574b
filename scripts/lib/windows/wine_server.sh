# SPDX-License-Identifier: Apache-2.0
# Keeps wine's server up until the script ends, so that a program starts in a tenth of the time; to be
# sourced after libraries.sh.

wine_server() {
  WINEPREFIX=$windows_folder/wine /usr/lib/wine/wineserver64 "$@"
}

# start_wine_server WINE, the file that runs programs. A server that is up already is another script's
# and stays.
start_wine_server() {
  mkdir -p "$windows_folder/wine"
  if wine_server --persistent 2>/dev/null; then
    trap 'wine_server --kill || true' EXIT
  fi
  "$1" wineboot --init >"$windows_folder/wine.log" 2>&1
}
