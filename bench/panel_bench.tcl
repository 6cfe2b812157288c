# panel_bench.tcl -- the cost of one step driven from Tcl, as the panel
# drives it: run in a wish (under a virtual X server) with
#
#   wish panel_bench.tcl -- PROGRAM SECONDS
#
# with TAVIK_BUILD naming the build tree and TAMSEL_INSTALL the source tree.
# It starts the simulator on PROGRAM, then calls "<node>_step" in a loop for
# about SECONDS, changing one input through InputVars before each call, so
# that every step moves the inputs in and the outputs out through the Tcl
# arrays. Prints "panel_steps= panel_us= panel_per_s= dialogs=".
lappend auto_path $env(TAVIK_BUILD)
package require Pwish

lassign $argv program seconds
set node [file rootname [file tail $program]]
set argv [list $program]
set argc 1

# A run-time error dialog would wait for a click: count it and go on, so
# that a program with problems shows in the figures instead of hanging.
set dialogs 0
proc tk_dialog {args} {
    incr ::dialogs
    return 1
}

run_tavik
update

# The int inputs, read from the node's header (one name per declaration, as
# the generator writes them); the one changed at each step goes round them.
set f [open $program]
regexp {node[^(]*\(([^)]*)\)} [read $f] -> header
close $f
set changing {}
foreach {-> name} [regexp -all -inline {(\w+): int\M} $header] { lappend changing $name }
if {[llength $changing] == 0} {
    puts stderr "panel_bench: no int input to change in $program"
    exit 1
}

set steps 0
set limit [expr {int($seconds * 1000000)}]
set start [clock microseconds]
while {1} {
    for {set batch 0} {$batch < 20} {incr batch} {
        set name [lindex $changing [expr {$steps % [llength $changing]}]]
        set InputVars($name) [expr {$steps % 200 - 100}]
        ${node}_step
        incr steps
    }
    if {[clock microseconds] - $start >= $limit} break
}
set elapsed [expr {[clock microseconds] - $start}]
puts [format "panel_steps=%d panel_us=%.2f panel_per_s=%.0f dialogs=%d outputs=%d" \
          $steps [expr {double($elapsed) / $steps}] [expr {$steps * 1e6 / $elapsed}] \
          $dialogs [llength [array names OutputVars]]]
exit 0
