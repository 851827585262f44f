#!/usr/bin/env bash
# Installs the Debian packages the build needs. As root it runs apt-get; otherwise it prints the
# exact command to run and fails, so that nothing half-configured is built.
set -euo pipefail
packages=(cmake g++ make pkg-config libwxgtk3.2-dev wx-common libsqlite3-dev libsqlitecpp-dev
          libgtest-dev libgmock-dev libbenchmark-dev librsvg2-bin gettext xvfb xauth)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
if [ "$(id -u)" -eq 0 ]; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends "${missing[@]}"
else
    echo "Missing packages: ${missing[*]}" >&2
    echo "Run: sudo apt-get install -y ${missing[*]}" >&2
    exit 1
fi
