// Parametric cells. A super master is a stored design with a list of parameters, their default values and the name of
// an evaluator; a sub master is the design that the evaluator draws for one set of parameters, in memory only.
//
// An evaluator is an IPcell, known to the session by its name: a program links its own with oaPcellLink::create(), or
// the kit loads a shared object NAME.so from its plug-in directories (oaInstallation::getPlugInDir() and
// getPlugInPath(), in that order) when the name is first asked for. The shared object exports
//
//   extern "C" oa::IPcell *oaCreatePcell(const char *name);
//
// which returns the evaluator of that name, to live as long as the process, or NULL. Only names of letters, digits,
// '_', '-', '+' and '.', not beginning with '.', are looked for in files.
//
// Nothing that goes wrong in an evaluator ends the operation that needed it: whatever it throws is told to the
// observers (oaPcellObserver::onError), and the sub master stays without a block. Evaluations that need each other
// nest at most 64 deep.
#ifndef OAPCELL_H
#define OAPCELL_H

#include "oa/oaDesignEnums.h"
#include "oa/oaException.h"
#include "oa/oaObserver.h"
#include "oa/oaString.h"

#include <map>
#include <string>

namespace OpenAccess_4 {

class IPcell;
class oaDesign;

enum oaPcellErrorTypeEnum {
  oacPcellBindError = 0,
  oacPcellUnbindError = 1,
  oacPcellEvalError = 2,
  oacPcellReadError = 3,
  oacPcellWriteError = 4,
  oacPcellCalcDiskSizeError = 5,
  oacPcellPlugInError = 6
};

/// What an evaluator keeps with a super master: a table of texts by name, or whatever a derived class adds. Belongs to
/// the design that was defined with it, which deletes it.
class oaPcellDef {
public:
  explicit oaPcellDef(IPcell *pcellIn) : pcell_(pcellIn) {}
  oaPcellDef(const oaPcellDef &) = delete;
  oaPcellDef &operator=(const oaPcellDef &) = delete;
  virtual ~oaPcellDef();

  IPcell *getIPcell() const { return pcell_; }
  /// False, and nothing changes, when the name is in the table.
  virtual oaBoolean addData(const oaString &name, const oaString &value);
  /// The following return false, and change nothing, when the name is not in the table.
  virtual oaBoolean removeData(const oaString &name);
  virtual oaBoolean getDataValue(const oaString &name, oaString &value);
  virtual oaBoolean setDataValue(const oaString &name, const oaString &value);

  /// The whole table. Additions of this kit.
  const std::map<std::string, std::string> &getData() const { return data_; }
  void setData(std::map<std::string, std::string> data) { data_ = std::move(data); }

private:
  IPcell *pcell_;
  std::map<std::string, std::string> data_;
};

/// What every plug-in object has. Evaluators are not counted here: they live as long as their link or the process.
class IPlugInBase {
public:
  virtual ~IPlugInBase();
  /// 0 and the object in *object for an interface that it has, otherwise not 0.
  virtual oaInt4 queryInterface(const oaString &interfaceName, void **object);
  virtual oaUInt4 addRef();
  virtual oaUInt4 release();
  virtual oaUInt4 getRefCount() const;

private:
  oaUInt4 refCount_ = 0;
};

/// An evaluator. Whatever its functions throw (an IException, an exception of the kit, one of the standard library) is
/// told to the observers.
class IPcell : public IPlugInBase {
public:
  virtual void getName(oaString &name) = 0;
  /// A new, empty definition object; whoever asked for it owns it until a design is defined with it.
  virtual oaPcellDef *getPcellDef();
  /// Draws the sub master: an empty design without a block, open for changes; its parameters are
  /// design->getParams(params).
  virtual void onEval(oaDesign *design, oaPcellDef *pcellDef) = 0;
  /// A super master was defined with the definition object, or was read with it; it is about to lose it again.
  virtual void onBind(oaDesign *design, oaPcellDef *pcellDef);
  virtual void onUnbind(oaDesign *design, oaPcellDef *pcellDef);

  /// What is stored with the super master. calcDiskSize() tells how many bytes onWrite() will fill, and onRead() is
  /// given as many. The defaults store the definition's table of texts.
  virtual oaUInt4 calcDiskSize(oaPcellDef *pcellDef);
  virtual void onWrite(oaDesign *design, oaByte *data, oaUInt4 numBytes, oaPcellDef *pcellDef);
  virtual void onRead(oaDesign *design, const oaByte *data, oaUInt4 numBytes, oaPcellDef *pcellDef);
};

/// An evaluator that is known to the session.
class oaPcellLink {
public:
  oaPcellLink(const oaPcellLink &) = delete;
  oaPcellLink &operator=(const oaPcellLink &) = delete;

  /// NULL when there is none, not even among the plug-ins.
  static oaPcellLink *find(const oaString &name);
  /// The evaluator stays the caller's and must live as long as the link. Raises oacPcellLinkExists when its name is
  /// taken.
  static oaPcellLink *create(IPcell *pcellIn);
  /// A new definition object of the evaluator. Raises oacPcellEvaluatorNotFound.
  static oaPcellDef *getPcellDef(const oaString &name);

  /// Open super masters lose their definition objects; they have their evaluator's name still, and sub masters that
  /// were evaluated stay as they are.
  void destroy();
  IPcell *getIPcell() const { return pcell_; }

private:
  explicit oaPcellLink(IPcell *pcellIn) : pcell_(pcellIn) {}
  IPcell *pcell_;
};

/// Is told of evaluations, and of what fails in them.
class oaPcellObserver : public oaBaseObserver {
public:
  explicit oaPcellObserver(oaUInt4 priority, oaBoolean enabled = true);
  ~oaPcellObserver() override;
  /// `design` is the sub master, or the super master for what concerns its definition; NULL when an evaluator could not
  /// be loaded outside of any design.
  virtual void onError(oaDesign *design, const oaString &msg, oaPcellErrorTypeEnum type);
  virtual void onPreEval(oaDesign *design, oaPcellDef *pcellDef);
  virtual void onPostEval(oaDesign *design, oaPcellDef *pcellDef);
};

} // namespace OpenAccess_4

#endif
