# history.tcl -- the window's History menu: the chronogram of the instants
# recorded since the start, saving them as a scenario, replaying a
# scenario, and exporting the trace. The session sources it once the window
# exists. Every action is a command of the namespace tavik, so that
# resource files and tests can use it; the recorded data come from the
# command tavik_history, which the session provides.

namespace eval tavik {
    # The chronogram: pixels per instant, the lanes shown, whether reals are
    # plotted, whether the view follows the last instant, and the pending
    # redraw.
    variable chrono
    array set chrono {px 24 locals 0 plot 0 follow 1 pending {} drawn 0}
    # The replay: its policy (stop or continue), progress and controls.
    variable replay
    array set replay {active 0 paused 0 policy stop mode replay condition {} done 0 shown 0 total 0 problems 0
                      dialogs 0 stop_asked 0 status {}}
    variable lane_height 24
    variable plot_height 44
    variable name_width 130
    variable top_margin 32  ;# instant numbers, then reset marks
}

# --- the menu --------------------------------------------------------------

proc tavik::AddMenu {} {
    if {![winfo exists .menu]} return
    menubutton .menu.history -menu .menu.history.m -text History -underline 0
    set ::Global(history_menu) .menu.history.m
    set m [menu .menu.history.m]
    $m add command -label "Chronogram" -underline 0 -command tavik::chronogram
    $m add command -label "Step Back" -underline 5 -accelerator Ctrl+Z -command tavik::step_back
    $m add command -label "Run..." -underline 0 -command tavik::RunDialog
    $m add separator
    $m add command -label "Save Scenario..." -underline 0 -command {tavik::Guard tavik::save_scenario}
    $m add command -label "Replay Scenario..." -underline 0 -command {tavik::Guard tavik::replay}
    $m add separator
    $m add command -label "Export Trace (CSV)..." -underline 7 -command {tavik::Guard {tavik::export_trace {} csv}}
    $m add command -label "Export Trace (VCD)..." -underline 14 -command {tavik::Guard {tavik::export_trace {} vcd}}
    if {[winfo exists .menu.clocks]} {
        pack .menu.history -in .menu -side left -after .menu.clocks
    } else {
        pack .menu.history -in .menu -side left
    }
}

# tavik::step_back -- puts the program, the panel, the step counter and the
# history back where they were before the last completed instant (not
# before the last reset); 1 when it did, 0 when there was no instant to undo.
proc tavik::step_back {} {
    variable replay
    # The outputs are written as a step writes them, into the variables of
    # the calling scope: make it the global one, as TreatStep does.
    global OutputVars
    if {$replay(active)} { return 0 }
    return [tavik_step_back]
}
bind all <Control-z> tavik::step_back

# A menu action's error is shown to the user, not as a Tcl error.
proc tavik::Guard {script} {
    if {[catch {uplevel #0 $script} message]} {
        tk_messageBox -icon error -title History -message $message
    }
}

# The file to read or write: FILE itself, else the user's choice in Tk's
# file dialog ("" when cancelled).
proc tavik::FileOf {file save extension title} {
    if {$file ne ""} { return $file }
    set types [list [list "[string toupper $extension] files" .$extension] {{All files} *}]
    if {$save} {
        return [tk_getSaveFile -title $title -defaultextension .$extension -filetypes $types \
                    -initialfile $::Global(module_name).$extension]
    }
    return [tk_getOpenFile -title $title -filetypes $types]
}

# tavik::save_scenario ?FILE? -- the inputs of every recorded instant, and
# the resets, as a scenario; returns the file ("" when cancelled).
proc tavik::save_scenario {{file ""}} {
    set file [FileOf $file 1 csv "Save the scenario"]
    if {$file ne ""} { tavik_history save_scenario $file }
    return $file
}

# tavik::export_trace ?FILE? ?csv|vcd? -- the recorded trace, locals
# included; returns the file ("" when cancelled).
proc tavik::export_trace {{file ""} {format csv}} {
    set file [FileOf $file 1 $format "Export the trace"]
    if {$file ne ""} { tavik_history export $file $format }
    return $file
}

# --- replay ----------------------------------------------------------------

# tavik::replay ?FILE? ?stop|continue? -- runs every instant of a scenario
# as the user would: its inputs set in InputVars, then TreatStep (a reset,
# TreatReset). At a run-time problem, `stop` shows the dialog and stops
# after that instant; `continue` answers "continue step" to every dialog.
# Runs in the background; returns the number of instants to run.
proc tavik::replay {{file ""} {policy ""}} {
    variable replay
    if {$replay(active)} { error "a replay is already running" }
    set file [FileOf $file 0 csv "Replay a scenario"]
    if {$file eq ""} { return 0 }
    if {$policy eq ""} {
        set choice [tk_dialog .replay_choice "Replay" \
            "When an instant of [file tail $file] has a run-time problem:" \
            questhead 0 "Stop there" "Continue step to all" "Cancel"]
        if {$choice < 0 || $choice == 2} { return 0 }
        set policy [lindex {stop continue} $choice]
    }
    if {$policy ni {stop continue}} { error "the replay policy is stop or continue, not '$policy'" }
    set total [tavik_history replay_open $file]
    array set replay [list active 1 paused 0 policy $policy mode replay condition {} done 0 shown 0 \
                          total $total problems 0 dialogs 0 stop_asked 0 status "replaying [file tail $file]"]
    WrapDialogs 1
    ReplayWindow
    after idle tavik::ReplayChunk
    return $total
}

# tavik::replay_pause -- pauses a running replay, or resumes a paused one.
proc tavik::replay_pause {} {
    variable replay
    if {!$replay(active)} return
    set replay(paused) [expr {!$replay(paused)}]
    if {[winfo exists .replay.pause]} {
        .replay.pause configure -text [expr {$replay(paused) ? "Resume" : "Pause"}]
    }
    if {!$replay(paused)} { after idle tavik::ReplayChunk }
}

# tavik::replay_stop -- ends a running replay after the current instant.
proc tavik::replay_stop {} {
    variable replay
    if {$replay(active)} { ReplayEnd "stopped at instant $replay(done) of $replay(total)" }
}

# Runs instants for about 40 ms, then lets the window breathe.
proc tavik::ReplayChunk {} {
    variable replay
    if {!$replay(active) || $replay(paused)} return
    set until [expr {[clock milliseconds] + 40}]
    while {[clock milliseconds] < $until} {
        set event [NextEvent]
        switch -- [lindex $event 0] {
            end {
                if {$replay(mode) eq "replay"} {
                    ReplayEnd "replayed $replay(done) instants, $replay(problems) with run-time problems"
                } elseif {$replay(condition) eq ""} {
                    ReplayEnd "ran $replay(done) instants"
                } else {
                    ReplayEnd "ran $replay(done) instants, the condition did not hold"
                }
                return
            }
            reset { TreatReset }
            instant {
                # An input that keeps its value is left alone, as a user
                # leaves a widget: its widget has nothing to redraw.
                foreach name $::Global(input_names) value [lindex $event 1] {
                    if {$::InputVars($name) ne $value} { set ::InputVars($name) $value }
                }
                set dialogs $replay(dialogs)
                set recorded [tavik_history size]
                TreatStep
                incr replay(done)
                if {$replay(dialogs) != $dialogs} { incr replay(problems) }
                if {$replay(stop_asked)} {
                    ReplayEnd "stopped at instant $replay(done) of $replay(total): a run-time problem"
                    return
                }
                if {$replay(condition) ne "" && [tavik_history size] > $recorded && [tavik_history until_holds]} {
                    ReplayEnd "the condition holds at instant $replay(done) (step $::Global(step_ctr))"
                    return
                }
            }
        }
    }
    # The progress shown moves once a chunk: a widget traced at every
    # instant would cost each instant its redisplay's bookkeeping.
    set replay(status) [expr {$replay(total) > 0 ? "instant $replay(done) of $replay(total)" : "instant $replay(done)"}]
    set replay(shown) $replay(done)
    after 1 tavik::ReplayChunk
}

# The next event of a replay's scenario; a run's next instant keeps the
# inputs as they are set, up to its number of instants (0: no bound).
proc tavik::NextEvent {} {
    variable replay
    if {$replay(mode) eq "replay"} { return [tavik_history replay_next] }
    if {$replay(total) > 0 && $replay(done) >= $replay(total)} { return end }
    return [list instant [lmap name $::Global(input_names) { set ::InputVars($name) }]]
}

# tavik::run ?-instants N? ?-until CONDITION? -- runs instants with the
# inputs as they are set, at most N (0 or none: no bound, then a condition
# is needed), until CONDITION, a boolean expression in ec over the program's
# inputs, outputs and recorded locals, holds. Each instant is a Step; at a
# run-time problem its dialog is shown and the run stops after it. Runs in
# the background; an error in the condition is a Tcl error that says where.
proc tavik::run {args} {
    variable replay
    if {$replay(active)} { error "a run or a replay is already going on" }
    set instants 0
    set condition ""
    foreach {option value} $args {
        switch -- $option {
            -instants {
                if {![string is integer -strict $value] || $value < 0} {
                    error "-instants needs a whole number of at least 0, not '$value'"
                }
                set instants $value
            }
            -until {
                # Compiled at once: an empty condition is refused, not ignored.
                tavik_history until $value
                set condition [string trim $value]
            }
            default { error "bad option '$option': -instants or -until" }
        }
    }
    if {$instants == 0 && $condition eq ""} { error "give a number of instants, a condition, or both" }
    array set replay [list active 1 paused 0 policy stop mode run condition $condition done 0 shown 0 \
                          total $instants problems 0 dialogs 0 stop_asked 0 \
                          status [expr {$condition eq "" ? "running" : "running until $condition"}]]
    WrapDialogs 1
    ReplayWindow
    after idle tavik::ReplayChunk
    return $instants
}

# The Run dialog: a number of instants and a condition, and what went wrong.
proc tavik::RunDialog {} {
    variable run_form
    if {[winfo exists .run]} { raise .run; return }
    # The entries would make the fields, empty: the defaults come first.
    if {![info exists run_form(instants)]} { array set run_form {instants 100 condition {} error {}} }
    toplevel .run
    wm title .run "Run - $::Global(module_name)"
    label .run.ln -text "Instants (0: no bound)" -anchor w
    entry .run.n -textvariable tavik::run_form(instants) -width 10
    label .run.lc -text "Until (ec, e.g. count >= 10)" -anchor w
    entry .run.c -textvariable tavik::run_form(condition) -width 40
    label .run.error -textvariable tavik::run_form(error) -foreground #c00000 -anchor w -wraplength 360 -justify left
    button .run.go -text Run -command tavik::RunFromDialog
    button .run.close -text Close -command {destroy .run}
    grid .run.ln .run.n -sticky w -padx 4 -pady 2
    grid .run.lc .run.c -sticky we -padx 4 -pady 2
    grid .run.error - -sticky we -padx 4
    grid .run.go .run.close -pady 6
    bind .run.c <Return> tavik::RunFromDialog
}

proc tavik::RunFromDialog {} {
    variable run_form
    set run_form(error) ""
    set instants [string trim $run_form(instants)]
    set words [list -instants [expr {$instants eq "" ? 0 : $instants}]]
    if {[string trim $run_form(condition)] ne ""} { lappend words -until $run_form(condition) }
    if {[catch {run {*}$words} message]} { set run_form(error) $message }
}

proc tavik::ReplayEnd {status} {
    variable replay
    set replay(shown) $replay(done)
    set replay(active) 0
    set replay(status) $status
    WrapDialogs 0
    if {[winfo exists .replay]} {
        .replay.pause configure -state disabled
        .replay.stop configure -text Close -command {destroy .replay}
    }
    Verbose "#replay: $status"
}

# The replay's own window: progress, Pause and Stop.
proc tavik::ReplayWindow {} {
    variable replay
    destroy .replay
    toplevel .replay
    wm title .replay "[expr {$replay(mode) eq "run" ? "Run" : "Replay"}] - $::Global(module_name)"
    label .replay.status -textvariable tavik::replay(status) -anchor w -width 48
    ttk::progressbar .replay.bar -length 320 -variable tavik::replay(shown) -maximum [expr {max(1, $replay(total))}]
    button .replay.pause -text Pause -command tavik::replay_pause
    button .replay.stop -text Stop -command tavik::replay_stop
    grid .replay.status - -sticky we -padx 6 -pady 4
    grid .replay.bar - -sticky we -padx 6
    grid .replay.pause .replay.stop -padx 6 -pady 6
}

# During a replay, run-time dialogs are answered by its policy: tk_dialog
# is wrapped while it runs, and the original put back after.
proc tavik::WrapDialogs {on} {
    if {$on} {
        if {[info commands ::tavik::RealDialog] ne ""} return
        auto_load tk_dialog
        rename ::tk_dialog ::tavik::RealDialog
        proc ::tk_dialog {w title text bitmap default args} {
            tavik::Answer $w $title $text $bitmap $default $args
        }
    } elseif {[info commands ::tavik::RealDialog] ne ""} {
        rename ::tk_dialog {}
        rename ::tavik::RealDialog ::tk_dialog
    }
}

proc tavik::Answer {w title text bitmap default buttons} {
    variable replay
    if {$replay(active) && $title in {"RUN TIME ERROR" "MAJOR RUN TIME ERROR"}} {
        incr replay(dialogs)
        if {$replay(policy) eq "continue"} {
            set answer [lsearch -exact $buttons "continue step"]
            return [expr {$answer < 0 ? 0 : $answer}]
        }
        set replay(stop_asked) 1
    }
    return [RealDialog $w $title $text $bitmap $default {*}$buttons]
}

# --- the chronogram --------------------------------------------------------

# tavik::chronogram ?-locals BOOL? ?-plot BOOL? ?-px PIXELS? -- shows the
# chronogram window (or brings it up) with these settings; returns its path.
proc tavik::chronogram {args} {
    variable chrono
    foreach {option value} $args {
        switch -- $option {
            -locals { set chrono(locals) $value }
            -plot { set chrono(plot) $value }
            -px { set chrono(px) [expr {max(2, min(200, $value))}] }
            default { error "bad option '$option': -locals, -plot or -px" }
        }
    }
    if {![winfo exists .chronogram]} { ChronogramWindow }
    wm deiconify .chronogram
    raise .chronogram
    Redraw
    return .chronogram
}

proc tavik::ChronogramWindow {} {
    variable name_width
    toplevel .chronogram
    wm title .chronogram "Chronogram - $::Global(module_name)"
    set f [frame .chronogram.tools]
    button $f.in -text "Zoom in" -command {tavik::Zoom 2.0}
    button $f.out -text "Zoom out" -command {tavik::Zoom 0.5}
    checkbutton $f.locals -text Locals -variable tavik::chrono(locals) -command tavik::Redraw
    checkbutton $f.plot -text "Plot reals" -variable tavik::chrono(plot) -command tavik::Redraw
    checkbutton $f.follow -text "Follow" -variable tavik::chrono(follow) -command tavik::Redraw
    pack $f.in $f.out $f.locals $f.plot $f.follow -side left -padx 2 -pady 2
    canvas .chronogram.names -width $name_width -height 300 -background white -highlightthickness 0 \
        -yscrollcommand {.chronogram.y set}
    canvas .chronogram.c -width 640 -height 300 -background white -highlightthickness 0 \
        -xscrollcommand {tavik::Scrolled} -yscrollcommand {.chronogram.y set}
    scrollbar .chronogram.x -orient horizontal -command {.chronogram.c xview}
    scrollbar .chronogram.y -orient vertical -command {tavik::ScrollLanes}
    label .chronogram.info -anchor w -justify left -textvariable tavik::chrono(info) -font TkFixedFont \
        -wraplength 760
    grid $f - - -sticky w
    grid .chronogram.names .chronogram.c .chronogram.y -sticky news
    grid x .chronogram.x -sticky we
    grid .chronogram.info - - -sticky we
    grid columnconfigure .chronogram 1 -weight 1
    grid rowconfigure .chronogram 1 -weight 1
    bind .chronogram.c <Configure> tavik::Redraw
    bind .chronogram.c <Motion> {tavik::Point %x}
    bind .chronogram.c <MouseWheel> {tavik::Zoom [expr {%D > 0 ? 1.25 : 0.8}]}
    bind .chronogram.c <Button-4> {tavik::Zoom 1.25}
    bind .chronogram.c <Button-5> {tavik::Zoom 0.8}
    bind .chronogram.c <Shift-Button-4> {.chronogram.c xview scroll -5 units}
    bind .chronogram.c <Shift-Button-5> {.chronogram.c xview scroll 5 units}
}

proc tavik::ScrollLanes {args} {
    .chronogram.c yview {*}$args
    .chronogram.names yview {*}$args
    Schedule
}

# A scroll by the user: the view follows the last instant only while it
# shows it; what comes into view is drawn.
proc tavik::Scrolled {first last} {
    variable chrono
    .chronogram.x set $first $last
    if {[info exists chrono(view)] && $chrono(view) eq [list $first $last]} return
    set chrono(view) [list $first $last]
    set chrono(follow) [expr {$last >= 0.9999}]
    Schedule
}

proc tavik::Zoom {factor} {
    variable chrono
    set chrono(px) [expr {max(2.0, min(200.0, $chrono(px) * $factor))}]
    Redraw
}

# Redraws at most about 30 times a second, however often asked (4 times
# while a replay runs).
proc tavik::Schedule {} {
    variable chrono
    variable replay
    if {$chrono(pending) eq "" && [winfo exists .chronogram]} {
        # A replay steps as fast as it can: fewer redraws leave it the time.
        set chrono(pending) [after [expr {$replay(active) ? 250 : 33}] tavik::Redraw]
    }
}

# The lanes shown: {name kind type column} for each, column being its place
# in a row of tavik_history.
proc tavik::Lanes {} {
    variable chrono
    set lanes {}
    set column 1
    foreach flow [tavik_history flows] {
        lassign $flow name kind type
        if {$kind ne "local" || $chrono(locals)} { lappend lanes [list $name $kind $type $column] }
        incr column
    }
    return $lanes
}

proc tavik::LaneHeight {type} {
    variable chrono
    expr {$type eq "real" && $chrono(plot) ? $tavik::plot_height : $tavik::lane_height}
}

# Draws the instants in view, and the lanes' names.
proc tavik::Redraw {} {
    variable chrono
    set chrono(pending) ""
    if {![winfo exists .chronogram]} return
    set c .chronogram.c
    set px $chrono(px)
    set size [tavik_history size]
    set lanes [Lanes]
    set height $tavik::top_margin
    foreach lane $lanes { incr height [LaneHeight [lindex $lane 2]] }
    set width [expr {max(($size + 1) * $px, [winfo width $c])}]
    $c configure -scrollregion [list 0 0 $width $height]
    .chronogram.names configure -scrollregion [list 0 0 $tavik::name_width $height]
    set view [winfo width $c]
    if {$chrono(follow)} {
        $c xview moveto [expr {max(0.0, ($width - $view) / double($width))}]
        set chrono(view) [$c xview]
    }
    set left [$c canvasx 0]
    set first [expr {max(0, int($left / $px) - 1)}]
    set last [expr {min($size, int(($left + $view) / $px) + 2)}]
    $c delete all
    .chronogram.names delete all
    # Instant numbers along the top, every few instants.
    set every [expr {max(1, int(ceil(40.0 / $px)))}]
    for {set k $first} {$k < $last} {incr k} {
        if {($k + 1) % $every == 0 || $every == 1} {
            $c create text [expr {$k * $px + 2}] 2 -anchor nw -text [expr {$k + 1}] -fill gray40 -font TkSmallCaptionFont
        }
    }
    # The current instant: the last one recorded.
    if {$size > 0 && $last == $size} {
        $c create rectangle [expr {($size - 1) * $px}] 0 [expr {$size * $px}] $height -fill #fff6c8 -outline {}
    }
    set rows [tavik_history rows [expr {max(0, $first - 1)}] $last]
    if {$first == 0} { set rows [linsert $rows 0 {}] }
    # Only the lanes in view are drawn, as only the instants in view are.
    set top [$c canvasy 0]
    set bottom [expr {$top + [winfo height $c]}]
    set y $tavik::top_margin
    foreach lane $lanes {
        lassign $lane name kind type column
        set h [LaneHeight $type]
        if {$y + $h >= $top && $y <= $bottom} {
            .chronogram.names create text 4 [expr {$y + $h / 2}] -anchor w -text $name \
                -fill [dict get {input #1f4e9a output #000000 local #555555 assertion #7a3b00} $kind]
            $c create line 0 [expr {$y + $h}] $width [expr {$y + $h}] -fill #e4e4e4
            DrawLane $c $rows $first $column $type $kind $y $h $px
        }
        incr y $h
    }
    # Resets: a line before each instant that follows one.
    set k [expr {$first - 1}]
    foreach row $rows {
        if {$row ne "" && [lindex $row 0]} {
            set x [expr {$k * $px}]
            $c create line $x 16 $x $height -fill #c00000 -dash {4 2} -width 2 -tags reset
            $c create text [expr {$x + 2}] 16 -anchor nw -text reset -fill #c00000 -font TkSmallCaptionFont -tags reset
        }
        incr k
    }
    set chrono(drawn) [expr {$chrono(drawn) + 1}]
}

# One lane over the instants in view. `rows` starts with the instant
# before the first in view ({} when there is none). Equal values in a row
# make one run, drawn as one item: a bool as a high or low line, a number
# as a box with its value written where it starts, nil and divbyzero (and
# a false assertion) as a red box that names them; absent instants are
# gaps. With the plot on, reals are a curve instead.
proc tavik::DrawLane {c rows first column type kind y h px} {
    variable chrono
    set top [expr {$y + 4}]
    set bottom [expr {$y + $h - 4}]
    set middle [expr {($top + $bottom) / 2}]
    set logic [expr {$type eq "bool" || $kind eq "assertion"}]
    set plot [expr {$type eq "real" && $chrono(plot)}]
    if {$plot} { lassign [Range $rows $column] low high }
    set k [expr {$first - 2}]
    set run {}
    set run_x [expr {$first * $px}]
    set wave {}
    set curve {}
    # A last row of {} ends the last run.
    foreach row [concat $rows [list {}]] {
        incr k
        set value [expr {$row eq "" ? "" : [lindex $row $column]}]
        set x [expr {$k * $px}]
        if {$k < $first && $row ne ""} {
            set run $value
            continue
        }
        if {$kind eq "assertion" && $value eq "0"} { set value false }
        if {$plot && $row ne "" && $value ni {"" nil divbyzero}} {
            lappend curve [expr {$x + $px / 2.0}] \
                [expr {$high > $low ? $bottom - ($value - $low) / ($high - $low) * ($bottom - $top) : $middle}]
        } elseif {$plot} {
            if {[llength $curve] >= 4} { $c create line {*}$curve -fill #1f4e9a -width 2 -tags plot }
            set curve {}
        }
        if {$value eq $run && $row ne ""} continue
        # The run that ends here, from where it began or from the view's edge.
        set left [expr {max($run_x, $first * $px)}]
        if {$run in {nil divbyzero false}} {
            $c create rectangle $left $top $x $bottom -fill #e00000 -outline #800000 -tags problem
            # Named in full where it fits, else shortly ("/0" for divbyzero).
            set name [expr {$x - $left >= 7 * [string length $run] ? $run : [dict get {nil nil divbyzero /0 false F} $run]}]
            if {$x - $left >= 7 * [string length $name]} {
                $c create text [expr {($left + $x) / 2}] $middle -text $name -fill white \
                    -font TkSmallCaptionFont -tags problem
            }
        } elseif {$logic && $run in {0 1}} {
            set level [expr {$run ? $top : $bottom}]
            lappend wave $left $level $x $level
        } elseif {$run ne "" && !$plot && $x > $left} {
            $c create rectangle $left $top $x $bottom -outline #1f4e9a -tags value
            if {$x - $left >= 7 * [string length $run] + 4} {
                $c create text [expr {$left + 3}] $middle -anchor w -text $run -font TkSmallCaptionFont -tags value
            }
        }
        if {!($logic && $value in {0 1}) && [llength $wave] >= 4} {
            $c create line {*}$wave -fill #00801c -width 2 -tags level
            set wave {}
        }
        set run $value
        set run_x $x
    }
}

# The lowest and highest number of a column over `rows`.
proc tavik::Range {rows column} {
    set low {}
    set high {}
    foreach row $rows {
        set v [lindex $row $column]
        if {![string is double -strict $v] || $v in {NaN Inf -Inf}} continue
        if {$low eq "" || $v < $low} { set low $v }
        if {$high eq "" || $v > $high} { set high $v }
    }
    if {$low eq ""} { return {0 1} }
    return [list $low $high]
}

# Every value of the instant under the pointer.
proc tavik::Point {x} {
    variable chrono
    set k [expr {int([.chronogram.c canvasx $x] / $chrono(px))}]
    if {$k < 0 || $k >= [tavik_history size]} {
        set chrono(info) ""
        return
    }
    set row [lindex [tavik_history rows $k [expr {$k + 1}]] 0]
    set text "instant [expr {$k + 1}][expr {[lindex $row 0] ? " (after a reset)" : ""}]:"
    set column 1
    foreach flow [tavik_history flows] {
        set value [lindex $row $column]
        append text " [lindex $flow 0]=[expr {$value eq "" ? "absent" : $value}]"
        incr column
    }
    set chrono(info) $text
}

# The chronogram follows every step and reset, coalesced.
trace add variable ::Global(step_ctr) write {apply {args { tavik::Schedule }}}
tavik::AddMenu
