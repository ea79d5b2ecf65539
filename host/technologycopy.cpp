#include "technologycopy.h"

#include "tcllist.h"

#include <QByteArray>
#include <QStringList>

namespace {

// Of technologies `from` and `to`. Lengths are user units in Tcl; the copy keeps database units.
const char kCommonScript[] = R"(
proc dbuPerUserUnit {tech} {oa::getDBUPerUU $tech [oa::ViewTypeGet maskLayout]}
proc gridDbu {tech layer} {
  set grid [expr {$layer eq "" ? [oa::getDefaultManufacturingGrid $tech] : [oa::getManufacturingGrid $layer]}]
  expr {round($grid * [dbuPerUserUnit $tech])}
}
proc copyLayer {from to layer name} {
  set new [oa::PhysicalLayerCreate $to $name [oa::getNumber $layer] [oa::getMaterial $layer] [oa::getMaskNumber $layer]]
  oa::setPrefRoutingDir $new [oa::getPrefRoutingDir $layer]
  set grid [gridDbu $from $layer]
  if {$grid != [gridDbu $to ""]} {oa::setManufacturingGrid $new [expr {double($grid) / [dbuPerUserUnit $to]}]}
  return $new
}
)";

// Of the source and the new library.
const char kCopyScript[] = R"(
lassign $arguments source new
if {![oa::TechExists [oa::LibFind $source]]} return
set from [oa::TechOpen [oa::LibFind $source] r]
set to [oa::TechCreate [oa::LibFind $new]]
foreach name {maskLayout schematic schematicSymbol netlist} {
  set type [oa::ViewTypeGet $name]
  oa::setUserUnits $to $type [oa::getUserUnits $from $type]
  oa::setDBUPerUU $to $type [oa::getDBUPerUU $from $type]
}
set grid [oa::getDefaultManufacturingGrid $from]
if {$grid > 0} {oa::setDefaultManufacturingGrid $to $grid}
set layers [oa::getLayers $from]
while {[set layer [oa::getNext $layers]] ne ""} {
  if {[oa::getType $layer] eq "PhysicalLayer"} {copyLayer $from $to $layer [oa::getName $layer]}
}
# The reserved ones are there.
set purposes [oa::getPurposes $from]
while {[set purpose [oa::getNext $purposes]] ne ""} {
  set name [oa::getName $purpose]
  if {[oa::PurposeFind $to $name] eq ""} {oa::PurposeCreate $to $name [oa::getNumber $purpose]}
}
oa::save $to
oa::close $to
oa::close $from
)";

// Of the source and the target library, and for each definition six arguments, the fields of ViaDefinition. Gives what
// is to be told as a list: what, a text, what, a text, ...
const char kDefineScript[] = R"(
proc isFree {tech name} {
  set layers [oa::getLayers $tech]
  while {[set layer [oa::getNext $layers]] ne ""} {
    if {[oa::getName $layer] eq $name} {return 0}
  }
  return 1
}
proc layerOf {from to number isNeeded} {
  set layer [oa::PhysicalLayerFind $to $number]
  if {$layer ne ""} {return $layer}
  set original [oa::PhysicalLayerFind $from $number]
  if {$original eq "" && !$isNeeded} return
  if {$original eq ""} {set wanted $number} else {set wanted [oa::getName $original]}
  set name $wanted
  while {![isFree $to $name]} {append name _$number}
  if {$name ne $wanted} {
    lappend ::told renamed "library $::target: layer $number is called $name, since $wanted is taken"
  }
  if {$original eq ""} {return [oa::PhysicalLayerCreate $to $name $number]}
  return [copyLayer $from $to $original $name]
}
proc implantsOf {definition} {
  set numbers {}
  foreach implant {1 2} {
    lappend numbers [expr {[oa::hasImplant$implant $definition] ? [oa::getImplant${implant}Num $definition] : ""}]
  }
  return $numbers
}
proc layersOf {definition} {
  set numbers [list [oa::getLayer1Num $definition] [oa::getLayer2Num $definition]]
  if {[oa::getType $definition] eq "StdViaDef"} {lappend numbers {*}[implantsOf $definition]}
  return $numbers
}
proc masterOf {definition} {
  list [oa::getLibName $definition] [oa::getCellName $definition] [oa::getViewName $definition]
}
proc isSame {found original master} {
  if {[oa::getType $found] ne [oa::getType $original] || [layersOf $found] ne [layersOf $original]} {return 0}
  if {[oa::getType $found] eq "StdViaDef"} {return 1}
  expr {[masterOf $found] eq $master || [masterOf $found] eq [masterOf $original]}
}
proc define {from to original master} {
  set name [oa::getName $original]
  set layers {}
  foreach number [layersOf $original] {
    lappend layers [expr {$number eq "" ? "" : [layerOf $from $to $number 1]}]
  }
  if {[oa::getType $original] eq "StdViaDef"} {
    lassign $layers layer1 layer2 implant1 implant2
    set params [oa::getParams $original]
    layerOf $from $to [oa::getCutLayer $params] 0
    set copy [oa::StdViaDefCreate $to $name $layer1 $layer2 $params $implant1 $implant2]
  } else {
    set copy [oa::CustomViaDefCreate $to $name {*}$master {*}$layers]
  }
  oa::setResistancePerCut $copy [oa::getResistancePerCut $original]
}

set definitions [lassign $arguments source ::target]
set lib [oa::LibFind $::target]
set ::told {}
set from [expr {[oa::TechExists [oa::LibFind $source]] ? [oa::TechOpen [oa::LibFind $source] r] : ""}]
set to [expr {[oa::TechExists $lib] ? [oa::TechOpen $lib r] : ""}]
set missing {}
set compared {}
foreach {name masterLib masterCell masterView drawn arrayCuts} $definitions {
  set original [expr {$from eq "" ? "" : [oa::ViaDefFind $from $name]}]
  if {$original eq ""} {
    lappend ::told unknown $name
    continue
  }
  set master [list $masterLib $masterCell $masterView]
  set found [expr {$to eq "" ? "" : [oa::ViaDefFind $to $name]}]
  if {$found eq ""} {
    lappend missing $original $master $drawn
  } elseif {![isSame $found $original $master]} {
    lappend ::told other $name
  }
  lappend compared $name $arrayCuts
}
if {[oa::TechHasAttachment $lib]} {
  foreach {original master drawn} $missing {
    if {[oa::getType $original] eq "CustomViaDef"} {
      set owner [oa::TechGetAttachment $lib]
      lappend ::told attached "[oa::getName $original], library $::target uses the technology of $owner"
    }
  }
} elseif {[llength $missing] > 0} {
  if {$to eq ""} {set to [oa::TechCreate $lib]} else {oa::reopen $to a}
  foreach {original master drawn} $missing {
    define $from $to $original $master
    foreach number $drawn {layerOf $from $to $number 0}
  }
  oa::save $to
}
foreach {name arrayCuts} $compared {
  foreach number $arrayCuts {
    set grid [gridDbu $from [oa::PhysicalLayerFind $from $number]]
    if {$to ne "" && $grid != [gridDbu $to [oa::PhysicalLayerFind $to $number]]} {lappend ::told grid $name}
  }
}
if {$to ne ""} {oa::close $to}
if {$from ne ""} {oa::close $from}
return $::told
)";

QString joined(const std::set<int> &numbers) {
  QStringList words;
  for (const int number : numbers)
    words.append(QString::number(number));
  return words.join(QLatin1Char(' '));
}

void tell(const QString &what, const QString &where, ImportReport &report) {
  if (what == QLatin1String("renamed")) {
    report.notice(QStringLiteral("a layer of a via gets another name than in the source"), where);
  } else if (what == QLatin1String("unknown")) { // the vias are reported as they are written
    report.problem(QStringLiteral("a via definition is unknown in the source, and is not made"), where);
  } else if (what == QLatin1String("other")) {
    report.problem(QStringLiteral("the library has another via definition of that name, which the copied vias get"),
                   where);
  } else if (what == QLatin1String("attached")) {
    report.problem(QStringLiteral("a custom via definition is not made in the technology of another library"), where);
  } else {
    report.problem(QStringLiteral("the library has another manufacturing grid, so the cuts of vias lie elsewhere"),
                   where);
  }
}

} // namespace

void copyTechnology(PluginSession &session, const QString &source, const QString &lib) {
  runTclScript(session, QByteArray(kCommonScript) + kCopyScript, {source, lib},
               QStringLiteral("library %1: its technology cannot be made like that of library %2").arg(lib, source));
}

void copyViaDefinitions(PluginSession &session, const std::vector<ViaDefinition> &definitions, const QString &source,
                        const QString &lib, ImportReport &report) {
  if (definitions.empty())
    return;
  QStringList arguments{source, lib};
  for (const ViaDefinition &definition : definitions) {
    arguments << definition.name << definition.lib << definition.cell << definition.view << joined(definition.layers)
              << joined(definition.arrayCutLayers);
  }
  const QStringList told =
      runTclScript(session, QByteArray(kCommonScript) + kDefineScript, arguments,
                   QStringLiteral("library %1: the via definitions of library %2 cannot be made").arg(lib, source));
  for (int i = 0; i + 1 < told.size(); i += 2)
    tell(told[i], told[i + 1], report);
}
