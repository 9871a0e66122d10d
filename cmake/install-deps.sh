#!/usr/bin/env bash
# Installs the Debian packages the build needs, only those that are missing (as root, or via sudo).
set -euo pipefail
packages=(cmake g++ ninja-build pkg-config make googletest libgtest-dev libgmock-dev
          libbenchmark-dev libcairo2-dev libpango1.0-dev libfontconfig-dev libsdl2-dev
          fonts-dejavu-core fonts-wqy-microhei clang-format mingw-w64
          libimgui-dev xvfb xdotool dpkg-dev file valgrind clang libclang-rt-dev
          g++-mingw-w64-x86-64 wine wine64)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
sudo_cmd=""
[ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
$sudo_cmd apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${missing[@]}"
