#!/usr/bin/env bash
# Builds the project and runs every test suite headless, inside a private
# D-Bus session bus that can start the programs built here. Exits non-zero
# when any test fails.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${VEXIL_BUILD_DIR:-$root/build}"
bash "$root/scripts/build.sh"
export QT_QPA_PLATFORM=offscreen
# Programs the bus starts keep their data (the dictionary manager's memory)
# in a fresh folder of the build tree, never in the user's.
export XDG_DATA_HOME="$build/test-data"
rm -rf "$XDG_DATA_HOME"
mkdir -p "$XDG_DATA_HOME"
cd "$build"
exec dbus-run-session --config-file="$build/dbus/session.conf" -- ctest --output-on-failure -j2 "$@"
