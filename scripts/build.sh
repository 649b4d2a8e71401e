#!/usr/bin/env bash
# Configures (once) and builds the project incrementally into build/ (or $QUORIN_BUILD_DIR).
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
build="${QUORIN_BUILD_DIR:-$here/build}"
if [ ! -f "$build/build.ninja" ]; then
  cmake -S "$here" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@"
fi
cmake --build "$build" --parallel "$(nproc)"
