#!/usr/bin/env tclsh
# Gives all texts and text displays of a design the same height and saves it.
#
# usage: tclsh set_text_height.tcl LIBRARY DIRECTORY CELL VIEW HEIGHT
#
#   HEIGHT  in user units, such as 0.25
package require oa

proc usage {} {
    puts stderr "usage: tclsh set_text_height.tcl LIBRARY DIRECTORY CELL VIEW HEIGHT"
    exit 2
}

if {[llength $argv] != 5} {
    usage
}
lassign $argv library directory cell view height
if {![string is double -strict $height] || $height <= 0} {
    puts stderr "a height is a positive number of user units, not \"$height\""
    exit 1
}
oa::LibOpen $library $directory
set design [oa::DesignOpen $library $cell $view a]
set changed 0
set shapes [oa::getShapes [oa::getTopBlock $design]]
while {[set shape [oa::getNext $shapes]] ne ""} {
    switch [oa::getType $shape] {
        Text - EvalText - PropDisplay - AttrDisplay - TextOverride - InstPropDisplay - InstAttrDisplay {
            oa::setHeight $shape $height
            incr changed
        }
    }
}
oa::save $design
oa::close $design
puts "changed $changed texts"
