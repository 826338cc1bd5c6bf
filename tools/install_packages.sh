#!/usr/bin/env bash
# Installs the packages of the given lists that this machine does not have yet. Asks for nothing when none is missing.
#   tools/install_packages.sh [LIST...]      default: packaging/apt-packages.txt
set -euo pipefail
cd "$(dirname "$0")/.."

lists=("$@")
[ ${#lists[@]} -gt 0 ] || lists=(packaging/apt-packages.txt)
mapfile -t wanted < <(sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' "${lists[@]}")

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This is not a Debian system. Please install the counterparts of these packages yourself:" >&2
    printf '  %s\n' "${wanted[@]}" >&2
    exit 1
fi

IsInstalled() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

missing=()
for package in "${wanted[@]}"; do
    IsInstalled "$package" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

asRoot=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "These packages are missing, and there is no sudo to install them with. As root, please run:" >&2
        echo "  apt-get update && apt-get install ${missing[*]}" >&2
        exit 1
    fi
    asRoot=(sudo)
fi

echo "Installing ${#missing[@]} missing packages: ${missing[*]}"
apt=("${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
if ! "${apt[@]}" update; then
    echo "apt-get update failed; trying with the package lists that are there." >&2
fi
if ! "${apt[@]}" install -y --no-install-recommends "${missing[@]}"; then
    echo "Could not install: ${missing[*]}" >&2
    echo "Check the network and /etc/apt/sources.list, then run this again." >&2
    exit 1
fi
