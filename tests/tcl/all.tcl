# all.tcl -- runs the Tcl test files with tcltest.
#   tclsh all.tcl ?-build BUILDDIR? ?tcltest options, e.g. -file entry.test?
# The build tree is handed to every test file through env(TAVIK_BUILD).
package require tcltest 2.5

set options {}
foreach {option value} $argv {
    if {$option eq "-build"} {
        set env(TAVIK_BUILD) [file normalize $value]
    } else {
        lappend options $option $value
    }
}
if {![info exists env(TAVIK_BUILD)]} {
    set env(TAVIK_BUILD) [file normalize [file join [file dirname [info script]] .. .. build]]
}
tcltest::configure -testdir [file dirname [file normalize [info script]]] {*}$options
exit [tcltest::runAllTests]
