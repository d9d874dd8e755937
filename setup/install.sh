#!/usr/bin/env bash
# Installs the packages of setup/packages.txt that are missing; with "bench" those of setup/packages-bench.txt too.
# Does nothing, and asks nobody, when all are there.
set -euo pipefail
here=$(cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")" && pwd)

lists=("$here/packages.txt")
for extra in "$@"; do lists+=("$here/packages-$extra.txt"); done
mapfile -t wanted <<<"$(sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' "${lists[@]}")"

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
  echo "Flurax: Dieses System hat kein apt. Bitte installieren Sie selbst, was diesen Debian-Paketen entspricht" >&2
  echo "(no apt here, please install the counterparts of these Debian packages): ${wanted[*]}" >&2
  exit 0
fi

missing=()
for package in "${wanted[@]}"; do
  [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "Flurax: installiere fehlende Pakete (installing missing packages): ${missing[*]}"
become=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "Flurax: Es fehlen Pakete, und es gibt hier kein sudo. Bitte lassen Sie den Verwalter ausführen" >&2
    echo "(packages are missing and there is no sudo, please have the administrator run):" >&2
    echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
    exit 1
  fi
  become=(sudo)
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT
apt() {
  "${become[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300 "$@" >>"$log" 2>&1
}
# The package lists may be fresh enough: they are renewed only when the first try fails.
if apt install --no-install-recommends "${missing[@]}"; then exit 0; fi
if apt update && apt install --no-install-recommends "${missing[@]}"; then exit 0; fi

tail -n 20 "$log" >&2
echo >&2
echo "Flurax: Die Pakete konnten nicht installiert werden. Ist die Paketquelle erreichbar (Netz, Proxy, sources.list)?" >&2
echo "(the packages could not be installed, is the package source within reach?): ${missing[*]}" >&2
exit 1
