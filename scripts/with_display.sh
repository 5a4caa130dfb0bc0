#!/usr/bin/env bash
# Runs a command under a virtual display where there is no display.
set -euo pipefail
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then exec "$@"; fi
exec xvfb-run -a -s "-screen 0 2400x1600x24" "$@"
