# helpers.tcl -- shared by the test files: runs scenarios in child wish
# processes, since run_tavik and fatal diagnostics end their process.
package require tcltest 2.5
namespace import ::tcltest::*

set ::tavik_build $env(TAVIK_BUILD)
set ::tavik_source [file normalize [file join [file dirname [info script]] .. ..]]

proc read_file {path} {
    set f [open $path]
    try { return [read $f] } finally { close $f }
}

# run_child PROGRAM ARGS... -> {status stdout stderr}
proc run_child {args} {
    set out [makeFile {} child.out]
    set err [makeFile {} child.err]
    set status 0
    if {[catch {exec {*}$args >$out 2>$err} message options]} {
        set code [dict get $options -errorcode]
        if {[lindex $code 0] eq "CHILDSTATUS"} {
            set status [lindex $code 2]
        } else {
            set status $code
        }
    }
    set result [list $status [read_file $out] [read_file $err]]
    removeFile child.out
    removeFile child.err
    return $result
}

# The environment of a child: TAMSEL_INSTALL set to `install`, or unset
# when it is empty.
proc with_install {install body} {
    global env
    set saved [array get env TAMSEL_INSTALL]
    if {$install eq ""} {
        unset -nocomplain env(TAMSEL_INSTALL)
    } else {
        set env(TAMSEL_INSTALL) $install
    }
    try {
        uplevel 1 $body
    } finally {
        unset -nocomplain env(TAMSEL_INSTALL)
        array set env $saved
    }
}

# wish_script SCRIPT ?INSTALL? -> {status stdout stderr} of a child wish
# that runs SCRIPT after making the freshly built package findable.
proc wish_script {script {install ""}} {
    if {$install eq ""} { set install $::tavik_source }
    set file [makeFile "lappend auto_path [list $::tavik_build]\n$script\nexit 0\n" child.tcl]
    if {$install eq "-unset"} { set install "" }
    with_install $install {
        set result [run_child wish $file]
    }
    removeFile child.tcl
    return $result
}

# tavik ARGS... -> {status stdout stderr} of the launcher as a user types it.
proc tavik {args} {
    set ::env(TAVIK_BUILD_DIR) $::tavik_build
    with_install $::tavik_source {
        set result [run_child [file join $::tavik_source tavik] {*}$args]
    }
    return $result
}

# A fresh temporary directory for a child's current directory.
proc scratch_dir {} {
    set dir [file join [temporaryDirectory] scratch[incr ::scratch_count]-[pid]]
    file delete -force $dir
    file mkdir $dir
    lappend ::scratch_dirs $dir
    return $dir
}

proc remove_scratch_dirs {} {
    foreach dir $::scratch_dirs { file delete -force $dir }
    set ::scratch_dirs {}
}
set ::scratch_dirs {}

# A compiled program of the build tree: an example, or a test program.
proc example_dro {name} { file join $::tavik_build examples $name.dro }
proc test_dro {name} { file join $::tavik_build tests dro $name.dro }

# session WORDS ACTIONS ?DIR? ?HOME? -> {status stdout stderr}: a child wish
# that runs the simulator with the command line WORDS in DIR (its PWD too),
# then ACTIONS, then exits 0. HOME defaults to DIR.
proc session {words actions {dir ""} {home ""}} {
    global env
    if {$dir eq ""} { set dir [scratch_dir] }
    if {$home eq ""} { set home $dir }
    set script "package require Pwish
cd [list $dir]
set argv [list $words]
set argc [llength $words]
run_tavik
$actions"
    # Unsetting the whole env array would cut it off from the process
    # environment: save and restore the two variables one by one.
    set saved [list $env(PWD) $env(HOME)]
    set env(PWD) $dir
    set env(HOME) $home
    try {
        return [wish_script $script]
    } finally {
        lassign $saved env(PWD) env(HOME)
    }
}
