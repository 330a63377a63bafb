#!/usr/bin/env bash
# Installs the Debian packages the project builds, tests and runs with.
# A no-op when everything is present already.
set -euo pipefail

packages=(
  cmake g++ make
  qt6-base-dev qt6-base-private-dev qt6-tools-dev qt6-tools-dev-tools
  qt6-tools-private-dev qt6-l10n-tools designer-qt6 libqt6designercomponents6
  libqt6opengl6-dev libgl-dev
  dbus libqt6sql6-sqlite
  clang-14 libclang-rt-14-dev
  fonts-dejavu-core
  qtbase5-examples
  gettext
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "setup: installing ${missing[*]}" >&2
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
