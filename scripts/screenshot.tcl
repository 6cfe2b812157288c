# screenshot.tcl -- opens the simulator on a program, drives a few steps,
# and saves a picture of the screen. Run by scripts/screenshot.sh:
#   wish screenshot.tcl -- OUTPUT.png PROGRAM ?SETUP-SCRIPT?
lassign $argv output program setup
lappend auto_path $env(TAVIK_PACKAGE_DIR)
package require Pwish
set argv [list $program]
set panel [file rootname $program].iop
if {[file readable $panel]} { set argv [list -p $panel $program] }
set argc [llength $argv]
run_tavik
if {$setup ne ""} { eval $setup }
update
after 300 {
    update
    exec sh -c "xwd -root -display $env(DISPLAY) | convert xwd:- -trim +repage [list $output]"
    exit 0
}
