#!/usr/bin/env bash
# Installs what is missing, builds, and runs the reference site with its demo catalogue.
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
"$here/scripts/deps.sh"
"$here/scripts/build.sh"
build="${QUORIN_BUILD_DIR:-$here/build}"
if [ -x "$build/src/app/quorin" ]; then
  exec "$build/src/app/quorin" "$@"
fi
echo "The reader app (quorin) is not built yet: this checkout holds the libraries and the"
echo "reference site. Starting the reference site with its demo catalogue instead."
data="${QUORIN_SITE_DATA:-$here/build/site-data}"
echo "quorin-site on http://127.0.0.1:48042/ (data in $data); Ctrl-C stops it."
exec "$build/site/quorin-site" --port 48042 --data "$data" "$@"
