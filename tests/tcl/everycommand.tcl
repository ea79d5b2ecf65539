# Calls every command with every number of arguments that one of its forms takes, and one more, all of them wrong. Each call
# must end, with a Tcl error that says something or with a result. Prints what it did; a crash shows in the exit code.
package require oa

oa::LibCreate every [pwd]/every
set tech [oa::TechCreate every]
set design [oa::DesignOpen every cell layout [oa::ViewTypeGet maskLayout] w]
set block [oa::BlockCreate $design]
set dead [oa::RectCreate $block 1 1 {{0 0} {1 1}}]
oa::destroy $dead
set box [oa::Box 1 2 3 4]
set closed [oa::getShapes $block]
set wrong [list {} nonsense oa:0x10 $dead -1 3000000000 1.5 {{1 2} {3 4}} {{1 2} R90} "\{" $box $closed $block $tech \
    [oa::ViewTypeGet netlist] [oa::NativeNS] oa:Box:0xfffff]

set commands [info commands ::oa::*]
set calls 0
set accepting {}
foreach command $commands {
    set counts {}
    foreach form [split [oa::help $command] \n] {
        set parameters [expr {[llength $form] - 1}]
        for {set count 0} {$count <= $parameters + 1} {incr count} {
            dict set counts $count 1
        }
    }
    set refused 0
    foreach count [dict keys $counts] {
        foreach first $wrong {
            foreach others $wrong {
                set arguments [lrange [list $first {*}[lrepeat 20 $others]] 0 $count-1]
                set code [catch {{*}$command {*}$arguments} message]
                incr calls
                if {$code == 1} {
                    incr refused
                    if {$message eq "" || [lindex $errorCode 0] ni {OA TCL}} {
                        puts "$command $arguments: \"$message\" $errorCode"
                    }
                } elseif {$code != 0} {
                    puts "$command $arguments: completion code $code"
                }
                if {$count < 2} break
            }
            if {$count < 1} break
        }
    }
    if {$refused == 0} {
        lappend accepting $command
    }
}
puts "refusing nothing: $accepting"
puts "commands: [llength $commands]"
oa::LibCreate after [pwd]/after
oa::TechCreate after
set last [oa::BlockCreate [oa::DesignOpen after last layout [oa::ViewTypeGet maskLayout] w]]
puts "alive: [oa::getBBox [oa::RectCreate $last 1 1 {{0 0} {1 1}}]]"
