#ifndef MASTERTABLE_H
#define MASTERTABLE_H

#include <string>
#include <unordered_map>
#include <vector>

#include <QHash>
#include <QString>
#include <QStringList>

#include "oaconvert.h"
#include "variantlimits.h"

// A cell that instances or vias refer to, as one walk knows it.
struct Master {
  enum Fault {
    kNone,
    kComponentView,
    kNoLibrary,
    kNoCell,
    kNoStdViaDef,
    kNoCustomVia,
    // Not evaluated, see VariantLimits.
    kEndlessVariants,
    kTooManyVariants
  };

  bool isRefused() const { return fault == kEndlessVariants || fault == kTooManyVariants; }

  Fault fault = kNone;
  // What the report of the fault shows: lib/cell/view, a library or a via definition, with the cause where there is
  // one. Empty for a refused variant when nothing new is to be told.
  QString detail;
  // The host's name of the cell.
  QString cellName;
  // What is to be told, once, when another design has the same name.
  QString clash;
  // Extra key/value pairs of the cell; a via's parameter list.
  QStringList cellData;
  // Name of the via definition; empty for the master of instances.
  QString viaDefName;
  // Open as long as this is set; a master may be closed after it was read and is opened again should the host want it
  // twice.
  oa::oaDesign *design = nullptr;
};

// The masters of one walk, each opened when it is first met, however many instances in however many cells share it.
// Everything that the table opened is closed with it.
class MasterTable {
public:
  // Host names of cells are relative to the library that is being read.
  explicit MasterTable(const QString &currentLib) : currentLib_(currentLib) {}
  ~MasterTable();
  MasterTable(const MasterTable &) = delete;
  MasterTable &operator=(const MasterTable &) = delete;

  // The cell that is being sent, for whose instances and vias find() is called until end() or the next begin(). These
  // nest like the cells on the walk's stack.
  void begin(oa::oaDesign *design);
  void end() { variantLimits_.end(); }

  // The master of an instance; one that cannot be had is described by its fault. Never null, and stays where it is; a
  // refused one until the next call only.
  Master *find(oa::oaInst *inst);
  // The same for a via in `parent`, which names the technology to search when the via is unbound.
  Master *find(oa::oaVia *via, oa::oaDesign *parent);

  // Opens a master again that released() closed, by one of its instances or vias. False when it has disappeared
  // meanwhile; then the master has a fault from now on.
  bool reopen(Master &master, oa::oaRef *ref, oa::oaDesign *parent);
  // The walk needs the master no more, at least for now. A number of masters stay open for hosts that want cells again;
  // above that it is closed, which keeps wide hierarchies within the system's limits on mapped files.
  void released(Master &master) {
    if (openCount_ > kManyMasters && master.design) {
      close(master);
    }
  }

  QString cellNameOf(oa::oaDesign *design, const QStringList &cellData) const;
  // Notes whose name it is. When it is another design's, what is to be told about that; once for each name.
  QString claimName(const QString &cellName, const oa::oaDesign *design);
  // "lib/cell/view" of a design.
  static QString pathOf(oa::oaDesign *design);

private:
  // Open masters from which on one is closed as soon as it was sent.
  static const size_t kManyMasters = 256;

  typedef std::unordered_map<std::string, Master> Masters;
  struct CellPath;
  struct NameOwner {
    std::string identity;
    QString path;
    bool isTold;
  };

  Master *kept(Masters::iterator entry);
  oa::oaDesign *openVariant(Master &master, const CellPath &path, const oa::oaParamArray &params);
  bool mayEvaluate(Master &master, const CellPath &path, const oa::oaDesign *super);
  void open(Master &master, const CellPath &path, const oa::oaParamArray &params, Master::Fault failure);
  void openStdVia(Master &master, oa::oaViaDef *viaDef, oa::oaViaParam &params);
  void opened(Master &master, oa::oaDesign *design);
  void close(Master &master);
  Master *findStdVia(oa::oaStdVia *via, oa::oaDesign *parent);
  Master *findCustomVia(oa::oaCustomVia *via, oa::oaDesign *parent);
  oa::oaViaDef *viaDefOf(oa::oaVia *via, oa::oaDesign *parent);

  QString currentLib_;
  Masters masters_;
  Master refused_;
  VariantLimits variantLimits_;
  // The first design of each host name.
  QHash<QString, NameOwner> nameOwners_;
  // Parametric cells behind the masters, by library, cell and view.
  std::unordered_map<std::string, oa::oaDesign *> superMasters_;
  std::vector<oa::oaTech *> techs_;
  size_t openCount_ = 0;
};

#endif
