#!/bin/sh
# screenshot.sh -- a picture of the simulator window, taken on a virtual X
# server: scripts/screenshot.sh [OUTPUT.png [PROGRAM [SETUP-SCRIPT]]]
# Without arguments it makes the README's picture of the compiled counter;
# TAVIK_SCREEN (480x400 by default) sizes the virtual screen.
# A panel file beside the program (examples/stopwatch.iop) is used, as the
# launcher does; SETUP-SCRIPT is Tcl run in the window before the picture.
here=$(cd "$(dirname "$0")/.." && pwd)
. "$here/scripts/deps.sh"
ensure_packages $TAVIK_BUILD_PACKAGES $TAVIK_RUN_PACKAGES $TAVIK_TEST_PACKAGES || exit 1
build_tree "$here" "$here/build" >/dev/null || exit 1
output=$(realpath -m "${1:-$here/docs/simulator.png}")
program=$(realpath -m "${2:-$here/build/examples/counter.dro}")
# Compose mode, three steps with incr = 2, so the counter shows a count.
setup=${3:-'set Global(auto_step) 0; set InputVars(incr) 2; .step invoke; .step invoke; .step invoke'}
mkdir -p "$(dirname "$output")"
export TAMSEL_INSTALL="${TAMSEL_INSTALL:-$here}" TAVIK_PACKAGE_DIR="$here/build"
cd "$(mktemp -d)" || exit 1
exec xvfb-run -a -s "-screen 0 ${TAVIK_SCREEN:-480x400}x24" \
  wish "$here/scripts/screenshot.tcl" -- "$output" "$program" "$setup"
