#ifndef CELLPARAMETERS_H
#define CELLPARAMETERS_H

#include <QString>
#include <QStringList>
#include <QVector>

#include <string>
#include <vector>

class LayoutModel;
class PluginSession;

// One parameter of a parametric cell as the plug-in tells it.
struct CellParameter {
  QString name;
  // "int", "double", "string", "list" or "unsupported".
  QString type;
  // The default. A list is "true false" or "false true", the default first.
  QString value;
};

// Empty for a cell that is not parametric. Throws HostError when the plug-in cannot tell.
QVector<CellParameter> readCellParameters(PluginSession &session, const QString &lib, const QString &cell,
                                          const QString &view);

// Parameters with which a cell is to be read, in parallel lists.
struct ChosenParameters {
  QStringList names;
  QStringList values;
  bool isEmpty() const { return names.isEmpty(); }
};

// "" for "NAME=VALUE", else what is wrong with it, for CLI11.
std::string parameterFault(const std::string &text);
// The values behind several --param, each "NAME=VALUE"; the value may be empty. Throws HostError when a name comes
// twice.
ChosenParameters parametersFromCommandLine(const std::vector<std::string> &texts);

// Throws HostError for a value that is none of the parameter's type. Tells the user of names that the cell does not
// have; the plug-in takes no notice of them.
void checkParameters(const ChosenParameters &chosen, const QVector<CellParameter> &known, const QString &cellView);

// Sends the variant of a layout for these parameters through the plug-in; returns the name of its cell. Throws
// HostError for a view that is no layout, and as checkParameters().
QString openVariant(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                    const ChosenParameters &chosen);
// The same as a model, with the variant as its top cell. It has no units when neither the cell by default nor any other
// cell of the library tells them.
LayoutModel readVariant(PluginSession &session, const QString &lib, const QString &cell, const QString &view,
                        const ChosenParameters &chosen);

#endif
