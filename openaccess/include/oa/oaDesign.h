#ifndef OADESIGN_H
#define OADESIGN_H

#include "oa/oaDesignEnums.h"
#include "oa/oaDesignObject.h"

namespace OpenAccess_4 {

class oaInstHeader;
class oaPcellDef;

// An open design: the contents of one cell view. All who open it get the same pointer, which is dead after the last
// close(). Modes:
//   'r'       contents of the file; may be changed in memory, but save() refuses;
//   'a', 'A'  contents of the file, for editing;
//   'w'       empty, whatever the file holds; the file changes only at save(), after which the mode is 'a';
//   's'       masters that live in memory only: of standard vias, and sub masters of parametric cells (see oaPcell.h).
class oaDesign : public oaDesignObject {
public:
  // Opens an existing design, or makes a new one (modes 'w', 'a', 'A'): its cell and view directories and an empty
  // primary file then appear at once, and go again when it is closed without ever having been saved. `viewType` is one
  // of maskLayout, schematic, schematicSymbol, netlist and oaHierDesign, else oacInvalidDesignViewType; an existing
  // view of another type raises oacMismatchViewTypeForOpen. Further: oacOpenUndefinedModeDesign, oacCannotFindLibrary
  // (not open), oacCannotFindDesign and oacDesignPrimaryFileDoesNotExist ('r'), oacCannotLockDatabase (edited by
  // another process), and what damaged files raise.
  static oaDesign *open(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName,
                        const oaViewType *viewType, oaChar mode);
  // Opens an existing design of any view type.
  static oaDesign *open(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName,
                        oaChar mode);
  // The sub master of a parametric cell for these parameters, evaluated when no equal set of them is open: parameters
  // that are not given follow the super master's defaults, of those given twice the last one counts. The super master
  // is opened 'r' when it is not open, and stays open as long as the sub master. Raises oacNotExistInDefaultParam for
  // an unknown parameter, oacInvalidDataTypeForParam for one of another type than the default. An evaluator that is
  // missing or fails gives a design without a block. An ordinary design opens as in mode 'r' when there are no
  // parameters; otherwise raises oacInvalidSuperMaster.
  static oaDesign *open(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName,
                        const oaParamArray &params);
  // The master of a standard via: a layout in mode 's' that holds only rectangles, named by the library of the
  // technology, the definition and "layout". Parameters with equal values give the same design as long as it is open;
  // values that are flagged as default, and NULL, stand for the definition's.
  static oaDesign *open(oaStdViaDef *viaDef, oaViaParam *params = NULL);
  // The master of a custom via, as above.
  static oaDesign *open(oaCustomViaDef *viaDef, oaParamArray *params = NULL);
  // An open design, or NULL. Does not count as opening.
  static oaDesign *find(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName);
  // Open now, or stored on disk. Never raises.
  static oaBoolean exists(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName);
  // Empties the primary file; the cell view stays. Raises oacDestroyDesignOpen, oacDestroyCannotFindDesign.
  static void destroy(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName);
  static oaCollection<oaDesign, oaDesign> getOpenDesigns();
  static oaUInt4 getRevNumber();

  // Takes back one open(). The last one drops the design from memory, saved or not.
  void close();
  // Drops the design from memory whatever the count.
  void purge();
  // Replaces the file as a whole. Raises oacSaveReadOnlyDesign, oacSaveScratchModeDesign, oacCannotFindLibrary (library
  // closed meanwhile), oacDesignNoLongerExists (cell view removed meanwhile).
  void save();
  // Writes the contents to another cell view, which is made when missing. The design keeps its own identity. Raises
  // oacMismatchViewTypeForSaveAs, oacDestroyDesignOpen when the target is open, oacCannotFindLibrary.
  void saveAs(const oaScalarName &libName, const oaScalarName &cellName, const oaScalarName &viewName);
  // Changes the mode without counting. 'w' empties the design. Weakening is refused (oacCannotDowngradeDatabase) when
  // there are changes.
  void reopen(oaChar mode);
  // As freshly opened in the present mode; all pointers to objects in the design are dead.
  void revert();

  void getLibName(oaScalarName &libName) const;
  void getCellName(oaScalarName &cellName) const;
  void getViewName(oaScalarName &viewName) const;
  void getLibName(const oaNameSpace &ns, oaString &libName) const;
  void getCellName(const oaNameSpace &ns, oaString &cellName) const;
  void getViewName(const oaNameSpace &ns, oaString &viewName) const;
  // NULL when the library was closed meanwhile. Raises oacCannotFindObjectForViaMaster for the master of a standard
  // via.
  oaLib *getLib() const;
  oaViewType *getViewType() const;
  // The open technology of the design's library, opened 'r' when it was not; NULL when there is none.
  oaTech *getTech() const;
  // NULL until a block was created.
  oaBlock *getTopBlock() const;
  oaChar getMode() const;
  oaUInt4 getRefCount() const;
  oaTime getCreateTime() const;
  oaTime getLastSavedTime() const;
  oaBoolean isModified() const;
  oaCellType getCellType() const;
  void setCellType(oaCellType cellType);
  // Accepted; there are no time stamps here.
  void enableTimeStamps(oaBoolean value = true);

  // Parametric cells.

  oaBoolean isSuperMaster() const;
  oaBoolean isSubMaster() const;
  oaBoolean isStdViaMaster() const;
  // All parameters in the super master's order: of a super master the defaults, of a sub master the values it was made
  // with. Without defaults only those that were given: none of a super master. Raises oacInvalidPcellMaster for a
  // design that is not parametric.
  void getParams(oaParamArray &params) const;
  void getParams(oaParamArray &params, oaBoolean includeDefaults) const;
  // Raises oacInvalidStdViaMaster unless this is the master of a standard via.
  void getParams(oaViaParam &params) const;
  oaBoolean findParam(const oaString &name, oaParam &param) const;
  // Raises oacInvalidSubMaster.
  oaDesign *getSuperMaster() const;
  // Known also when the evaluator is missing. Raises oacInvalidSuperMaster.
  void getPcellEvaluatorName(oaString &name) const;
  // Of a super master or its sub masters. NULL when the design is not parametric or the evaluator is missing.
  oaPcellDef *getPcellDef() const;
  // Makes the design a super master, or gives one other parameters and another definition. The contents stay; open sub
  // masters are evaluated again, or purged when their parameters do not fit any more. The design takes the definition
  // over. Raises oacCannotModifyReadModeDesign, oacPcellInvalidPcellDef (NULL, or already another design's),
  // oacInvalidSuperMaster for designs in mode 's'; parameters of which two have one name raise
  // oacInvalidDataTypeForParam.
  void defineSuperMaster(oaPcellDef *def, const oaParamArray &pa);
  // Evaluates the open sub masters again. Raises oacCannotModifyReadModeDesign, oacInvalidSuperMaster.
  void evalSuperMaster();
  // Makes it an ordinary design, whose properties keep the parameters; the sub masters are purged. Raises as above.
  void undefineSuperMaster();
  // The open sub masters, in the order in which they were made. Raises oacInvalidSuperMaster.
  oaCollection<oaDesign, oaDesign> getSubMasters() const;

  // Hierarchy.

  // Binds the masters of all instances, and theirs, down to `numLevels` below this design.
  void openHier();
  void openHier(oaUInt4 numLevels);
  // Whether this design, or a bound master at any depth below it, holds an instance of `design`.
  oaBoolean hasReference(const oaDesign *design) const;
  oaBoolean hasRecursion() const;
  // The instance headers of open designs that are bound to this one.
  oaCollection<oaInstHeader, oaDesign> getUsedIn() const;
};

} // namespace OpenAccess_4

#endif
