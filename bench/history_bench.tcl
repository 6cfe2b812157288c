# history_bench.tcl -- the window's history at its sizes of use: run in a
# wish (under a virtual X server) with
#
#   wish history_bench.tcl -- PROGRAM SCENARIO
#
# with TAVIK_BUILD naming the build tree and TAMSEL_INSTALL the source tree.
# It starts the simulator on PROGRAM, opens the chronogram, replays
# SCENARIO (answering "continue step" to every dialog) and times it, then
# times redraws of the chronogram over the recorded history at its start,
# middle and end, with and without locals, and replays SCENARIO again
# without the bool outputs' recolouring. Prints "replay_instants=
# replay_per_s= replay_redraws= redraw_ms= redraw_locals_ms=
# replay_bare_per_s= rss_kb=".
lappend auto_path $env(TAVIK_BUILD)
package require Pwish

lassign $argv program scenario
set argv [list $program]
set argc 1
run_tavik
update

tavik::chronogram
update
set drawn_before $tavik::chrono(drawn)
set start [clock microseconds]
tavik::replay $scenario continue
while {$tavik::replay(active)} { vwait tavik::replay(active) }
set seconds [expr {([clock microseconds] - $start) / 1e6}]
set instants $tavik::replay(done)
set redraws [expr {$tavik::chrono(drawn) - $drawn_before}]

# The slowest of the mean redraw times at three places of the history.
proc redraw_ms {} {
    set worst 0
    foreach place {0.0 0.5 1.0} {
        set tavik::chrono(follow) [expr {$place == 1.0}]
        .chronogram.c xview moveto $place
        update
        set us [lindex [time {tavik::Redraw; update idletasks} 10] 0]
        set worst [expr {max($worst, $us / 1000.0)}]
    }
    return $worst
}
set plain [redraw_ms]
tavik::chronogram -locals 1
set with_locals [redraw_ms]
# The same replay once more without the bool outputs' recolouring: the
# generated script's TraceBO makes Tk wait for the X server about four times
# an instant (see bench/README), so what is left is the window's own cost:
# the step, the outputs' texts, the recording and the replay's loop.
foreach name [array names OutputVars] { trace vdelete OutputVars($name) w TraceBO }
set start [clock microseconds]
tavik::replay $scenario continue
while {$tavik::replay(active)} { vwait tavik::replay(active) }
set bare_per_s [expr {$tavik::replay(done) / (([clock microseconds] - $start) / 1e6)}]

set status [open /proc/self/status]
regexp {VmRSS:\s+(\d+)} [read $status] -> rss_kb
close $status
puts [format "replay_instants=%d replay_per_s=%.0f replay_redraws=%d redraw_ms=%.1f redraw_locals_ms=%.1f replay_bare_per_s=%.0f rss_kb=%d" \
          $instants [expr {$instants / $seconds}] $redraws $plain $with_locals $bare_per_s $rss_kb]
exit 0
