#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test (unit, integration, gui).
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
"$here/scripts/deps.sh"
"$here/scripts/build.sh"
build="${QUORIN_BUILD_DIR:-$here/build}"
cd "$build"
ctest -j2 --output-on-failure --timeout 300
