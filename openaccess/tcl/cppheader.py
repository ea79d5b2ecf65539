"""Reads the declarations of the kit's public headers.

No general C++ parser: it knows how these headers are written (formatted by clang-format, one class after the other, no
preprocessor conditions inside), and raises for what it does not understand rather than guessing.
"""

import re
from dataclasses import dataclass, field


@dataclass
class Parameter:
    type: str  # as written, without the name: "const oaString &"
    name: str
    default: str = None


@dataclass
class Function:
    owner: str  # class
    name: str
    result: str  # "" for a constructor
    parameters: list
    is_static: bool = False
    is_const: bool = False
    is_constructor: bool = False

    def signature(self):
        return f"{self.owner}::{self.name}({', '.join(p.type for p in self.parameters)}){' const' if self.is_const else ''}"


@dataclass
class Class:
    name: str
    base: str  # first public base as written, or ""
    header: str
    functions: list = field(default_factory=list)


@dataclass
class Header:
    classes: list
    enumerations: dict  # name of the enum -> its enumerators
    wrappers: list  # names of classes made by OA_ENUM_WRAPPER
    macros: list  # names of macros oac... and constants oav... that stand for numbers


def strip_comments(text):
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
    return re.sub(r"//[^\n]*", "", text)


def matching(text, start, opening, closing):
    """The place behind the bracket that closes the one at `start`."""
    depth = 0
    for place in range(start, len(text)):
        if text[place] == opening:
            depth += 1
        elif text[place] == closing:
            depth -= 1
            if depth == 0:
                return place + 1
    raise ValueError(f"no {closing!r} for the {opening!r} in {text[start:start + 60]!r}")


def split_top(text, separator=","):
    """Splits at separators that stand outside of all brackets and strings."""
    parts, depth, begin, quoted = [], 0, 0, False
    for place, letter in enumerate(text):
        if letter == '"':
            quoted = not quoted
        elif quoted:
            continue
        elif letter in "(<{[":
            depth += 1
        elif letter in ")>}]":
            depth -= 1
        elif letter == separator and depth == 0:
            parts.append(text[begin:place])
            begin = place + 1
    parts.append(text[begin:])
    return [part.strip() for part in parts if part.strip()]


def members(body):
    """(access, declaration without body) of each member."""
    access, place, declaration, depth = "private", 0, "", 0
    while place < len(body):
        label = re.compile(r"\s*(public|protected|private):").match(body, place) if not declaration.strip() else None
        if label:
            access, declaration, place = label.group(1), "", label.end()
            continue
        letter = body[place]
        depth += (letter == "(") - (letter == ")")
        if letter == "{" and depth == 0:
            place = matching(body, place, "{", "}")
            # The braces of a nested type or a default value belong to a declaration that ends with a semicolon.
            if not re.match(r"\s*(struct|enum|class|union)\b", declaration) and "(" in declaration:
                yield access, declaration
                declaration = ""
            continue
        if letter == ";" and depth == 0:
            if declaration.strip():
                yield access, declaration
            declaration = ""
        else:
            declaration += letter
        place += 1


def parse_parameter(text):
    text, _, default = text.partition("=")
    match = re.match(r"(.*?)(\w+)?(\[\])?\s*$", " ".join(text.split()))
    type_, name = match.group(1).strip(), match.group(2) or ""
    if match.group(3):
        type_ += " []"
    if not type_ or type_ == "const":
        raise ValueError(f"parameter without a name: {text!r}")
    return Parameter(type_, name, default.strip() or None)


def parse_function(owner, declaration):
    """None for what is no function that a client calls by name."""
    text = " ".join(declaration.split())
    if text.startswith(("using ", "typedef ", "friend ", "template", "struct ", "enum ", "class ", "union ")):
        return None
    if "(" not in text or "operator" in text or "~" in text or re.search(r"\)\s*=\s*(default|delete)$", text):
        return None
    words = r"(?:(?:virtual|explicit|inline|constexpr|\[\[noreturn\]\]) )*"
    match = re.match(words + r"(static )?" + words + r"(.*?)(\w+)\(", text)
    end = matching(text, match.end() - 1, "(", ")")
    name, result = match.group(3), match.group(2).strip()
    is_constructor = name == owner
    if not is_constructor and not result:
        raise ValueError(f"{owner}: cannot read {text!r}")
    inside = text[match.end():end - 1]
    if "(*" in inside:
        return None
    rest = text[end:]
    return Function(owner, name, result, [parse_parameter(p) for p in split_top(inside)], bool(match.group(1)),
                    rest.strip().startswith("const"), is_constructor)


def parse_header(path):
    raw = open(path).read()
    text = strip_comments(raw)
    macros = re.findall(r"^#define (oac\w+) ", text, flags=re.M) + re.findall(r"\bconstexpr \S+ (o[ac][vc]\w+) =", text)
    macros += re.findall(r"\bconstexpr \S+ (oav\w+) =", text)
    text = re.sub(r"^#define.*?[^\\]$", "", text, flags=re.M | re.S)
    enumerations, classes = {}, []
    wrappers = re.findall(r"\bOA_ENUM_WRAPPER\((\w+)\);", text)
    for match in re.finditer(r"\benum (\w+) \{(.*?)\}", text, flags=re.S):
        enumerations[match.group(1)] = [re.match(r"\w+", e).group(0) for e in split_top(match.group(2))]
    for match in re.finditer(r"^(?:template <[^>]*> )?class (\w+)(?: : public ([^{;]*?))? \{", text, flags=re.M):
        if match.group(0).startswith("template"):
            continue
        body = text[match.end():matching(text, match.end() - 1, "{", "}") - 1]
        found = Class(match.group(1), match.group(2) or "", path.name)
        for access, declaration in members(body):
            function = parse_function(found.name, declaration) if access == "public" else None
            if function:
                found.functions.append(function)
        classes.append(found)
    return Header(classes, enumerations, wrappers, sorted(set(macros)))
