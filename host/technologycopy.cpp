#include "technologycopy.h"

#include "hosterror.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "tclinterpreter.h"

#include <tcl.h>

namespace {

// The variable arguments is a list of the source and the new library.
const char kCopyScript[] = R"(
lassign $arguments source new
if {![oa::TechExists [oa::LibFind $source]]} return
set from [oa::TechOpen $source r]
set to [oa::TechCreate [oa::LibFind $new]]
foreach name {maskLayout schematic schematicSymbol netlist} {
  set type [oa::ViewTypeGet $name]
  oa::setUserUnits $to $type [oa::getUserUnits $from $type]
  oa::setDBUPerUU $to $type [oa::getDBUPerUU $from $type]
}
set layers [oa::getLayers $from]
while {[set layer [oa::getNext $layers]] ne ""} {
  if {[oa::getType $layer] eq "PhysicalLayer"} {
    oa::PhysicalLayerCreate $to [oa::getName $layer] [oa::getNumber $layer] [oa::getMaterial $layer]
  }
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

// The variable arguments is a list of the library and the fields of the definition.
const char kDefineScript[] = R"(
lassign $arguments target name lib cell view layer1 layer2
set target [oa::LibFind $target]
if {[oa::TechHasAttachment $target]} return
if {[oa::TechExists $target]} {set tech [oa::TechOpen $target a]} else {set tech [oa::TechCreate $target]}
if {[oa::ViaDefFind $tech $name] eq ""} {
  set found {}
  foreach number [list $layer1 $layer2] {
    set layer [oa::PhysicalLayerFind $tech $number]
    if {$layer eq ""} {set layer [oa::PhysicalLayerCreate $tech $number $number]}
    lappend found $layer
  }
  oa::CustomViaDefCreate $tech $name $lib $cell $view {*}$found
  oa::save $tech
}
oa::close $tech
)";

void evaluate(PluginSession &session, const char *script, const QStringList &arguments, const QString &what) {
  TclInterpreter interpreter(TclInterpreter::kNoOutput);
  session.core().tclInit(interpreter.get());
  interpreter.setList("arguments", arguments);
  if (session.core().tclExec(interpreter.get(), QLatin1String(script)) == TCL_ERROR)
    throw HostError(QStringLiteral("%1: %2").arg(what, QString::fromUtf8(interpreter.result())));
}

} // namespace

void copyTechnology(PluginSession &session, const QString &source, const QString &lib) {
  evaluate(session, kCopyScript, {source, lib},
           QStringLiteral("library %1: its technology cannot be made like that of library %2").arg(lib, source));
}

void defineCustomVia(PluginSession &session, const CustomViaDefinition &definition, const QString &lib) {
  evaluate(
      session, kDefineScript,
      {lib, definition.name, definition.lib, definition.cell, definition.view, definition.layer1, definition.layer2},
      QStringLiteral("library %1: the via definition %2 cannot be made").arg(lib, definition.name));
}
