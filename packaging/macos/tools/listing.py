"""The public listing of Apple's frameworks for the comparison of names: typings, with the selectors beside them.

The typings (*.d.ts) join a selector into one word (setFrame:display: is setFrameDisplay) and know types only
coarsely. The library beside them contains every selector exactly.
"""

import dataclasses
import pathlib
import re


@dataclasses.dataclass
class Entry:
    """A member of a class: its type, whether it belongs to the class or the instance, and whether it may be written."""

    text: str
    is_class: bool
    is_method: bool
    readonly: bool


class Listing:
    def __init__(self, package):
        package = pathlib.Path(package)
        typings = sorted((package / "types").glob("*.d.ts"))
        text = "\n".join(path.read_text(encoding="utf-8", errors="replace") for path in typings)
        self.classes = {}
        self.bases = {}
        self.functions = dict(re.findall(r"^declare function (\w+)(\(.*\): .*);$", text, re.M))
        self.constants = dict(re.findall(r"^declare (?:const|let|var) (\w+): (?!\{$)(.*);$", text, re.M))
        self.enumerations = {}
        for name, body in re.findall(r"^declare const (\w+): \{\n(.*?)^\};", text, re.M | re.S):
            self.enumerations[name] = {k: int(v) for k, v in re.findall(r"^\s+\"?(\w+)\"?: (-?\d+),", body, re.M)}
        self._read_types(text)
        self.strings = set()
        for path in package.rglob("NativeScript"):
            if path.is_file() and "dSYM" not in str(path):
                self.strings.update(path.read_bytes().split(b"\0"))
        if not (self.classes and self.functions and self.enumerations and self.strings):
            raise SystemExit(f"{package}: this is not the listing that is expected here")

    def _read_types(self, text):
        head = (r"^declare (?:abstract )?(class|interface) (\w+)(?:<[^{\n]*?>)?"
                r"((?: extends| implements)[^{\n]*)? \{(.*?)^\}")
        for kind, name, heritage, body in re.findall(head, text, re.M | re.S):
            members = self.classes.setdefault(name, {})
            for line in body.splitlines():
                self._read_member(line, members)
            plain = re.sub(r"<[^<>]*>", "", re.sub(r"<[^<>]*>", "", heritage))
            extends = re.search(r"extends ([\w, ]+?)(?: implements|$)", plain)
            implements = re.search(r"implements ([\w, ]+)$", plain)
            bases = self.bases.setdefault(name, [])
            for match in (extends, implements):
                bases += [b.strip() for b in match[1].split(",")] if match else []

    @staticmethod
    def _read_member(line, members):
        match = re.match(r"\s+(static )?(readonly )?(get |set )?\"?([\w$]+)\"?\??([<(:].*);$", line)
        if not match:
            return
        static, readonly, accessor, name, rest = match.groups()
        name = name.rstrip("$")
        if accessor:
            before = members.get(name, [])
            if before:
                before[-1].readonly = False
                return
            kind = re.search(r"\): (.*)$", rest) if accessor == "get " else re.search(r": (.*)\)$", rest)
            members.setdefault(name, []).append(Entry(": " + kind[1] if kind else rest, bool(static), False,
                                                      accessor == "get "))
            return
        members.setdefault(name, []).append(Entry(rest, bool(static), rest[0] in "<(", bool(readonly)))

    def members(self, type_name, name, seen=()):
        """The entries with that name, of the type itself, its superclasses and its protocols."""
        if type_name in seen:
            return []
        found = list(self.classes.get(type_name, {}).get(name, []))
        for base in self.bases.get(type_name, []):
            found += self.members(base, name, (*seen, type_name))
        return found
