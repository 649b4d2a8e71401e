#!/usr/bin/env bash
# Installs what is missing, builds, and runs the app on its embedded demo site.
# Without a display the app runs offscreen, saves a screenshot of the feed and prints its path.
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
"$here/scripts/deps.sh"
"$here/scripts/build.sh"
build="${QUORIN_BUILD_DIR:-$here/build}"
exec "$build/src/app/quorin" "$@"
