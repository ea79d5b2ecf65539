#include "schematicfacts.h"

#include "hosterror.h"
#include "importreport.h"
#include "netlistmodel.h"
#include "netlistreader.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "tcllist.h"
#include "usermessage.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace {

// Gives nine lists: nets, terminals, nets of wires, of dots and of grounds, which rectangles are of the instance layer,
// which texts are evaluated, ranges of placements (none or two numbers each), placements with parameters. What is sent
// as a wire, dot, ground, rectangle, text or placement is as openSchematic() has it for a host without a limit on
// layers.
const char kScript[] = R"(
set design [oa::DesignOpen {*}$arguments r]
if {[oa::isSuperMaster $design]} {
  set defaults [oa::getParams $design]
  oa::close $design
  set design [oa::DesignOpen {*}$arguments [oa::ParamArray $defaults]]
}
set nets {}
set terminals {}
set wires {}
set dots {}
set grounds {}
set instances {}
set evaluated {}
set ranges {}
set parametric {}
try {
  set block [oa::getTopBlock $design]
  array set names {}
  set all [oa::getNets $block]
  while {[set net [oa::getNext $all]] ne ""} {
    set names($net) [oa::getName $net]
    lappend nets $names($net) [oa::getType $net] [oa::isGlobal $net]
  }
  set all [oa::getTerms $block]
  while {[set terminal [oa::getNext $all]] ne ""} {
    lappend terminals [oa::getName $terminal] [oa::getName [oa::getNet $terminal]]
  }
  set all [oa::getShapes $block]
  while {[set shape [oa::getNext $all]] ne ""} {
    set type [oa::getType $shape]
    set layer [oa::getLayerNum $shape]
    if {$type eq "Rect" && $layer != 229} {lappend instances [expr {$layer == 236}]}
    if {$type eq "EvalText" || ($type eq "Text" && $layer != 228)} {lappend evaluated [expr {$type eq "EvalText"}]}
    if {$type ni {Line Path PathSeg Dot Ellipse}} continue
    set net [oa::getNet $shape]
    if {$net eq ""} {
      set name ""
    } elseif {[info exists names($net)]} {
      set name $names($net)
    } else {
      set name [oa::getName $net]
    }
    if {$type eq "Dot" && $layer == 229} {
      lappend grounds $name
    } elseif {$type in {Dot Ellipse}} {
      if {$layer == 228 || $net ne ""} {
        lappend dots $name
      } elseif {$type eq "Dot"} {
        lappend instances 0
      }
    } elseif {$net ne "" || ($type eq "Line" && $layer == 228)} {
      lappend wires $name [expr {$net eq "" ? "" : [oa::getType $net]}]
    }
  }
  set all [oa::getInsts $block]
  while {[set inst [oa::getNext $all]] ne ""} {
    switch [oa::getType $inst] {
      VectorInst {lappend ranges [list [oa::getStart $inst] [oa::getStop $inst]]}
      VectorInstBit {lappend ranges [list [oa::getBitIndex $inst] [oa::getBitIndex $inst]]}
      default {lappend ranges {}}
    }
  }
  set headers [oa::getInstHeaders $block]
  while {[set header [oa::getNext $headers]] ne ""} {
    if {![oa::isSubHeader $header]} continue
    set all [oa::getInsts $header]
    while {[set inst [oa::getNext $all]] ne ""} {
      if {[llength [oa::getParams $inst]] > 0} {lappend parametric [oa::getName $inst]}
    }
  }
} finally {
  oa::close $design
}
return [list $nets $terminals $wires $dots $grounds $instances $evaluated $ranges $parametric]
)";

// A list of names as the database writes them.
QStringList namesOf(const QString &list) {
  QStringList names = elementsOf(list);
  for (QString &name : names)
    name.replace(QLatin1Char('['), QLatin1Char('<')).replace(QLatin1Char(']'), QLatin1Char('>'));
  return names;
}

std::vector<bool> flagsOf(const QString &list) {
  std::vector<bool> flags;
  for (const QString &flag : elementsOf(list))
    flags.push_back(flag != QLatin1String("0"));
  return flags;
}

std::vector<std::optional<SchematicFacts::Iteration>> iterationsOf(const QString &list) {
  std::vector<std::optional<SchematicFacts::Iteration>> iterations;
  for (const QString &range : elementsOf(list)) {
    const QStringList ends = range.split(QLatin1Char(' '));
    if (ends.size() == 2)
      iterations.push_back(
          SchematicFacts::Iteration{static_cast<int>(ends[0].toUInt()), static_cast<int>(ends[1].toUInt())});
    else
      iterations.push_back(std::nullopt);
  }
  return iterations;
}

bool isText(const SchematicShape &shape) {
  return shape.kind == SchematicShape::Kind::Text || shape.kind == SchematicShape::Kind::EvalText;
}

} // namespace

ViewNetlist readViewNetlist(PluginSession &session, const QString &lib, const QString &cell, const QString &view) {
  NetlistCell read;
  ImportReport ignored;
  session.setReportsIgnored(true);
  NetlistReceiver receiver(session.object(), read, ignored);
  session.core().loadNetlist(lib, cell, view);
  session.setReportsIgnored(false);
  ViewNetlist netlist;
  netlist.nets = read.nodes;
  for (const QString &net : read.nodes)
    netlist.isExternal.insert(net, false);
  for (const int node : receiver.externals())
    netlist.isExternal[read.nodes[node]] = true;
  QSet<QString> open; // nodes that stand for terminals without a net
  for (const NetlistDevice &device : read.devices) {
    ViewNetlist::Device found{device.name, {}};
    for (int i = 0; i < device.terminals.size(); ++i) {
      const QString &net = read.nodes[device.nodes[static_cast<std::size_t>(i)]];
      // The node of a terminal without a net has a slash in its name, which no net has.
      const bool isOpen = net.contains(QLatin1Char('/'));
      if (isOpen)
        open.insert(net);
      found.connections.push_back(qMakePair(device.terminals[i], isOpen ? QString() : net));
    }
    netlist.deviceNumber.insert(device.name, static_cast<int>(netlist.devices.size()));
    netlist.devices.push_back(std::move(found));
  }
  for (const QString &net : open)
    netlist.isExternal.remove(net);
  netlist.nets.erase(
      std::remove_if(netlist.nets.begin(), netlist.nets.end(), [&](const QString &net) { return open.contains(net); }),
      netlist.nets.end());
  return netlist;
}

SchematicFacts readSchematicFacts(PluginSession &session, const QString &lib, const QString &cell,
                                  const QString &view) {
  const QStringList lists =
      runTclScript(session, kScript, {lib, cell, view},
                   QStringLiteral("the nets of %1 cannot be read").arg(cellViewName(lib, cell, view)));
  if (lists.size() != 9)
    throw HostError(QStringLiteral("the nets of %1 cannot be read").arg(cellViewName(lib, cell, view)));
  SchematicFacts facts;
  const QStringList nets = namesOf(lists[0]);
  for (int i = 0; i + 2 < nets.size(); i += 3)
    facts.nets.push_back({nets[i],
                          nets[i + 1] != QLatin1String("ScalarNet") && nets[i + 1] != QLatin1String("BusNetBit"),
                          nets[i + 1] == QLatin1String("BusNetBit"), nets[i + 2] != QLatin1String("0")});
  const QStringList terminals = namesOf(lists[1]);
  for (int i = 0; i + 1 < terminals.size(); i += 2)
    facts.terminals.push_back({terminals[i], terminals[i + 1]});
  const QStringList wires = namesOf(lists[2]);
  for (int i = 0; i + 1 < wires.size(); i += 2)
    facts.wires.push_back({wires[i], wires[i + 1] == QLatin1String("BundleNet")});
  facts.dots = namesOf(lists[3]);
  facts.grounds = namesOf(lists[4]);
  facts.isOnInstanceLayer = flagsOf(lists[5]);
  facts.isEvaluated = flagsOf(lists[6]);
  facts.iterations = iterationsOf(lists[7]);
  facts.parametric = namesOf(lists[8]);
  facts.netlist = readViewNetlist(session, lib, cell, view);
  return facts;
}

void completeModel(SchematicModel &model, const SchematicFacts &facts) {
  using Kind = SchematicShape::Kind;
  std::vector<SchematicShape *> rectangles;
  std::vector<SchematicShape *> texts;
  for (SchematicShape &shape : model.shapes) {
    if (shape.kind == Kind::Rect)
      rectangles.push_back(&shape);
    else if (isText(shape))
      texts.push_back(&shape);
  }
  // A shape or placement that cannot be read is told by the reader.
  if (rectangles.size() == facts.isOnInstanceLayer.size()) {
    for (std::size_t i = 0; i < rectangles.size(); ++i) {
      if (facts.isOnInstanceLayer[i])
        rectangles[i]->colour.prepend(QStringLiteral("instanceLayer:"));
    }
  }
  if (texts.size() == facts.isEvaluated.size()) {
    for (std::size_t i = 0; i < texts.size(); ++i)
      texts[i]->kind = facts.isEvaluated[i] ? Kind::EvalText : Kind::Text;
  }
  if (model.placements.size() == facts.iterations.size()) {
    for (std::size_t i = 0; i < model.placements.size(); ++i) {
      SchematicPlacement &placement = model.placements[i];
      const std::optional<SchematicFacts::Iteration> &iteration = facts.iterations[i];
      placement.isVector = iteration.has_value();
      placement.start = iteration ? iteration->start : 0;
      placement.stop = iteration ? iteration->stop : 0;
    }
  }
}
