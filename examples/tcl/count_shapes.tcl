#!/usr/bin/env tclsh
# Counts the shapes of a design for each layer, and how much each kind contributes.
#
# usage: tclsh count_shapes.tcl LIBRARY DIRECTORY CELL VIEW
package require oa

proc usage {} {
    puts stderr "usage: tclsh count_shapes.tcl LIBRARY DIRECTORY CELL VIEW"
    exit 2
}

# The directory without links.
proc resolved {directory} {
    return [file dirname [file normalize [file join $directory member]]]
}

# The library of that name, which oahost and lib.defs may have opened already.
proc openLibrary {library directory} {
    set lib [oa::LibFind $library]
    if {$lib eq ""} {
        return [oa::LibOpen $library $directory]
    }
    if {[resolved $directory] ne [resolved [oa::getFullPath $lib]]} {
        puts stderr "library $library is open already, but from [oa::getFullPath $lib] instead of $directory"
        exit 1
    }
    return $lib
}

proc layerName {tech number} {
    if {$tech eq ""} {
        return $number
    }
    set layer [oa::LayerFind $tech $number]
    return [expr {$layer eq "" ? $number : [oa::getName $layer]}]
}

if {[llength $argv] != 4} {
    usage
}
lassign $argv library directory cell view
openLibrary $library $directory
set design [oa::DesignOpen $library $cell $view r]
set block [oa::getTopBlock $design]
set tech [oa::getTech $design]

set counts [dict create]
set shapes [oa::getShapes $block]
while {[set shape [oa::getNext $shapes]] != ""} {
    set name [layerName $tech [oa::getLayerNum $shape]]
    dict update counts $name kinds {
        dict incr kinds [oa::getType $shape]
    }
}
foreach name [lsort [dict keys $counts]] {
    set kinds [dict get $counts $name]
    puts [format "%-10s %5d  %s" $name [tcl::mathop::+ {*}[dict values $kinds]] [lsort -stride 2 $kinds]]
}
puts "total [oa::getCount [oa::getShapes $block]]"
oa::close $design
