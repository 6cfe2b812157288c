#!/bin/sh
# screenshot.sh -- the README's picture of the simulator window, taken on a
# virtual X server: scripts/screenshot.sh [OUTPUT.png]
here=$(cd "$(dirname "$0")/.." && pwd)
. "$here/scripts/deps.sh"
ensure_packages $TAVIK_BUILD_PACKAGES $TAVIK_RUN_PACKAGES $TAVIK_TEST_PACKAGES || exit 1
build_tree "$here" "$here/build" >/dev/null || exit 1
output=$(realpath -m "${1:-$here/docs/simulator.png}")
mkdir -p "$(dirname "$output")"
export TAMSEL_INSTALL="${TAMSEL_INSTALL:-$here}" TAVIK_PACKAGE_DIR="$here/build"
cd "$(mktemp -d)" || exit 1
# Compose mode, three steps with incr = 2, so the window shows a count.
setup='set Global(auto_step) 0; set InputVars(incr) 2; .step invoke; .step invoke; .step invoke'
exec xvfb-run -a -s "-screen 0 420x300x24" \
  wish "$here/scripts/screenshot.tcl" -- "$output" "$here/build/examples/counter.dro" "$setup"
