#!/usr/bin/env bash
# Builds build-asan/ (AddressSanitizer + UndefinedBehaviorSanitizer, Debug) and runs
# every test in it. Sanitizer reports of every process, the site and app processes
# the tests start included, go to files under build-asan/sanitizer-logs/; the script
# prints them and exits non-zero when a test failed or any report was written.
# Arguments go to ctest (e.g. -R tst_site).
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
build="${QUORIN_ASAN_DIR:-$here/build-asan}"
if [ ! -f "$build/build.ninja" ]; then
  cmake -S "$here" -B "$build" -G Ninja -DQUORIN_SANITIZE=address -DCMAKE_BUILD_TYPE=Debug
fi
cmake --build "$build" --parallel "$(nproc)"

logs="$build/sanitizer-logs"
rm -rf "$logs"
mkdir -p "$logs"
# The tests' own environment appends the leak suppressions (tools/lsan.supp).
export ASAN_OPTIONS="detect_leaks=1:log_path=$logs/asan:log_exe_name=1"
export UBSAN_OPTIONS="log_path=$logs/ubsan:log_exe_name=1"

cd "$build"
status=0
start=$SECONDS
ctest -j2 --output-on-failure --timeout 900 "$@" || status=$?
echo "ctest: $((SECONDS - start)) s"

pattern='ERROR: AddressSanitizer|ERROR: LeakSanitizer|runtime error:'
found=0
for f in "$logs"/*; do
  [ -e "$f" ] || continue
  if grep -qE "$pattern" "$f"; then
    echo "===== $(basename "$f")"
    cat "$f"
    found=1
  fi
done
if grep -qE "$pattern" Testing/Temporary/LastTest.log 2>/dev/null; then
  grep -nE "$pattern" Testing/Temporary/LastTest.log
  found=1
fi
if [ "$found" -ne 0 ]; then
  echo "sanitizer reports found (above)"
  status=1
else
  echo "no sanitizer reports"
fi
exit "$status"
