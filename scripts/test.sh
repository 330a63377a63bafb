#!/usr/bin/env bash
# Builds the project and runs every test suite headless, inside a private
# D-Bus session bus that can start the programs built here. Exits non-zero
# when any test fails.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${VEXIL_BUILD_DIR:-$root/build}"
bash "$root/scripts/build.sh"
export QT_QPA_PLATFORM=offscreen
cd "$build"
exec dbus-run-session --config-file="$build/dbus/session.conf" -- ctest --output-on-failure -j2 "$@"
