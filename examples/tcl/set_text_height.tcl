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

if {[llength $argv] != 5} {
    usage
}
lassign $argv library directory cell view height
if {![string is double -strict $height] || $height <= 0} {
    puts stderr "a height is a positive number of user units, not \"$height\""
    exit 1
}
openLibrary $library $directory
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
