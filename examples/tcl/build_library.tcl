#!/usr/bin/env tclsh
# Builds a small library from nothing: a technology with layers, purposes and via definitions, an inverter with layout,
# schematic and symbol, and a buffer made of two inverters.
#
# usage: tclsh build_library.tcl LIBRARY DIRECTORY
#
#   LIBRARY    the name of the new library
#   DIRECTORY  where it is made; must not exist yet
package require oa

proc usage {} {
    puts stderr "usage: tclsh build_library.tcl LIBRARY DIRECTORY"
    exit 2
}

# Layers by name. Numbers below 200 are drawn in layouts, the others in schematics.
set layers {
    nwell 1 nWell  diff 2 nDiff  poly 3 poly  contact 4 cut  metal1 5 metal  via1 6 cut  metal2 7 metal
    device 200 other  wire 228 other  pin 229 other  text 230 other
}

proc buildTechnology {library} {
    set tech [oa::TechCreate [oa::LibFind $library]]
    oa::setDBUPerUU $tech [oa::ViewTypeGet maskLayout] 2000
    foreach {name number material} $::layers {
        oa::PhysicalLayerCreate $tech $name $number $material
    }
    oa::PurposeCreate $tech label 1

    # Parameters of vias count database units: half a nanometre here.
    set cuts [oa::ViaParam]
    oa::setCutLayer $cuts [oa::getNumber [oa::LayerFind $tech via1]]
    oa::setCutWidth $cuts 400
    oa::setCutHeight $cuts 400
    oa::setCutSpacing $cuts [oa::Vector 500 500]
    oa::setLayer1Enc $cuts [oa::Vector 100 100]
    oa::setLayer2Enc $cuts [oa::Vector 100 100]
    set metal1 [oa::PhysicalLayerFind $tech metal1]
    set metal2 [oa::PhysicalLayerFind $tech metal2]
    oa::StdViaDefCreate $tech M1_M2 $metal1 $metal2 $cuts
    oa::CustomViaDefCreate $tech M1_M2_wide $library widevia layout $metal1 $metal2
    oa::save $tech
    return $tech
}

# The number of a layer, and that of the purpose "drawing".
proc drawing {name} {
    foreach {layerName number material} $::layers {
        if {$layerName eq $name} {
            return [list $number $oa::oavPurposeNumberDrawing]
        }
    }
    error "no layer $name"
}

proc newDesign {library cell view type} {
    set design [oa::DesignOpen $library $cell $view [oa::ViewTypeGet $type] w]
    return [list $design [oa::BlockCreate $design]]
}

proc label {block layer text origin height} {
    oa::TextCreate $block {*}[drawing $layer] $text $origin centerCenter R0 stick $height
}

# A terminal with a net and a pin, whose figure is given.
proc connect {block name type figure} {
    set net [oa::ScalarNetFind $block $name]
    if {$net eq ""} {
        set net [oa::ScalarNetCreate $block $name]
    }
    set pin [oa::PinCreate [oa::ScalarTermCreate $net $name $type] $name]
    oa::addToPin $figure $pin
}

# The master of the custom via definition: any layout.
proc buildWideVia {library} {
    lassign [newDesign $library widevia layout maskLayout] design block
    foreach name {metal1 metal2} {
        oa::RectCreate $block {*}[drawing $name] {{-0.5 -0.2} {0.5 0.2}}
    }
    foreach x {-0.35 0.15} {
        oa::RectCreate $block {*}[drawing via1] [list [list $x -0.1] [list [expr {$x + 0.2}] 0.1]]
    }
    oa::save $design
    oa::close $design
}

proc buildInverterLayout {library} {
    lassign [newDesign $library inv layout maskLayout] design block
    oa::RectCreate $block {*}[drawing nwell] {{-0.5 2.5} {2.5 5.5}}
    oa::RectCreate $block {*}[drawing diff] {{0 0.5} {2 1.5}}
    oa::RectCreate $block {*}[drawing diff] {{0 3} {2 5}}
    oa::PathCreate $block {*}[drawing poly] 0.2 {{1 0} {1 5.5}}
    foreach {name type box} {
        A input {{0.8 2.2} {1.2 2.6}}  Z output {{1.4 0.7} {1.8 4.8}}
        VDD inputOutput {{0 5.5} {2 6}}  GND inputOutput {{0 -0.5} {2 0}}
    } {
        connect $block $name $type [oa::RectCreate $block {*}[drawing metal1] $box]
        set centre [oa::getCenter [oa::getBBox [oa::getNext [oa::getFigs [oa::PinFind [oa::TermFind $block $name] $name]]]]]
        label $block metal1 $name $centre 0.25
    }
    oa::save $design
    oa::close $design
}

proc buildInverterSymbol {library} {
    lassign [newDesign $library inv symbol schematicSymbol] design block
    oa::PolygonCreate $block {*}[drawing device] {{0 -0.25} {0 0.25} {0.5 0}}
    oa::DonutCreate $block {*}[drawing device] {0.5625 0} 0.0625 0.025
    connect $block A input [oa::RectCreate $block {*}[drawing pin] {{-0.0375 -0.0375} {0.0375 0.0375}}]
    connect $block Z output [oa::RectCreate $block {*}[drawing pin] {{0.5875 -0.0375} {0.6625 0.0375}}]
    label $block text inv {0.1875 0} 0.0625
    oa::save $design
    oa::close $design
}

proc buildInverterSchematic {library} {
    lassign [newDesign $library inv schematic schematic] design block
    foreach {name type x y} {A input -1 0  Z output 1 0  VDD inputOutput 0 1  GND inputOutput 0 -1} {
        set box [list [list [expr {$x - 0.0375}] [expr {$y - 0.0375}]] [list [expr {$x + 0.0375}] [expr {$y + 0.0375}]]]
        connect $block $name $type [oa::RectCreate $block {*}[drawing pin] $box]
        label $block text $name [list $x [expr {$y + 0.125}]] 0.0625
    }
    foreach {name sigType} {VDD power GND ground} {
        oa::setSigType [oa::ScalarNetFind $block $name] $sigType
    }
    oa::save $design
    oa::close $design
}

# Two inverters in a row: a schematic of their symbols, a layout of their layouts.
proc buildBuffer {library} {
    lassign [newDesign $library buf schematic schematic] design block
    foreach {name x input output} {i1 0 A mid  i2 2 mid Z} {
        set inst [oa::ScalarInstCreate $block $library inv symbol $name [list [list $x 0] R0]]
        foreach {term netName} [list A $input Z $output] {
            set net [oa::ScalarNetFind $block $netName]
            if {$net eq ""} {
                set net [oa::ScalarNetCreate $block $netName]
            }
            oa::InstTermCreate $net $inst $term
        }
    }
    set wire [oa::LineCreate $block {*}[drawing wire] {{0.625 0} {2 0}}]
    oa::addToNet $wire [oa::ScalarNetFind $block mid]
    foreach {name type x} {A input -0.5  Z output 3} {
        set box [list [list [expr {$x - 0.0375}] -0.0375] [list [expr {$x + 0.0375}] 0.0375]]
        connect $block $name $type [oa::RectCreate $block {*}[drawing pin] $box]
    }
    oa::save $design
    oa::close $design

    lassign [newDesign $library buf layout maskLayout] design block
    oa::ScalarInstCreate $block $library inv layout i1 {{0 0} R0}
    oa::ScalarInstCreate $block $library inv layout i2 {{5 0} MY}
    oa::RectCreate $block {*}[drawing metal2] {{1.4 2.2} {3.8 2.6}}
    label $block metal2 mid {2.6 2.4} 0.25
    oa::StringPropCreate $design description "two inverters in a row"
    oa::save $design
    oa::close $design
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
set tech [buildTechnology $library]
buildWideVia $library
buildInverterLayout $library
buildInverterSymbol $library
buildInverterSchematic $library
buildBuffer $library
oa::close $tech
oa::close $lib
puts "library $library is in $directory"
