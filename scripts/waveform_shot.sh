#!/bin/sh
# waveform_shot.sh -- the README's picture of a trace in GTKWave: runs the
# stopwatch example over examples/stopwatch.csv into a value change dump and
# photographs GTKWave showing it (laid out by examples/stopwatch.gtkw) on a
# virtual X server. scripts/waveform_shot.sh [OUTPUT.png]
here=$(cd "$(dirname "$0")/.." && pwd)
. "$here/scripts/deps.sh"
ensure_packages $TAVIK_BUILD_PACKAGES $TAVIK_TEST_PACKAGES || exit 1
build_tree "$here" "$here/build" -- tavik-run >/dev/null || exit 1
output=$(realpath -m "${1:-$here/docs/waveform.png}")
work=$(mktemp -d) || exit 1
"$here/build/tavik-run" "$here/examples/stopwatch.ec" "$here/examples/stopwatch.csv" --vcd "$work/stopwatch.vcd" || exit 1
cd "$work" && xvfb-run -a -s "-screen 0 1180x330x24" sh -c \
  "gtkwave -a '$here/examples/stopwatch.gtkw' stopwatch.vcd >/dev/null 2>&1 & sleep 4; import -window root '$output'"
