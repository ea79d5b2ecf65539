#include "unitsprobe.h"

#include "oaplugincore.h"
#include "pluginsession.h"
#include "signaltap.h"

#include <memory>

namespace {

// Listens to setUnits() alone. A cell that is asked about is said to be known, so that its layout is not sent.
class UnitsListener : public SignalTap {
public:
  UnitsListener(QObject &plugin, oaPlugInCore &core) : SignalTap(plugin, core, CellAnswer::AlwaysKnown) {}
  const LayoutUnits &units() const { return units_; }

protected:
  void record(int signal, void **arguments) override {
    if (shapes().at(signal).signature == "setUnits(double,double)")
      units_ = {*static_cast<const double *>(arguments[1]), *static_cast<const double *>(arguments[2])};
  }

private:
  LayoutUnits units_;
};

} // namespace

LayoutUnits probeUnits(PluginSession &session, const QString &lib, const QString &view) {
  UnitsListener listener(session.object(), session.core());
  // Faults of that cell, such as a missing master, are none of the caller's.
  session.setReportsIgnored(true);
  for (const QString &cell : session.core().getCellNames(lib)) {
    if (session.core().getViewType(lib, cell, view).isEmpty())
      continue;
    session.core().openLayout(lib, cell, view, QString());
    if (listener.units().metresPerDbu > 0)
      break;
  }
  session.setReportsIgnored(false);
  session.synchronise();
  return listener.units();
}

double probeMetresPerDbu(PluginSession &session, const QString &lib, const QString &view) {
  return probeUnits(session, lib, view).metresPerDbu;
}
