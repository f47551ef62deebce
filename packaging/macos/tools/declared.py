"""What the hand-written framework headers declare, read from Clang's syntax tree (-ast-dump=json)."""

import dataclasses
import json
import re


@dataclasses.dataclass
class Member:
    """A method or a property."""

    kind: str
    name: str
    is_class: bool
    result: str
    parameters: list
    readonly: bool = False
    getter: str = ""
    place: str = ""


@dataclasses.dataclass
class Type:
    """A class, a protocol or a category of a class."""

    kind: str
    name: str
    superclass: str
    members: list
    framework: str
    place: str


@dataclasses.dataclass
class Function:
    name: str
    result: str
    parameters: list
    inline: bool
    framework: str
    place: str


@dataclasses.dataclass
class Variable:
    name: str
    type: str
    static: bool
    framework: str
    place: str


@dataclasses.dataclass
class Enumeration:
    name: str
    values: dict
    framework: str
    place: str


@dataclasses.dataclass
class Declarations:
    types: list = dataclasses.field(default_factory=list)
    functions: list = dataclasses.field(default_factory=list)
    variables: list = dataclasses.field(default_factory=list)
    enumerations: list = dataclasses.field(default_factory=list)
    # The meaning of each typedef name, in the headers themselves and in the system's C headers.
    typedefs: dict = dataclasses.field(default_factory=dict)

    def count(self):
        return {
            "classes, protocols and categories": len(self.types),
            "methods": sum(m.kind == "method" for t in self.types for m in t.members),
            "properties": sum(m.kind == "property" for t in self.types for m in t.members),
            "functions": sum(not f.inline for f in self.functions),
            "constants": len(self.variables),
            "enumerators": sum(len(e.values) for e in self.enumerations),
        }


def _value(node):
    for child in node.get("inner", []):
        if child["kind"] == "ConstantExpr" and "value" in child:
            return int(child["value"])
        value = _value(child)
        if value is not None:
            return value
    return None


class _Reader:
    def __init__(self):
        self.declarations = Declarations()
        # The tree names a file or a line only if it differs from the last one named anywhere before.
        self.file = ""
        self.line = 0
        self.last_typedef = None

    def _follow(self, thing):
        if isinstance(thing, dict):
            if "file" in thing:
                self.file = thing["file"]
            if "line" in thing:
                self.line = thing["line"]
            for key, value in thing.items():
                if key != "includedFrom" and isinstance(value, (dict, list)):
                    self._follow(value)
        elif isinstance(thing, list):
            for value in thing:
                self._follow(value)

    def _place(self, node):
        """Reads the node's own location and returns it as framework and file:line."""
        location = node.get("loc", {})
        self._follow(location)
        file, line = self.file, self.line
        # A declaration that begins in a macro has the location where the macro was used.
        if "expansionLoc" in location:
            file = location["expansionLoc"].get("file", file)
        framework = re.search(r"/(\w+)\.framework/Headers/", file)
        return framework[1] if framework else "", f"{file}:{line}"

    def read(self, node):
        framework, place = self._place(node)
        self._follow(node.get("range", {}))
        kind = node.get("kind")
        if kind in ("TranslationUnitDecl", "LinkageSpecDecl"):
            for child in node.get("inner", []):
                self.read(child)
            return
        if kind == "TypedefDecl":
            self.declarations.typedefs[node["name"]] = node["type"]["qualType"]
            self.last_typedef = node["name"]
        else:
            if framework and not node.get("isImplicit"):
                self._take(node, kind, framework, place)
            self.last_typedef = None
        self._follow(node.get("inner", []))

    def _take(self, node, kind, framework, place):
        inner = node.get("inner", [])
        if kind in ("ObjCInterfaceDecl", "ObjCProtocolDecl", "ObjCCategoryDecl"):
            if node["range"]["end"].get("tokLen") != len("end"):
                return  # A forward declaration: a complete one closes with @end.
            name = node["interface"]["name"] if kind == "ObjCCategoryDecl" else node["name"]
            superclass = node.get("super", {}).get("name", "")
            members = [self._member(child, place) for child in inner if not child.get("isImplicit")]
            self.declarations.types.append(
                Type(kind, name, superclass, [m for m in members if m], framework, place))
        elif kind == "FunctionDecl":
            parameters = [c["type"]["qualType"] for c in inner if c["kind"] == "ParmVarDecl"]
            result = node["type"]["qualType"].split("(")[0].strip()
            if "(*" in node["type"]["qualType"].split("(", 1)[0]:
                result = node["type"]["qualType"]
            self.declarations.functions.append(
                Function(node["name"], result, parameters, node.get("storageClass") == "static", framework, place))
        elif kind == "VarDecl":
            self.declarations.variables.append(
                Variable(node["name"], node["type"]["qualType"], node.get("storageClass") == "static", framework,
                         place))
        elif kind == "EnumDecl":
            values, last = {}, -1
            for child in inner:
                if child["kind"] == "EnumConstantDecl":
                    value = _value(child)
                    last = last + 1 if value is None else value
                    values[child["name"]] = last
            if values:
                # An option set is a typedef followed directly by an unnamed enumeration.
                self.declarations.enumerations.append(
                    Enumeration(node.get("name") or self.last_typedef or "", values, framework, place))

    def _member(self, node, place):
        if node["kind"] == "ObjCMethodDecl":
            parameters = [c["type"]["qualType"] for c in node.get("inner", []) if c["kind"] == "ParmVarDecl"]
            return Member("method", node["name"], not node.get("instance"), node["returnType"]["qualType"], parameters,
                          place=place)
        if node["kind"] == "ObjCPropertyDecl":
            return Member("property", node["name"], bool(node.get("class")), node["type"]["qualType"], [],
                          readonly=bool(node.get("readonly")), getter=node.get("getter", {}).get("name", ""),
                          place=place)
        return None


def read(path):
    reader = _Reader()
    with open(path, encoding="utf-8") as file:
        reader.read(json.load(file))
    return reader.declarations
