#!/usr/bin/env bash
# Installs the Debian packages the build needs. As root it runs apt-get; otherwise it prints the
# exact command to run and fails, so that nothing half-configured is built.
set -euo pipefail
packages=(cmake g++ make pkg-config libwxgtk3.2-dev wx-common wx3.2-i18n libsqlite3-dev libsqlitecpp-dev
          libgtest-dev libgmock-dev libbenchmark-dev librsvg2-bin gettext xvfb xauth locales
          nlohmann-json3-dev libyaml-cpp-dev libpugixml-dev)
# The tests check that numbers read and print the same under a decimal-comma locale.
test_locale=de_DE.UTF-8

has_test_locale() { locale -a 2>/dev/null | grep -qix 'de_DE\.utf-\?8'; }
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && has_test_locale && exit 0
if [ "$(id -u)" -ne 0 ]; then
    [ ${#missing[@]} -gt 0 ] && echo "Missing packages: ${missing[*]}" >&2 &&
        echo "Run: sudo apt-get install -y ${missing[*]}" >&2
    has_test_locale || echo "Missing locale $test_locale; run: sudo sh -c" \
        "\"sed -i 's/^# *$test_locale/$test_locale/' /etc/locale.gen && locale-gen\"" >&2
    exit 1
fi
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
if ! has_test_locale; then
    echo "Generating the locale $test_locale"
    grep -q "^# *$test_locale" /etc/locale.gen && sed -i "s/^# *$test_locale/$test_locale/" /etc/locale.gen
    grep -q "^$test_locale" /etc/locale.gen || echo "$test_locale UTF-8" >>/etc/locale.gen
    locale-gen >/dev/null
fi
