#!/usr/bin/env tclsh
# Makes a library with a meander resistor as a parametric cell that is drawn by a script, and a layout that places three
# variants of it.
#
# usage: tclsh resistor.tcl LIBRARY DIRECTORY
#
#   LIBRARY    the name of the new library
#   DIRECTORY  where it is made; must not exist yet
package require oa

proc usage {} {
    puts stderr "usage: tclsh resistor.tcl LIBRARY DIRECTORY"
    exit 2
}

set layers {poly 3 poly  contact 4 cut  metal1 5 metal}

# Vertical segments side by side, joined to a meander, with a contacted head at either end. Heads grow away from the
# meander, so that they never meet a neighbouring segment.
#
#        +----+   +---- B     w, l             width and height of a segment
#        |    |   |           segments         how many
#        |    |   |           spacing          between neighbouring segments
#   A ---+    +---+           contact...       side, distance and enclosure of contacts
#
# This is what is stored with the cell: the arguments and the body of a procedure. All lengths are user units.
set meander {design {
    foreach parameter [oa::getParams $design] {
        lassign $parameter name type value
        set $name $value
    }
    if {$segments < 1 || $segments > 10000} {
        error "segments is $segments, expected 1 to 10000"
    }
    foreach name {w l spacing contactSize contactSpacing} {
        if {[set $name] <= 0} {
            error "$name is [set $name], expected more than 0"
        }
    }
    if {$segments > 1 && $l < $w + $spacing} {
        error "l is $l, expected at least [expr {$w + $spacing}]"
    }
    set block [oa::BlockCreate $design]
    set drawing $oa::oavPurposeNumberDrawing
    set pin $drawing
    set tech [oa::getTech $design]
    if {$tech ne "" && [oa::PurposeFind $tech pin] ne ""} {
        set pin [oa::getNumber [oa::PurposeFind $tech pin]]
    }

    # Contacts fill a box as far as they fit, in its middle.
    proc contacts {block layer size spacing enclosure left bottom right top} {
        set pitch [expr {$size + $spacing}]
        set columns [expr {int(($right - $left - 2 * $enclosure + $spacing) / $pitch + 1e-9)}]
        set rows [expr {int(($top - $bottom - 2 * $enclosure + $spacing) / $pitch + 1e-9)}]
        set firstX [expr {$left + ($right - $left - $columns * $pitch + $spacing) / 2.}]
        set firstY [expr {$bottom + ($top - $bottom - $rows * $pitch + $spacing) / 2.}]
        for {set row 0} {$row < $rows} {incr row} {
            for {set column 0} {$column < $columns} {incr column} {
                set x [expr {$firstX + $column * $pitch}]
                set y [expr {$firstY + $row * $pitch}]
                oa::RectCreate $block $layer $oa::oavPurposeNumberDrawing \
                    [list [list $x $y] [list [expr {$x + $size}] [expr {$y + $size}]]]
            }
        }
    }

    set pitch [expr {$w + $spacing}]
    for {set i 0} {$i < $segments} {incr i} {
        set left [expr {$i * $pitch}]
        set right [expr {$left + $w}]
        oa::RectCreate $block $bodyLayer $drawing [list [list $left 0] [list $right $l]]
        if {$i < $segments - 1} {
            set bottom [expr {$i % 2 == 0 ? $l - $w : 0}]
            oa::RectCreate $block $bodyLayer $drawing \
                [list [list $right $bottom] [list [expr {$right + $spacing}] [expr {$bottom + $w}]]]
        }
    }

    set room [expr {$contactSize + 2 * $contactEnclosure}]
    set headWidth [expr {max($w, $room)}]
    set last [expr {($segments - 1) * $pitch}]
    set lastBottom [expr {$segments % 2 == 1 ? $l : -$room}]
    foreach {name left bottom} [list A [expr {$w - $headWidth}] -$room B $last $lastBottom] {
        set right [expr {$left + $headWidth}]
        set top [expr {$bottom + $room}]
        set box [list [list $left $bottom] [list $right $top]]
        oa::RectCreate $block $bodyLayer $drawing $box
        contacts $block $contactLayer $contactSize $contactSpacing $contactEnclosure $left $bottom $right $top
        set net [oa::ScalarNetCreate $block $name]
        oa::addToNet [oa::RectCreate $block $metalLayer $drawing $box] $net
        set term [oa::ScalarTermCreate $net $name]
        oa::addToPin [oa::RectCreate $block $metalLayer $pin $box] [oa::PinCreate $term]
    }
}}

proc newDesign {library cell} {
    set design [oa::DesignOpen $library $cell layout [oa::ViewTypeGet maskLayout] w]
    oa::BlockCreate $design
    return $design
}

if {[llength $argv] != 2} {
    usage
}
lassign $argv library directory
if {[file exists $directory]} {
    puts stderr "$directory is there already"
    exit 1
}
set lib [oa::LibCreate $library $directory]
set tech [oa::TechCreate $lib]
foreach {name number material} $layers {
    oa::PhysicalLayerCreate $tech $name $number $material
}
oa::save $tech

# The parameters with their defaults decide what instances may set.
set definition [oa::PcellLinkGetPcellDef tclPcell]
oa::addData $definition GenCellProc $meander
oa::addData $definition TimeLimit 5
set resistor [newDesign $library resistor]
oa::defineSuperMaster $resistor $definition {
    {w double 1.0} {l double 10.0} {segments int 5} {spacing double 0.8}
    {contactSize double 0.4} {contactSpacing double 0.4} {contactEnclosure double 0.2}
    {bodyLayer int 3} {contactLayer int 4} {metalLayer int 5}
}
oa::save $resistor

set design [newDesign $library resistors]
set block [oa::getTopBlock $design]
foreach {name y params} {
    short 0 {{segments int 1}}
    usual 20 {}
    long 40 {{w double 0.4} {segments int 12} {l double 15.0}}
} {
    set inst [oa::ScalarInstCreate $block $library resistor layout $name [list [list 0 $y] R0] $params]
    set drawn [oa::getTopBlock [oa::getMaster $inst]]
    puts "$name: [oa::getCount [oa::getShapes $drawn]] shapes in [oa::getBBox $drawn]"
}
oa::save $design
oa::close $design
oa::close $resistor
oa::close $tech
oa::close $lib
puts "library $library is in $directory"
