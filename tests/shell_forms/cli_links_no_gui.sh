#!/usr/bin/env bash
# vesk-cli links the core only: neither Qt6Widgets nor Qt6Gui may be among its libraries.
set -euo pipefail
cli="$VESK_BIN_DIR/vesk-cli"
[ -x "$cli" ] || { echo "vesk-cli not built at $cli"; exit 1; }
libs=$(ldd "$cli")
echo "$libs" | grep -q 'libQt6Core' || { echo "ldd shows no Qt6Core: not the program expected"; exit 1; }
if echo "$libs" | grep -E 'libQt6(Widgets|Gui)'; then
  echo "vesk-cli links a widget or GUI library"
  exit 1
fi
echo "vesk-cli: no Qt6Widgets, no Qt6Gui"
