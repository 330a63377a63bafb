#!/usr/bin/env bash
# Configures and builds the project into build/ (or $VEXIL_BUILD_DIR).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${VEXIL_BUILD_DIR:-$root/build}"
bash "$root/scripts/setup.sh"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE="${CMAKE_BUILD_TYPE:-RelWithDebInfo}" "$@" >/dev/null
cmake --build "$build" -j"${VEXIL_JOBS:-2}"
