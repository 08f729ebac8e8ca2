#!/usr/bin/env bash
# Installs the Debian 12 packages the build and the tests need (clang and its
# sanitizer and fuzzer runtimes for the checks of .ci/run); does nothing when
# they are all present. Uses sudo when not run as root.
set -euo pipefail

packages=(build-essential cmake pkg-config python3 libsqlite3-dev libfreexl-dev
          libgtest-dev libgmock-dev libbenchmark-dev libglpk-dev libnetcdf-dev
          qt6-base-dev qt6-charts-dev qt6-svg-dev libqt6opengl6-dev xvfb xauth
          clang libclang-rt-14-dev llvm)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
