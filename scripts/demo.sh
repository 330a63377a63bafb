#!/usr/bin/env bash
# Builds the project and runs the demo. Without a display it runs offscreen,
# writes one screenshot per language and prints where they are.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${VEXIL_BUILD_DIR:-$root/build}"
bash "$root/scripts/build.sh"
demo="$build/demo/vexil-demo"
# The dictionary manager built here answers the editor's dictionary
# commands: a private session bus that starts it on demand runs the demo
# when there is no display (or no bus); on a desktop's own bus it is started
# for the demo's run unless one is running already.
bus=(env XDG_DATA_HOME="$build/demo-data" dbus-run-session --config-file="$build/dbus/session.conf" --)
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ] && [ "${QT_QPA_PLATFORM:-}" != "xcb" ]; then
  out="${VEXIL_SCREENSHOTS:-$root/build/screenshots}"
  QT_QPA_PLATFORM=offscreen "${bus[@]}" "$demo" --screenshots "$out" "$@"
  # Designer's form editor with the suite's plugin, drawn the same way.
  QT_QPA_PLATFORM=offscreen "$build/designer/screenshot/vexil-designer-shot" "$out/designer.png" 2>/dev/null
  exit 0
fi
if [ -z "${DBUS_SESSION_BUS_ADDRESS:-}" ]; then
  exec "${bus[@]}" "$demo" "$@"
fi
manager=""
if ! dbus-send --session --print-reply --dest=org.freedesktop.DBus / org.freedesktop.DBus.NameHasOwner \
     string:dicmngr.TVexilDicMngr 2>/dev/null | grep -q "boolean true"; then
  mkdir -p "$build/demo-data"
  "$build/dictionary/vexil-dictionary" --database "$build/demo-data/dictionary.sqlite" &
  manager=$!
fi
status=0
"$demo" "$@" || status=$?
if [ -n "$manager" ]; then kill "$manager" 2>/dev/null || true; fi
exit $status
