#!/usr/bin/env bash
# Runs a command under a virtual display where there is no display. The display is not reset when its last window closes: a program
# that starts in that moment would find none.
set -euo pipefail
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then exec "$@"; fi
exec xvfb-run -a -s "-screen 0 2400x1600x24 -noreset" "$@"
