#!/usr/bin/env bash
# Builds the project and runs the demo. Without a display it runs offscreen,
# writes one screenshot per language and prints where they are.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${VEXIL_BUILD_DIR:-$root/build}"
bash "$root/scripts/build.sh"
demo="$build/demo/vexil-demo"
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && [ "${QT_QPA_PLATFORM:-}" != "xcb" ]; then
  out="${VEXIL_SCREENSHOTS:-$root/build/screenshots}"
  QT_QPA_PLATFORM=offscreen exec "$demo" --screenshots "$out" "$@"
fi
exec "$demo" "$@"
