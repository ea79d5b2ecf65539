#!/usr/bin/env python3
"""Makes the commands of the package: generate.py bindings.txt INCLUDE_DIR OUTPUT_DIR

Writes classes.h and tables.cpp (classes, constants), GROUP_forms.cpp for each group of bindings.txt, and unbound.txt, the
functions of bound classes that have no command.
"""

import re
import sys
from pathlib import Path

import cppheader

INTEGERS = {
    "oaInt1": (-128, 127), "oaInt2": (-32768, 32767), "oaInt4": (-2**31, 2**31 - 1), "oaInt8": (-2**63, 2**63 - 1),
    "oaUInt1": (0, 255), "oaByte": (0, 255), "oaUInt2": (0, 65535), "oaUInt4": (0, 2**32 - 1), "oaUInt8": (0, 2**63 - 1),
    "oaLayerNum": (0, 2**32 - 1), "oaPurposeNum": (0, 2**32 - 1), "oaTime": (-2**63, 2**63 - 1),
    "int": (-2**31, 2**31 - 1),
}
NUMBERS = {"oaFloat", "oaDouble"}
COORDINATES = {"oaCoord", "oaOffset"}
# Utility classes that cannot be made without arguments.
WITHOUT_DEFAULT = {"oaNameSpace", "oaBuildInfo"}
# Classes of objects that are made by hand: sessioncommands.cpp, collections.cpp, pcellcommands.cpp.
HAND_MADE = ["UInt4", "Collection", "PcellDef"]


class Bindings:
    """bindings.txt together with the headers it names."""

    def __init__(self, path, include_dir):
        self.groups = {}  # name -> classes
        self.headers, self.managed, self.utility, self.elements = [], {}, {}, {}
        self.enumerations, self.constants = {}, []  # wrapper -> its enum
        self.classes, self.functions = {}, {}
        marks = {mark: set() for mark in ("second", "length", "area", "omit", "outside", "path", "apart")}
        self.most = {}  # name of a parameter -> its largest value
        group = None
        for number, line in enumerate(Path(path).read_text().splitlines(), 1):
            words = line.split("#")[0].split(None, 1)
            if not words:
                continue
            keyword, rest = words[0], words[1].strip()
            if keyword == "group":
                group = self.groups.setdefault(rest, [])
                self.functions[rest] = []
            elif keyword == "header":
                self.read_header(Path(include_dir) / rest, group)
            elif keyword in ("geometry", "plain", "name", "object"):
                self.utility[rest] = keyword
            elif keyword == "array":
                name, element = rest.split()
                self.utility[name], self.elements[name] = "array", element
            elif keyword == "function":
                self.functions[list(self.groups)[-1]].append(rest)
            elif keyword == "most":
                name, number_text = rest.split()
                self.most[name] = int(number_text)
            elif keyword in marks:
                marks[keyword].add(rest)
            else:
                sys.exit(f"{path}:{number}: unknown keyword {keyword}")
        self.second, self.lengths, self.areas, self.omitted, self.outside, self.paths, apart = marks.values()
        self.find_managed()
        self.check_classes(path, include_dir, apart)
        declared = {function.signature() for found in self.classes.values() for function in found.functions}
        if self.omitted - declared:
            sys.exit(f"{path}: omits what no header declares: {', '.join(sorted(self.omitted - declared))}")
        known = set(self.classes) | {f"{function.owner}::{function.name}"
                                     for found in self.classes.values() for function in found.functions}
        if self.outside - known:
            sys.exit(f"{path}: puts outside what no header declares: {', '.join(sorted(self.outside - known))}")

    def read_header(self, path, group):
        header = cppheader.parse_header(path)
        self.headers.append(path.name)
        self.constants += header.macros
        for enumeration, names in header.enumerations.items():
            self.constants += names
        for wrapper in header.wrappers:
            self.enumerations[wrapper] = wrapper + "Enum"
        for found in header.classes:
            if found.base.startswith(("oaEnumWrapper<", "oaNamedAttrType<")):
                self.enumerations[found.name] = found.name + "Enum"
            self.classes[found.name] = found
            group.append(found)

    def find_managed(self):
        for name in self.classes:
            ancestor = name
            while ancestor in self.classes:
                if ancestor == "oaObject":
                    self.managed[name] = True
                ancestor = self.classes[ancestor].base

    def check_classes(self, path, include_dir, apart):
        """A class of any header has commands, or is named as one that has none."""
        headers = [cppheader.parse_header(header) for header in sorted(Path(include_dir).glob("*.h"))]
        declared = {found.name: found.header for header in headers for found in header.classes}
        forgotten = [f"{name} ({header})" for name, header in declared.items()
                     if not self.is_bound(name) and name not in apart]
        if forgotten:
            sys.exit(f"{path}: neither binds nor sets apart {', '.join(forgotten)}")
        wrong = [name for name in sorted(apart) if name not in declared or self.is_bound(name)]
        if wrong:
            sys.exit(f"{path}: sets apart what is bound or no header declares: {', '.join(wrong)}")

    def is_path(self, function, parameter):
        return parameter.name in self.paths or f"{function.owner}::{parameter.name}" in self.paths

    def is_bound(self, name):
        return name in self.managed or name in self.utility or name in self.enumerations

    def has_lengths(self, name):
        return self.utility.get(name) == "geometry" or self.elements.get(name) in ("oaPoint", "oaBox")

    def enumeration_of(self, type_):
        """The wrapper class of an enumeration type, given either name."""
        if type_ in self.enumerations:
            return type_
        return type_[:-4] if type_.endswith("Enum") and type_[:-4] in self.enumerations else None


class Unbindable(Exception):
    pass


class Input:
    """How one parameter is taken from the arguments."""

    def __init__(self, kind, name, code, cls=None, bounds=None, second=False):
        self.kind, self.name, self.code, self.cls, self.bounds, self.second = kind, name, code, cls, bounds, second

    def row(self):
        parts = [f"ParameterKind::{self.kind}", f'"{self.name}"']
        if self.cls or self.bounds or self.second:
            parts.append(f"&classOf<{self.cls}>()" if self.cls else "nullptr")
        if self.bounds or self.second:
            low, high = self.bounds or (0, 0)
            parts += [str(low) if low > -2**63 else "INT64_MIN", str(high) if high < 2**63 - 1 else "INT64_MAX"]
        if self.second:
            parts.append("true")
        return "{" + ", ".join(parts) + "}"


def bare(type_):
    return type_.replace("const ", "").replace("&", "").replace("*", "").strip()


def take(bindings, function, parameter, place):
    """The Input for a parameter that is read."""
    type_, name = parameter.type, parameter.name or "value"
    base = bare(type_)
    plain = "*" not in type_ and not (type_.endswith("&") and not type_.startswith("const "))
    enumeration = bindings.enumeration_of(base)
    if type_ in ("const oaString &", "oaString", "const oaChar *"):
        return Input("string", name, f"call.{'path' if bindings.is_path(function, parameter) else 'string'}({place})")
    if type_ == "const oaNameSpace &":
        return Input("nameSpace", name, f"call.nameSpace({place})", "oaNameSpace")
    if base == "oaAttrType" and plain:
        return Input("attribute", name, f"call.attribute({place}, 0)")
    if type_.endswith("*"):
        return take_pointer(bindings, parameter, base, name, place)
    if not plain:
        raise Unbindable(type_)
    if base in COORDINATES:
        return Input("coordinate", name, f"call.coordinate({place})")
    if base == "oaDist":
        return Input("distance", name, f"call.distance({place})")
    if base in INTEGERS:
        low, high = INTEGERS[base]
        return Input("integer", name, f"call.integer<{base}>({place})", bounds=(low, bindings.most.get(name, high)))
    if base in NUMBERS:
        code = f"call.number({place})"
        is_float = base == "oaFloat"
        return Input("number", name, f"static_cast<oaFloat>({code})" if is_float else code, second=is_float)
    if base == "oaBoolean":
        return Input("boolean", name, f"call.boolean({place})")
    if base == "oaChar":
        return Input("character", name, f"call.character({place})")
    if enumeration:
        return Input("enumeration", name, f"call.enumeration<{bindings.enumerations[enumeration]}>({place})", enumeration)
    if base in bindings.utility:
        kind = "name" if bindings.utility[base] == "name" else "value"
        return Input(kind, name, f"call.{kind}<{base}>({place})", base, second=base in bindings.second)
    raise Unbindable(type_)


def take_pointer(bindings, parameter, base, name, place):
    may_be_null = parameter.default in ("NULL", "nullptr")
    if base in bindings.managed and "**" not in parameter.type:
        kind = "optionalObject" if may_be_null else "object"
        return Input(kind, name, f"call.object<{base}>({place})", base)
    if base in bindings.utility and may_be_null:
        return Input("optionalValue", name, f"call.pointer<{base}>({place})", base)
    if may_be_null:
        return Input("nothing", name, f"static_cast<{base} *>(nullptr)")
    raise Unbindable(parameter.type)


def is_output(bindings, parameter):
    type_ = parameter.type
    if not type_.endswith("&") or type_.startswith("const "):
        return False
    base = bare(type_)
    return (base in bindings.utility or base in NUMBERS or base in COORDINATES or base in INTEGERS or
            base in ("oaString", "oaDist") or (base in bindings.managed and type_.endswith("*&")))


def give(bindings, type_, code, function):
    """The statement that makes `code` of the type a result."""
    base = bare(type_)
    full = f"{function.owner}::{function.name}"
    if base == "oaAttrType":
        return f"call.giveAttribute({code}, call.object<{function.owner}>(0)->getObject());"
    if full in bindings.lengths or base in COORDINATES or base == "oaDist":
        return f"call.giveLength({code});"
    if full in bindings.areas:
        return f"call.giveArea({code});"
    if type_.endswith(("*", "*&")) and base != "oaChar":
        if base in bindings.utility and type_ == base + " *":
            return f"call.giveCopy<{base}>({code});"
        if base not in bindings.managed:
            raise Unbindable(type_)
        return f"call.give({code});"
    enumeration = bindings.enumeration_of(base)
    if enumeration:
        return f"call.giveEnum({enumeration}({code}));"
    if base in bindings.utility:
        return f"call.giveValue<{base}>({code});"
    if (base in INTEGERS or base in NUMBERS or base in ("oaBoolean", "oaChar", "oaString") or
            base.startswith(("oaCollection<", "oaTextDisplayCollection", "oaEnumCollection"))):
        return f"call.give({code});"
    raise Unbindable(type_)


def with_default(parameter, source, place):
    """The argument, or the default that C++ would take."""
    if parameter.default is None or source.kind in ("optionalObject", "optionalValue", "nothing"):
        return source.code
    type_ = bare(parameter.type) if parameter.type != "const oaChar *" else "oaString"
    return f"(call.given({place}) ? {type_}({source.code}) : {type_}({parameter.default}))"


class FormWriter:
    """The forms of one function: usually one; a function that fills values has another in which the caller passes them."""

    def __init__(self, bindings, function):
        self.bindings, self.function = bindings, function
        self.outputs = [p for p in function.parameters if is_output(bindings, p)]
        if self.function.is_constructor:
            self.outputs = []

    def command(self):
        function = self.function
        cls = function.owner[2:] if function.owner.startswith("oa") else function.owner
        if function.is_constructor:
            return cls
        if function.is_static:
            return cls + function.name[0].upper() + function.name[1:]
        return function.name

    def first(self):
        """The parameter before those of the declaration: the object of a member function."""
        function, bindings = self.function, self.bindings
        if function.is_static or function.is_constructor:
            return None, function.owner + "::" + function.name
        owner = function.owner
        name = owner[2].lower() + owner[3:]
        if owner in bindings.managed:
            return Input("object", name, "", owner), f"call.object<{owner}>(0)->{function.name}"
        if owner in bindings.enumerations:
            enumeration = f"{owner}(call.enumeration<{bindings.enumerations[owner]}>(0))"
            return Input("enumObject", name, "", owner), f"{enumeration}.{function.name}"
        # Any text could be read as a name, so names are asked as objects only.
        if function.is_const and bindings.utility[owner] not in ("object", "name"):
            return (Input("value", name, "", owner, second=owner in bindings.second),
                    f"call.value<{owner}>(0).{function.name}")
        return Input("changed", name, "", owner), f"call.changed<{owner}>(0).{function.name}"

    def write(self, pass_outputs, returns_first):
        first, callee = self.first()
        inputs, arguments, declarations, gifts, required = [], [], [], [], 0
        if first:
            inputs.append(first)
            required = 1
        for parameter in self.function.parameters:
            place = len(inputs)
            if parameter in self.outputs and not pass_outputs:
                local = f"out{len(declarations)}"
                base = bare(parameter.type)
                is_pointer = parameter.type.endswith("*&")
                declarations.append(f"{base} *{local} = nullptr;" if is_pointer else f"{base} {local}{{}};")
                arguments.append(local)
                is_path = self.bindings.is_path(self.function, parameter)
                gifts.append(f"call.givePath({local});" if is_path else
                             give(self.bindings, parameter.type, local, self.function))
                continue
            if parameter in self.outputs:
                base = bare(parameter.type)
                inputs.append(Input("changed", parameter.name, "", base))
                arguments.append(f"call.changed<{base}>({place})")
            else:
                source = take(self.bindings, self.function, parameter, place)
                inputs.append(source)
                arguments.append(with_default(parameter, source, place))
            if parameter.default is None:
                required = len(inputs)
        body = self.body(callee, arguments, declarations, gifts)
        if returns_first:
            body += " call.giveArgument(0);"
        return Written(self.command(), inputs, required, body, effect_of(self.bindings, self.function))

    def body(self, callee, arguments, declarations, gifts):
        function = self.function
        expression = f"{callee}({', '.join(arguments)})"
        if function.is_constructor:
            if function.owner in self.bindings.enumerations:
                return f"call.giveNewEnum(classOf<{function.owner}>(), {function.owner}({', '.join(arguments)}));"
            return f"call.useDatabaseUnits(); call.giveNew<{function.owner}>({function.owner}({', '.join(arguments)}));"
        if function.result != "void":
            return give(self.bindings, function.result, expression, function)
        if len(gifts) > 1:
            gifts = ["call.giveList();"] + gifts
        return " ".join(declarations + [expression + ";"] + gifts)

    def forms(self, has_twin):
        """`has_twin`: the same function exists with the result as an output."""
        result = []
        if self.function.result == "void" and self.outputs or not self.outputs:
            result.append(self.write(False, has_twin))
        if self.outputs and all(bare(p.type) in self.bindings.utility for p in self.outputs):
            result.append(self.write(True, False))
        if not result:
            raise Unbindable("several results of which some are no objects")
        return result


class Written:
    def __init__(self, command, inputs, required, body, effect="none"):
        self.command, self.inputs, self.required, self.body, self.effect = command, inputs, required, body, effect


def effect_of(bindings, function):
    """What a function may do, from its declaration: see Effect in parameter.h."""
    if function.owner not in bindings.managed:
        return "none"
    if function.owner in bindings.outside or f"{function.owner}::{function.name}" in bindings.outside:
        return "outside"
    if function.name in ("copy", "copyTo"):
        return "copies"
    if not function.is_static:
        return "reads" if function.is_const or function.name.startswith(("dbuTo", "uuTo")) else "changes"
    if re.match(r"(find|get|exists|has|is|calc|gen)(?![a-z])", function.name):
        return "reads"
    parameters = function.parameters
    return "changes" if parameters and bare(parameters[0].type) in bindings.managed else "outside"


def in_place_twins(found):
    """Functions that change their object and have a twin that gives the result instead."""
    twins = set()
    for function in found.functions:
        if function.is_const or function.result != "void":
            continue
        for other in found.functions:
            types = [p.type for p in function.parameters]
            with_result = [p.type for p in other.parameters]
            if (other.name == function.name and other.is_const and other.result == "void" and
                    with_result == types + [found.name + " &"]):
                twins.add(function.signature())
    return twins


def enumeration_constructor(name):
    return Written(name[2:], [Input("enumeration", "name", "", name)], 1,
                   f"call.giveNewEnum(classOf<{name}>(), oaUInt4(call.enumeration<{name}Enum>(0)));")


def enumeration_get_name(name):
    return Written("getName", [Input("enumObject", name[2].lower() + name[3:], "", name)], 1,
                   f"call.giveEnum({name}(call.enumeration<{name}Enum>(0)));")


def class_forms(bindings, found, unbound):
    forms = []
    twins = in_place_twins(found) if found.name in bindings.utility else set()
    if found.name in bindings.enumerations:
        forms += [enumeration_constructor(found.name), enumeration_get_name(found.name)]
    for function in found.functions:
        if function.signature() in bindings.omitted:
            continue
        is_reference = function.result.endswith("&") and not function.result.startswith("const ")
        if is_reference or function.is_constructor and (found.name in bindings.enumerations or
                                                        found.name in bindings.managed):
            continue  # the read-only twin of the accessor is bound; wrappers are made above
        try:
            forms += FormWriter(bindings, function).forms(function.signature() in twins)
        except Unbindable as reason:
            unbound.append(f"{function.signature()}  [{reason}]")
    has_default = any(form.command == found.name[2:] and form.required == 0 for form in forms)
    has_default = has_default or found.name in WITHOUT_DEFAULT
    if bindings.utility.get(found.name) not in (None, "array") and not has_default:
        forms.append(Written(found.name[2:], [], 0, f"call.giveNew<{found.name}>({found.name}());"))
    return forms


def free_function(name):
    inputs, arguments = [], []
    defaults = ("oacAPIMajorRevNumber", "oacAPIMinorRevNumber", "oacDataModelRevNumber")
    for place, (parameter, default) in enumerate(zip(("majorRev", "minorRev", "dataModelRev"), defaults)):
        inputs.append(Input("integer", parameter, "", bounds=INTEGERS["oaUInt4"]))
        arguments.append(f"call.given({place}) ? call.integer<oaUInt4>({place}) : {default}")
    return Written(name[2:], inputs, 0, f"::{name}({', '.join(arguments)});", "outside")


HEAD = "// Generated by generate.py. Changes belong into bindings.txt.\n"


def forms_source(group, forms):
    text = [HEAD, '#include "call.h"', '#include "classes.h"', '#include "forms.h"', "",
            "namespace OpenAccess_4 {", "namespace tcl {", "", "namespace {", ""]
    rows = []
    for number, form in enumerate(forms):
        parameters = "nullptr"
        if form.inputs:
            parameters = f"kParameters{number}"
            text.append(f"const Parameter {parameters}[] = {{{', '.join(i.row() for i in form.inputs)}}};")
        rows.append(f'    {{"{form.command}", {parameters}, {len(form.inputs)}, {form.required}, '
                    f"Effect::{form.effect}, [](Call &call) {{ static_cast<void>(call); {form.body} }}}},")
    text += ["", "const Form kForms[] = {"] + rows + ["};", "", "} // namespace", ""]
    text += [f"extern const FormTable k{group.capitalize()}Forms;",
             f"const FormTable k{group.capitalize()}Forms = {{kForms, sizeof kForms / sizeof kForms[0]}};", "",
             "} // namespace tcl", "} // namespace OpenAccess_4", ""]
    return "\n".join(text)


def bound_classes(bindings):
    return sorted(set(bindings.managed) | set(bindings.utility) | set(bindings.enumerations))


def classes_header(bindings):
    text = [HEAD, "#ifndef OATCL_CLASSES_H", "#define OATCL_CLASSES_H", "", '#include "classinfo.h"', "",
            "namespace OpenAccess_4 {", "namespace tcl {", ""]
    for name in bound_classes(bindings):
        text.append(f"extern const ClassInfo k{name}Class;")
        text.append(f"template <> constexpr const ClassInfo &classOf<{name}>() {{ return k{name}Class; }}")
    text += ["extern const ClassInfo kUInt4Class;", "", "} // namespace tcl", "} // namespace OpenAccess_4", "", "#endif", ""]
    return "\n".join(text)


def class_row(bindings, name):
    base = bindings.classes[name].base if name in bindings.classes else ""
    base = f"&k{base}Class" if bindings.is_bound(base) else "nullptr"
    short = name[2:]
    if name in bindings.managed:
        return f'const ClassInfo k{name}Class = {{"{short}", {base}, ClassKind::managed}};'
    if name in bindings.enumerations:
        names = f"[]() -> const oaEnumNames & {{ return oaEnumNamesOf({bindings.enumerations[name]}()); }}"
        return (f'const ClassInfo k{name}Class = {{"{short}", nullptr, ClassKind::enumeration, nullptr, nullptr, false, '
                f"{names}}};")
    sort = bindings.utility[name]
    kind = "name" if sort == "name" else "utility"
    if sort == "object":
        return f'const ClassInfo k{name}Class = {{"{short}", {base}, ClassKind::{kind}}};'
    lengths = "true" if bindings.has_lengths(name) else "false"
    element = bindings.elements.get(name)
    element = f", nullptr, &k{element}Class" if element and bindings.is_bound(element) else ""
    return (f'const ClassInfo k{name}Class = {{"{short}", nullptr, ClassKind::{kind}, &readPlainForm<{name}>, '
            f"&makePlainForm<{name}>, {lengths}{element}}};")


def tables_source(bindings, type_names):
    text = [HEAD, '#include "classes.h"', '#include "forms.h"', '#include "plainforms.h"', "", "#include <algorithm>",
            "#include <iterator>", "", "namespace OpenAccess_4 {", "namespace tcl {", ""]
    text += [class_row(bindings, name) for name in bound_classes(bindings)]
    text += ["", "const ClassInfo &managedClass(oaTypeEnum type) {", "  switch (type) {"]
    for name in sorted(bindings.managed):
        constant = f"oac{name[2:]}Type"
        if constant in type_names:
            text += [f"  case {constant}:", f"    return k{name}Class;"]
    text += ["  default:", "    return koaObjectClass;", "  }", "}", ""]
    object_classes = sorted([name[2:] for name in list(bindings.utility) + list(bindings.enumerations)] + HAND_MADE)
    text += ["bool isObjectClass(std::string_view name) {", "  static constexpr std::string_view kNames[] = {"]
    text += [f'      "{name}",' for name in object_classes]
    text += ["  };", "  return std::binary_search(std::begin(kNames), std::end(kNames), name);", "}", ""]
    tables = [f"k{group.capitalize()}Forms" for group in bindings.groups]
    text += [f"extern const FormTable {table};" for table in tables]
    tables += ["kCollectionForms", "kArrayForms", "kSessionForms", "kPcellForms"]
    text += ["const FormTable *const kFormTables[] = {" + ", ".join("&" + table for table in tables) + "};",
             f"const std::size_t kFormTableCount = {len(tables)};", "", "const Constant kConstants[] = {"]
    names = sorted(set(bindings.constants))
    text += [f'    {{"{name}", {name}}},' for name in names]
    text += ["};", f"const std::size_t kConstantCount = {len(names)};", "",
             "} // namespace tcl", "} // namespace OpenAccess_4", ""]
    return "\n".join(text)


def write_changed(path, text):
    if not path.exists() or path.read_text() != text:
        path.write_text(text)


def main():
    bindings_file, include_dir, output_dir = sys.argv[1], Path(sys.argv[2]), Path(sys.argv[3])
    bindings = Bindings(bindings_file, include_dir)
    output_dir.mkdir(parents=True, exist_ok=True)
    for name in ("oaTypes.h", "oaBaseMsgIds.h", "oaDMMsgIds.h", "oaTechMsgIds.h", "oaDesignMsgIds.h"):
        header = cppheader.parse_header(include_dir / name)
        bindings.constants += header.macros + [n for names in header.enumerations.values() for n in names]
    unbound = []
    for group, classes in bindings.groups.items():
        forms = [free_function(name) for name in bindings.functions[group]]
        for found in classes:
            if bindings.is_bound(found.name):
                forms += class_forms(bindings, found, unbound)
        # Wrappers that a macro makes have no class in the header's text.
        for wrapper in sorted(bindings.enumerations):
            if wrapper not in bindings.classes and group == list(bindings.groups)[0]:
                forms += [enumeration_constructor(wrapper), enumeration_get_name(wrapper)]
        write_changed(output_dir / f"{group}_forms.cpp", forms_source(group, forms))
    type_names = cppheader.parse_header(include_dir / "oaType.h").enumerations["oaTypeEnum"]
    write_changed(output_dir / "classes.h", classes_header(bindings))
    write_changed(output_dir / "tables.cpp", tables_source(bindings, type_names))
    write_changed(output_dir / "unbound.txt", "".join(line + "\n" for line in sorted(unbound)))


if __name__ == "__main__":
    main()
