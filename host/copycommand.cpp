#include "commands.h"
#include "commandvalues.h"
#include "hosterror.h"
#include "layoutcopier.h"
#include "oaplugincore.h"
#include "pluginsession.h"
#include "schematiccopier.h"
#include "targetlibrary.h"
#include "technologycopy.h"
#include "usermessage.h"
#include "viewchoice.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <string>

namespace {

constexpr char kHelp[] =
    R"(Both forms do the same: "copy LIB CELL TARGETLIB" and "copy LIB CELL VIEW --to
TARGETLIB". The placed cells that go with the copy are placed from the target
library then. Cells of other libraries, and parametric layouts, are placed from
where they are; a parametric symbol is copied as it is with its defaults, and
placements that set parameters are told, since no operation writes these.

A library that is made gets the units, manufacturing grids, layers and purposes
of LIB. Definitions of the vias that are copied, and layers that these need, are
made in any library unless its technology is that of another one. The copy
cannot have the name of a cell that it places.

A cell view is copied as the editor would copy it: read by the plug-in's signals
and written by its save operations. Of a layout, these bring shapes, texts,
references with their parameters, and vias; nets, pins and properties they do
not. Of a schematic or symbol they bring wires, ports, labels, drawing, texts,
placements, and properties, the last as texts; nets and connections are those of
the original, whatever is drawn. Other connections in the copy of a schematic or
symbol are a problem (exit code 1), other differences that "oahost diff" finds a
notice; layouts are not compared. docs/dump.md lists what can differ. What
TARGETLIB has of the cells below stays as it is there, with a notice, unless
--replace is given; the views of CELL itself must be free.

What the host keeps with a cell, its data and description, goes along.)";

struct CopyOptions {
  std::string lib;
  std::string cell;
  std::string third;  // the target library, or with --to the view
  std::string fourth; // the target cell
  std::string view;   // empty: what the cell has
  std::string to;
  std::string path;
  bool replace = false;
  bool topOnly = false;
};

struct CopyPlace {
  QString lib;
  QString cell;
  QString view;
  QString targetLib;
  QString targetCell;
  QString libraryPath; // where to make the target library; empty: it has to be there
};

// Which name is which, after the form of the command line.
CopyPlace placeOf(const CopyOptions &options) {
  CopyPlace place;
  place.lib = nameFromCommandLine(options.lib);
  place.cell = nameFromCommandLine(options.cell);
  place.targetCell = options.fourth.empty() ? place.cell : nameFromCommandLine(options.fourth);
  if (options.to.empty()) {
    place.targetLib = nameFromCommandLine(options.third);
    place.view = nameFromCommandLine(options.view);
  } else {
    place.targetLib = nameFromCommandLine(options.to);
    place.view = nameFromCommandLine(options.third.empty() ? options.view : options.third);
  }
  if (!options.path.empty())
    place.libraryPath = libraryPathFromCommandLine(options.path);
  return place;
}

// What the options alone cannot say of each other.
void checkUsage(const CopyOptions &options) {
  if (options.to.empty() && options.third.empty())
    throw CLI::RequiredError("TARGETLIB, or --to");
  if (!options.to.empty() && !options.third.empty() && !options.view.empty())
    throw CLI::ValidationError("--view", "with --to, the view is the third name: " + options.third);
}

// The library that is written to. What is wrong with its name or path is told at once; it is made after the source has
// been read.
class CopyTarget {
public:
  CopyTarget(PluginSession &session, const CopyPlace &place) : session_(session), place_(place) {
    if (place.libraryPath.isEmpty())
      session.requireLibrary(place.targetLib);
    else
      library_.emplace(session, place.targetLib, place.libraryPath);
  }
  void make() {
    if (!library_ || library_->isKnown())
      return;
    library_->create();
    copyTechnology(session_, place_.lib, place_.targetLib);
  }

private:
  PluginSession &session_;
  const CopyPlace &place_;
  std::optional<TargetLibrary> library_;
};

// The fields that both requests have.
template <typename Request> Request requestOf(const CopyPlace &place, const CopyOptions &options, CopyTarget &target) {
  Request request;
  request.lib = place.lib;
  request.cell = place.cell;
  request.view = place.view;
  request.targetLib = place.targetLib;
  request.targetCell = place.targetCell;
  request.isHierarchical = !options.topOnly;
  request.isReplacing = options.replace;
  request.makeTarget = [&target] { target.make(); };
  return request;
}

int copyView(const CommandContext &context, const CopyOptions &options) {
  PluginSession session(context);
  CopyPlace place = placeOf(options);
  if (place.view.isEmpty())
    place.view = defaultView(session, place.lib, place.cell);
  const bool isSchematic = isSchematicType(session.requireView(place.lib, place.cell, place.view));
  if (place.lib == place.targetLib && place.cell == place.targetCell) {
    throw HostError(
        QStringLiteral("%1 would be copied onto itself").arg(cellViewName(place.lib, place.cell, place.view)));
  }
  CopyTarget target(session, place);
  ImportReport report;
  if (isSchematic)
    copySchematic(session, requestOf<SchematicCopyRequest>(place, options, target), report);
  else
    copyLayout(session, requestOf<LayoutCopyRequest>(place, options, target), report);
  for (const QString &line : report.lines())
    tellUser(line);
  return report.problemCount() > 0 ? 1 : session.exitCode();
}

} // namespace

void addCopyCommand(CLI::App &app, CommandContext &context) {
  auto options = std::make_shared<CopyOptions>();
  CLI::App *command =
      app.add_subcommand("copy", "Copy a layout, schematic or symbol, with all that it places, to another library");
  command->footer(kHelp);
  command->add_option("LIB", options->lib, "Library to read")->required();
  command->add_option("CELL", options->cell, "Cell to read")->required();
  command->add_option("TARGETLIB", options->third, "Library to write to; with --to, the view to copy");
  command->add_option("TARGETCELL", options->fourth, "Name of the copied cell; default: its own");
  CLI::Option *to = command->add_option("--to", options->to, "Library to write to")->type_name("TARGETLIB");
  command->add_option("--path", options->path, "Directory of the library to write to; it is made when there is none")
      ->type_name("DIR")
      ->needs(to);
  command
      ->add_option("--view", options->view, "View to copy; default: layout, schematic or symbol, the first that exists")
      ->type_name("VIEW");
  command->add_flag(
      "--top-only", options->topOnly,
      "Leave out the layouts or schematics below the cell; the symbols that a schematic places are copied all the "
      "same");
  command->add_flag("--replace", options->replace, "Write over cell views that exist");
  command->callback([options, &context] {
    checkUsage(*options);
    context.command = [options, &context] { return copyView(context, *options); };
  });
}
