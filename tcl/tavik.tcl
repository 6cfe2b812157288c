# tavik.tcl -- the host script of the simulator: loads the Pwish package and
# hands the command line (argc/argv, which Tk left alone after "--") to
# run_tavik. The tavik launcher names the build tree in TAVIK_PACKAGE_DIR;
# an installed package is found through the usual auto_path.
if {[info exists env(TAVIK_PACKAGE_DIR)]} {
    lappend auto_path $env(TAVIK_PACKAGE_DIR)
}
if {[catch {package require Pwish} message]} {
    puts stderr "tavik: cannot load the Pwish package: $message"
    exit 1
}
if {[catch {run_tavik} message]} {
    puts stderr "tavik: $message"
    exit 1
}
