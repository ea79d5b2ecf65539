#!/usr/bin/env tclsh
# Lists the layers, the cells and the views of a library.
#
# usage: tclsh list_library.tcl LIBRARY ?DIRECTORY?
#
#   LIBRARY    the name of the library
#   DIRECTORY  where it is; without it, the library is looked for in lib.defs
package require oa

proc usage {} {
    puts stderr "usage: tclsh list_library.tcl LIBRARY ?DIRECTORY?"
    exit 2
}

# The directory without links.
proc resolved {directory} {
    return [file dirname [file normalize [file join $directory member]]]
}

# The library of that name, which oahost and lib.defs may have opened already.
proc openLibrary {library directory} {
    if {$directory eq ""} {
        oa::LibDefListOpenLibs
    }
    set lib [oa::LibFind $library]
    if {$lib eq "" && $directory eq ""} {
        puts stderr "no lib.defs names a library $library"
        exit 1
    }
    if {$lib eq ""} {
        return [oa::LibOpen $library $directory]
    }
    if {$directory ne "" && [resolved $directory] ne [resolved [oa::getFullPath $lib]]} {
        puts stderr "library $library is open already, but from [oa::getFullPath $lib] instead of $directory"
        exit 1
    }
    return $lib
}

# The members of a collection as a list.
proc members {collection} {
    set list {}
    while {[set member [oa::getNext $collection]] != ""} {
        lappend list $member
    }
    return $list
}

proc listLayers {lib} {
    if {![oa::TechExists $lib]} {
        puts "  no technology"
        return
    }
    set tech [oa::TechOpen $lib]
    foreach layer [members [oa::getLayers $tech]] {
        if {[oa::getType $layer] eq "PhysicalLayer"} {
            puts [format "  layer %4d  %-10s %s" [oa::getNumber $layer] [oa::getName $layer] [oa::getMaterial $layer]]
        }
    }
    foreach viaDef [members [oa::getViaDefs $tech]] {
        puts "  via [oa::getName $viaDef]: [oa::getName [oa::getLayer1 $viaDef]] - [oa::getName [oa::getLayer2 $viaDef]]"
    }
    oa::close $tech
}

if {[llength $argv] < 1 || [llength $argv] > 2} {
    usage
}
lassign $argv library directory
set lib [openLibrary $library $directory]
oa::getAccess $lib read 10
puts "library [oa::getName $lib] in [oa::getFullPath $lib]"
listLayers $lib
foreach cell [lsort -command {apply {{a b} {string compare [oa::getName $a] [oa::getName $b]}}} [members [oa::getCells $lib]]] {
    puts "  cell [oa::getName $cell]"
    foreach cellView [members [oa::getCellViews $cell]] {
        set view [oa::getView $cellView]
        puts "    [oa::getName $view] ([oa::getName [oa::getViewType $view]])"
    }
}
oa::releaseAccess $lib
