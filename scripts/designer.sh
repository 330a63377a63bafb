#!/usr/bin/env bash
# Builds the project and starts Qt Designer with the suite's plugin from the
# build tree: its components on the "Kestrava" page of the widget box, the
# translation components' editor verbs in their context menu, the expert
# in the Settings menu.
#
#   bash scripts/designer.sh [form.ui ...]
#
# Designer looks for plugins in the "designer" folder of every path in
# QT_PLUGIN_PATH; Qt's own plugin folders stay in the search.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${VEXIL_BUILD_DIR:-$root/build}"
bash "$root/scripts/build.sh"
designer=""
for candidate in designer6 designer /usr/lib/qt6/bin/designer; do
  if command -v "$candidate" >/dev/null 2>&1; then designer="$(command -v "$candidate")"; break; fi
done
if [ -z "$designer" ]; then
  echo "Qt Designer not found: install designer-qt6 (bash scripts/setup.sh)" >&2
  exit 1
fi
export QT_PLUGIN_PATH="$build/plugins${QT_PLUGIN_PATH:+:$QT_PLUGIN_PATH}"
exec "$designer" "$@"
