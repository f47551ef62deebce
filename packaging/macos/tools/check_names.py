#!/usr/bin/env python3
"""check_names.py TREE LISTING: compares the hand-written framework headers with the public listing of the real ones.

TREE is Clang's syntax tree of a file that imports every header, LISTING the unpacked package. Compares the names of
classes, selectors, properties, functions and constants, class and instance members, read-only properties,
superclasses, the number and the coarse kind of parameters and results, and the values of enumerators.

The listing does not contain, so this cannot check: widths of numbers, nullability, ownership, availability, the
values of constants outside enumerations, and macros. A reader compares those with the public documentation.
"""

import re
import sys

import declared
from listing import Listing

# Enumerators whose names do not begin with their type's name.
PREFIXES = {"NSAutoresizingMaskOptions": "NSView", "CGEventFlags": "kCGEventFlagMask", "NSWindowOcclusionState": ""}
GENERICS = ("ObjectType", "KeyType", "KeyType<NSCopying>")
# Names that the listing lacks, each for a reason.
ELSEWHERE = {
    # Inline or macros in the real headers.
    "CFBridgingRelease", "CFBridgingRetain", "NSMakeRange", "NSMakePoint", "NSMakeSize", "NSMakeRect", "CGPointMake",
    "CGSizeMake", "CGRectMake",
}


def plain(text):
    """A type without what the listing does not contain: nullability, ownership, availability, qualifiers."""
    text = re.sub(r"API_AVAILABLE\(macos\([\d.]+\)\)", "", text)
    text = re.sub(r"NS_RETURNS_INNER_POINTER|NS_DESIGNATED_INITIALIZER", "", text)
    text = re.sub(r"\b_(Nonnull|Nullable|Null_unspecified)\b", "", text)
    text = re.sub(r"\b__(strong|autoreleasing|unsafe_unretained|kindof|weak)\b", "", text)
    text = re.sub(r"\b(const|struct|enum)\b", "", text)
    return re.sub(r"\s+", " ", text).strip().replace(" *", "*").replace("* *", "**")


class Kinds:
    """What the listing may show for a type of the headers."""

    NUMBERS = {"int", "unsigned int", "long", "unsigned long", "long long", "unsigned long long", "double", "float",
               "short", "unsigned short", "unsigned char", "signed char", "char"}

    def __init__(self, declarations, listing):
        self.typedefs = declarations.typedefs
        self.listing = listing

    def of(self, text, parameters=()):
        structure = "struct " in text
        text = plain(text)
        if "(^" in text or "(*" in text:
            return {"function"}
        if text in parameters:
            return {"interop.Object", *re.findall(r"\w+", text)}
        # If the listing has an enumeration with the typedef's name, it uses that name.
        if text in self.listing.enumerations:
            return {f"interop.Enum<typeof {text}>"}
        if text in ("BOOL", "bool"):
            return {"boolean"}
        if text == "instancetype":
            return {"this", "InstanceType<This>"}
        if text == "SEL":
            return {"string"}
        if text in ("Class", "IMP"):
            return {"interop.Object"}
        if text == "id":
            return {"interop.Object"}
        protocol = re.fullmatch(r"id<(\w+)>", text)
        if protocol:
            own = {"NSObjectProtocol", "interop.Object"} if protocol[1] == "NSObject" else {protocol[1]}
            return own | {"NSObject"}
        if re.fullmatch(r"NSString\*", text):
            return {"string"}
        if text == "char*":
            return {"string"}
        pointer = re.fullmatch(r"(\w+)(<.*>)?\*", text)
        if pointer and pointer[1] in self.listing.classes and not structure and pointer[1] not in self.typedefs:
            return {pointer[1]}
        if re.fullmatch(r"(\w+)Ref", text):
            return {"interop.Object", "interop.Pointer", "interop.PointerConvertible"}
        if text.endswith("*") or text.endswith("]"):
            return {"interop.Pointer", "interop.PointerConvertible"}
        if text in self.NUMBERS:
            return {"number"}
        if text == "void":
            return {"void"}
        if text in self.typedefs and plain(self.typedefs[text]) != text:
            return self.of(self.typedefs[text], parameters)
        return {text}

    @staticmethod
    def listed(text):
        """The kind of a type in the listing."""
        text = text.strip()
        if re.match(r"^\(.*\) => ", text) or re.match(r"^\(\) => ", text):
            return "function"
        text = re.sub(r" \| null$", "", text)
        if text.startswith("("):
            return "function"
        text = text.split(" | ")[0]
        if text.startswith("interop.Enum<"):
            return text
        return re.sub(r"<.*>$", "", text) if not text.startswith("InstanceType<") else text


def split_parameters(text):
    """Splits '<T>(a: A, b: (p1: B) => void): R' into [A, (p1: B) => void] and R."""
    start = depth = 0
    while text[start] != "(" or depth:
        depth += {"<": 1, ">": -1 if text[start - 1] != "=" else 0}.get(text[start], 0)
        start += 1
    parts, depth, begin, at = [], 0, start + 1, start
    for at in range(start, len(text)):
        character = text[at]
        if character in "(<{[":
            depth += 1
        elif character in ")}]" or character == ">" and text[at - 1] != "=":
            depth -= 1
        if depth == 1 and character == "," or depth == 0:
            if text[begin:at].strip():
                parts.append(text[begin:at].strip())
            begin = at + 1
        if depth == 0:
            break
    result = text[at + 1:].lstrip(": ").strip()
    return [p.split(": ", 1)[1] for p in parts if not p.startswith("this:")], result


class Check:
    def __init__(self, declarations, listing):
        self.declarations, self.listing = declarations, listing
        self.kinds = Kinds(declarations, listing)
        self.problems = []
        self.names_only = []

    def say(self, place, text):
        self.problems.append(f"{re.sub(r'^.*/Frameworks/', '', place)}: {text}")

    def fits(self, declared_type, listed_type, generics, owner=""):
        kinds = self.kinds.of(declared_type, generics)
        listed = self.kinds.listed(listed_type)
        if listed in kinds:
            return True
        if kinds & {"this", "InstanceType<This>"} and listed == owner:
            return True
        # A class as a result may be declared more loosely or more strictly than in the listing.
        return listed == "this" and owner in kinds

    def signature(self, place, what, result, parameters, listed, generics=(), owner=""):
        listed_parameters, listed_result = split_parameters(listed)
        if len(parameters) != len(listed_parameters):
            return f"{what} takes {len(parameters)} values, the listing says {len(listed_parameters)}"
        for number, (mine, theirs) in enumerate(zip(parameters, listed_parameters), 1):
            if not self.fits(mine, theirs, generics, owner):
                return f"{what}: value {number} is {plain(mine)}, the listing says {theirs}"
        if not self.fits(result, listed_result, generics, owner):
            return f"{what} gives {plain(result)}, the listing says {listed_result}"
        return ""

    def run(self):
        for type_ in self.declarations.types:
            self.type(type_)
        for function in self.declarations.functions:
            self.function(function)
        for variable in self.declarations.variables:
            self.variable(variable)
        for enumeration in self.declarations.enumerations:
            self.enumeration(enumeration)

    def type(self, type_):
        name = type_.name if type_.name in self.listing.classes else type_.name + "Protocol"
        if name not in self.listing.classes:
            self.say(type_.place, f"{type_.name} is not listed")
            return
        if type_.kind == "ObjCInterfaceDecl":
            # The listing puts the superclass before the protocols.
            superclass = next(iter(self.listing.bases[name]), "")
            if type_.superclass != superclass:
                self.say(type_.place, f"{type_.name} inherits from {type_.superclass or 'nothing'}, "
                                      f"the listing says {superclass}")
        for member in type_.members:
            what = f"{'+' if member.is_class else '-'}[{type_.name} {member.name}]"
            problem = (self.method if member.kind == "method" else self.property)(name, member, what)
            if problem:
                self.say(member.place, problem)

    def method(self, owner, member, what):
        pieces = member.name.rstrip(":").split(":")
        joined = pieces[0] + "".join(piece[:1].upper() + piece[1:] for piece in pieces[1:])
        found = self.listing.members(owner, joined)
        if not found:
            return f"{what} is not listed"
        if member.name.encode() not in self.listing.strings:
            return f"{what} is no selector of the listing"
        mine = [entry for entry in found if entry.is_class == member.is_class]
        if not mine:
            return f"{what} is listed as {'an instance' if member.is_class else 'a class'} method"
        problems = []
        for entry in mine:
            # The listing shows some methods without parameters as properties.
            text = entry.text if entry.is_method else "()" + entry.text
            problems.append(self.signature(member.place, what, member.result, member.parameters, text, GENERICS,
                                           owner))
        return "" if "" in problems else problems[0]

    def property(self, owner, member, what):
        found = self.listing.members(owner, member.name)
        if not found:
            return f"{what} is not listed"
        mine = [entry for entry in found if entry.is_class == member.is_class]
        if not mine:
            return f"{what} is listed as {'an instance' if member.is_class else 'a class'} property"
        selectors = [member.getter or member.name]
        if not member.readonly:
            selectors.append(f"set{member.name[0].upper()}{member.name[1:]}:")
            if all(entry.readonly for entry in mine if not entry.is_method):
                return f"{what} is read-only in the listing"
        for selector in selectors:
            if selector.encode() not in self.listing.strings:
                return f"{what}: {selector} is no selector of the listing"
        problems = []
        for entry in mine:
            text = entry.text if entry.is_method else "()" + entry.text
            problems.append(self.signature(member.place, what, member.result, [], text, GENERICS, owner))
        return "" if "" in problems else problems[0]

    def function(self, function):
        if function.name in ELSEWHERE:
            return
        listed = self.listing.functions.get(function.name)
        if listed is None:
            self.say(function.place, f"{function.name}() is not listed")
            return
        problem = self.signature(function.place, f"{function.name}()", function.result, function.parameters, listed)
        # The listing omits a variadic function's further arguments.
        if problem:
            self.say(function.place, problem)

    def variable(self, variable):
        listed = self.listing.constants.get(variable.name)
        if listed is None:
            self.say(variable.place, f"{variable.name} is not listed")
        elif not self.fits(variable.type, listed, ()):
            self.say(variable.place, f"{variable.name} is {plain(variable.type)}, the listing says {listed}")
        elif variable.static:
            self.names_only.append(variable.name)

    def enumeration(self, enumeration):
        listed = self.listing.enumerations.get(enumeration.name)
        if listed is None:
            for name in enumeration.values:
                if name in self.listing.constants:
                    self.names_only.append(name)
                else:
                    self.say(enumeration.place, f"{name} is not listed")
            return
        best = None
        for name in enumeration.values:
            for key in listed:
                if key in name:
                    before, after = name[:name.rfind(key)], name[name.rfind(key) + len(key):]
                    if not self.belongs(before, after, enumeration.name):
                        continue
                    hits = sum(before + k + after in enumeration.values for k in listed)
                    if best is None or hits > best[0]:
                        best = (hits, before, after)
        for name, value in enumeration.values.items():
            key = best and name[len(best[1]):len(name) - len(best[2])] if best else None
            if best is None or name != best[1] + key + best[2] or key not in listed:
                self.say(enumeration.place, f"{name} is not listed in {enumeration.name}")
            elif not {value, value - 2**32, value - 2**64} & {listed[key]}:
                self.say(enumeration.place, f"{name} is {value}, the listing says {listed[key]}")

    @staticmethod
    def belongs(before, after, type_name):
        """Whether the text around a listed name is part of the type's name."""
        if PREFIXES.get(type_name) == before:
            return after == ""
        before = re.sub(r"^k(?=[A-Z])", "", before)
        words = re.findall(r"[A-Z]+(?=[A-Z][a-z]|$)|[A-Z][a-z]+|[A-Z]+", before)
        joined = re.sub(r"ion$|e$", "", before)
        return bool(words) and type_name.startswith(words[0]) and (
            type_name.startswith(joined) or all(word.rstrip("e") in type_name for word in words)) and after in type_name


def main():
    declarations = declared.read(sys.argv[1])
    check = Check(declarations, Listing(sys.argv[2]))
    check.run()
    for problem in check.problems:
        print(problem)
    print("held against the listing: " + ", ".join(f"{number} {what}" for what, number in declarations.count().items()))
    print("names only, values not listed: " + ", ".join(check.names_only))
    return 1 if check.problems else 0


if __name__ == "__main__":
    sys.exit(main())
