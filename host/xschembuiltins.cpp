#include "xschembuiltins.h"

namespace {

constexpr char kParasiticCapacitor[] = R"(K {type=parasitic_capacitor
format="@name @pinlist @gnd @value m=@m"
template="name=C1 gnd=0 value=4f m=1"}
L 4 0 -10 0 -3 {}
L 4 -5 -3 5 -3 {}
L 4 -5 0 5 0 {}
L 4 0 0 0 5 {}
L 4 -3 5 3 5 {}
B 5 -1 -11 1 -9 {name=p dir=inout}
T {@name} 7 -9 0 0 0.15 0.15 {}
T {@value} 7 -2 0 0 0.15 0.15 {}
)";

constexpr char kCapacitor[] = R"(K {type=capacitor
format="@name @pinlist @value m=@m"
template="name=C1 m=1 value=1p"}
L 4 0 -30 0 -3 {}
L 4 -10 -3 10 -3 {}
L 4 -10 3 10 3 {}
L 4 0 3 0 30 {}
B 5 -2.5 -32.5 2.5 -27.5 {name=p dir=inout}
B 5 -2.5 27.5 2.5 32.5 {name=m dir=inout}
T {@name} 15 -19 0 0 0.2 0.2 {}
T {@value} 15 -6 0 0 0.2 0.2 {}
)";

constexpr char kResistor[] = R"(K {type=resistor
format="@name @pinlist @value m=@m"
template="name=R1 value=1k m=1"}
L 4 0 -30 0 -20 {}
P 4 5 -6 -20 6 -20 6 20 -6 20 -6 -20 {}
L 4 0 20 0 30 {}
B 5 -2.5 -32.5 2.5 -27.5 {name=p dir=inout}
B 5 -2.5 27.5 2.5 32.5 {name=m dir=inout}
T {@name} 15 -19 0 0 0.2 0.2 {}
T {@value} 15 -6 0 0 0.2 0.2 {}
)";

constexpr XschemBuiltIn kBuiltIns[] = {
    {"ipin", XschemRole::InputPort, false, nullptr, nullptr},
    {"opin", XschemRole::OutputPort, false, nullptr, nullptr},
    {"iopin", XschemRole::BidirectionalPort, false, nullptr, nullptr},
    {"lab_pin", XschemRole::Label, false, nullptr, nullptr},
    {"lab_wire", XschemRole::Label, false, nullptr, nullptr},
    {"lab_show", XschemRole::ShownLabel, false, nullptr, nullptr},
    {"vdd", XschemRole::Label, true, "VDD", nullptr},
    {"vcc", XschemRole::Label, true, "VCC", nullptr},
    {"vss", XschemRole::Label, true, "VSS", nullptr},
    {"gnd", XschemRole::Ground, true, "0", nullptr},
    {"noconn", XschemRole::OpenEnd, false, nullptr, nullptr},
    {"title", XschemRole::Decoration, false, nullptr, nullptr},
    {"title-2", XschemRole::Decoration, false, nullptr, nullptr},
    {"title-3", XschemRole::Decoration, false, nullptr, nullptr},
    {"architecture", XschemRole::Decoration, false, nullptr, nullptr},
    {"code", XschemRole::Decoration, false, nullptr, nullptr},
    {"code_shown", XschemRole::Decoration, false, nullptr, nullptr},
    {"netlist", XschemRole::Decoration, false, nullptr, nullptr},
    {"netlist_not_shown", XschemRole::Decoration, false, nullptr, nullptr},
    {"launcher", XschemRole::Decoration, false, nullptr, nullptr},
    {"parax_cap", XschemRole::Device, false, nullptr, kParasiticCapacitor},
    {"capa", XschemRole::Device, false, nullptr, kCapacitor},
    {"res", XschemRole::Device, false, nullptr, kResistor},
};

} // namespace

const XschemBuiltIn *xschemBuiltIn(const QString &cell) {
  for (const XschemBuiltIn &known : kBuiltIns) {
    if (cell == QLatin1String(known.cell))
      return &known;
  }
  return nullptr;
}

XschemRole xschemRoleOfType(const QString &type) {
  static const QHash<QString, XschemRole> roles = {{QStringLiteral("ipin"), XschemRole::InputPort},
                                                   {QStringLiteral("opin"), XschemRole::OutputPort},
                                                   {QStringLiteral("iopin"), XschemRole::BidirectionalPort},
                                                   {QStringLiteral("label"), XschemRole::Label},
                                                   {QStringLiteral("show_label"), XschemRole::ShownLabel},
                                                   {QStringLiteral("noconn"), XschemRole::OpenEnd},
                                                   {QStringLiteral("logo"), XschemRole::Decoration},
                                                   {QStringLiteral("architecture"), XschemRole::Decoration},
                                                   {QStringLiteral("netlist_commands"), XschemRole::Decoration},
                                                   {QStringLiteral("launcher"), XschemRole::Decoration}};
  return roles.value(type, XschemRole::Device);
}
