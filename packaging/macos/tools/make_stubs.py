#!/usr/bin/env python3
"""make_stubs.py TREE COMPILER-SYMBOLS FOLDER: writes the link stubs (.tbd) of what the framework headers declare.

A stub lists the symbols of a system library and contains no code. A symbol belongs to the framework whose headers
declare it, except those that Apple's linker binds elsewhere. Classes that live in CoreFoundation are found through
Foundation too, which re-exports it.
"""

import pathlib
import sys

import declared

VERSIONS = {"AppKit": "C", "Foundation": "C"}
# Declared by Foundation and exported by CFNetwork, which Foundation re-exports. Apple's linker makes a program that
# uses them load CFNetwork and binds them there.
ELSEWHERE = {name: "CFNetwork" for name in (
    "NSURLRequest", "NSMutableURLRequest", "NSURLResponse", "NSHTTPURLResponse", "NSURLSession", "NSURLSessionTask",
    "NSURLSessionDataTask")}


def install_name(framework):
    return f"/System/Library/Frameworks/{framework}.framework/Versions/{VERSIONS.get(framework, 'A')}/{framework}"


class Library:
    def __init__(self, name, install):
        self.name, self.install = name, install
        self.symbols, self.classes, self.exceptions = set(), set(), set()
        self.reexported = set()

    def all(self):
        names = {"_" + name for name in self.symbols} | {"_OBJC_EHTYPE_$_" + name for name in self.exceptions}
        for name in self.classes:
            names |= {"_OBJC_CLASS_$_" + name, "_OBJC_METACLASS_$_" + name}
        return names

    def text(self):
        lines = ["--- !tapi-tbd", "tbd-version:     4", "targets:         [ x86_64-macos, arm64-macos ]",
                 f"install-name:    '{self.install}'"]
        if self.reexported:
            lines += ["reexported-libraries:", "  - targets:         [ x86_64-macos, arm64-macos ]",
                      f"    libraries:       [ {', '.join(repr(name) for name in sorted(self.reexported))} ]"]
        lines += ["exports:", "  - targets:         [ x86_64-macos, arm64-macos ]"]
        for key, names in (("symbols", {"_" + n for n in self.symbols}), ("objc-classes", self.classes),
                           ("objc-eh-types", self.exceptions)):
            if names:
                lines.append(f"    {key + ':':<16} [ {', '.join(sorted(names))} ]")
        return "\n".join([*lines, "...", ""])


def libraries(tree, compiler_symbols):
    """Every library that may be linked, by its load name."""
    found = {}
    library = None
    for line in pathlib.Path(compiler_symbols).read_text(encoding="utf-8").splitlines():
        line = line.strip()
        if line.startswith("["):
            name, install = line.strip("[]").split()
            library = found.setdefault(install, Library(name, install))
        elif line.startswith("@"):
            library.classes.add(line[1:])
        elif line.startswith("OBJC_EHTYPE_$_"):
            library.exceptions.add(line.removeprefix("OBJC_EHTYPE_$_"))
        elif line and not line.startswith("#"):
            library.symbols.add(line)
    declarations = declared.read(tree)

    def of(framework):
        install = install_name(framework)
        return found.setdefault(install, Library(framework, install))

    for type_ in declarations.types:
        if type_.kind == "ObjCInterfaceDecl":
            home = ELSEWHERE.get(type_.name, type_.framework)
            of(home).classes.add(type_.name)
            if home != type_.framework:
                of(type_.framework).reexported.add(of(home).install)
    for function in declarations.functions:
        if not function.inline:
            of(function.framework).symbols.add(function.name)
    for variable in declarations.variables:
        if not variable.static:
            of(variable.framework).symbols.add(variable.name)
    return found


def main():
    tree, compiler_symbols, folder = sys.argv[1:]
    for library in libraries(tree, compiler_symbols).values():
        name = library.name
        place = f"System/Library/Frameworks/{name}.framework/{name}.tbd"
        if name.startswith("lib"):
            place = f"usr/lib/{name}.tbd"
        path = pathlib.Path(folder) / place
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(library.text(), encoding="utf-8")


if __name__ == "__main__":
    main()
