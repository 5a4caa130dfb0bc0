#!/usr/bin/env bash
# Opens a pattern in the window; without a display draws it to a file and says where.
#   run.sh BUILD_DIRECTORY [FILE]
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
build=$1
file=${2:-$here/examples/corundum_cuka.xye}
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$build/vantrelo" "$file"
fi
picture=$build/first-picture.png
"$build/vantrelo" --export "$picture" "$file"
echo "There is no display: the pattern is drawn in $picture"
