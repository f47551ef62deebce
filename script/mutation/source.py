"""Finds the mutants of C++ sources, and writes copies in which each of them can be chosen by its number (mutant.h)."""

import dataclasses
import pathlib
import re
import subprocess
import sys

# Debian's modules, also for a Python that is not Debian's.
sys.path.append("/usr/lib/python3/dist-packages")

from clang import cindex  # noqa: E402

Kind = cindex.CursorKind
RESOURCES = "/usr/lib/llvm-22/lib/clang/22"

COMPARISONS = {"<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="]}
ARITHMETIC = {"+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"], "%": ["*"], "&": ["|"], "|": ["&"], "^": ["&"], "<<": [">>"],
              ">>": ["<<"]}
ASSIGNMENTS = {"+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "|=": "&=", "&=": "|="}
# Nothing else can be returned in their place.
PLAIN_RETURNS = {"{}", "std::nullopt", "nullptr", '""', "0", "true", "false"}
LOOPS = (Kind.WHILE_STMT, Kind.FOR_STMT, Kind.DO_STMT, Kind.CXX_FOR_RANGE_STMT)
FUNCTIONS = (Kind.FUNCTION_DECL, Kind.CXX_METHOD, Kind.CONSTRUCTOR, Kind.DESTRUCTOR, Kind.CONVERSION_FUNCTION,
             Kind.FUNCTION_TEMPLATE, Kind.LAMBDA_EXPR)
# The compiler evaluates what stands in them.
FIXED = (Kind.STATIC_ASSERT, Kind.ENUM_CONSTANT_DECL, Kind.TEMPLATE_NON_TYPE_PARAMETER)


@dataclasses.dataclass
class Mutant:
    number: int
    file: str
    line: int
    kind: str
    before: str
    after: str

    def __str__(self):
        return f"{self.number}: {self.file}:{self.line}: {self.kind}: {self.before} → {self.after}"


class Edit:
    """What is written in place of an extent of the source. `write` gets what stands there, itself instrumented."""

    def __init__(self):
        self.alternatives = []
        self.as_condition = False
        self.write = None

    def apply(self, inner):
        if self.alternatives:
            choice = " : ".join(f"mutation::mutant({number}) ? {text}" for number, text in self.alternatives)
            inner = f"({choice} : {'static_cast<bool>' if self.as_condition else ''}({inner}))"
        return self.write(inner) if self.write else inner


class Numbers:
    """Counts the mutants of all sources. Those of `excluded` get their number, but are not written."""

    def __init__(self, excluded=()):
        self.excluded = set(excluded)
        self.all = []

    def add(self, *properties):
        """The mutant's number; None if it is excluded."""
        self.all.append(Mutant(len(self.all) + 1, *properties))
        return None if len(self.all) in self.excluded else len(self.all)

    def kept(self):
        return [each for each in self.all if each.number not in self.excluded]


def short(text):
    text = re.sub(r"\s+", " ", text)
    return text if len(text) <= 90 else text[:87] + "..."


def bare(cursor):
    """Without what the compiler adds around it."""
    while cursor.kind == Kind.UNEXPOSED_EXPR:
        inner = [child for child in cursor.get_children() if child.extent == cursor.extent]
        if len(inner) != 1:
            break
        cursor = inner[0]
    return cursor


class Source:
    """One file and the places in it that are rewritten."""

    def __init__(self, path, name, unit, numbers, constants):
        self.path, self.name, self.unit, self.numbers, self.constants = path, name, unit, numbers, constants
        self.bytes = path.read_bytes()
        self.edits, self.additions = {}, {}

    # What the tree is asked for.

    def text(self, start, end):
        return self.bytes[start:end].decode()

    def extent(self, cursor):
        return cursor.extent.start.offset, cursor.extent.end.offset

    def of(self, cursor):
        return self.text(*self.extent(cursor))

    def is_here(self, cursor):
        start, end = self.extent(cursor)
        return cursor.location.file is not None and pathlib.Path(cursor.location.file.name) == self.path and start < end

    def line(self, offset):
        return self.bytes.count(b"\n", 0, offset) + 1

    def top(self):
        return [cursor for cursor in self.unit.cursor.get_children() if self.is_here(cursor)]

    # Noting mutants.

    def edit(self, extent):
        return self.edits.setdefault(extent, Edit())

    def mutant(self, extent, kind, after, before=None):
        return self.numbers.add(self.name, self.line(extent[0]), kind, short(before or self.text(*extent)), short(after))

    def alternative(self, extent, kind, after, as_condition=False):
        """Another expression in place of the one there."""
        here = self.edit(extent)
        if any(text == after for _, text in here.alternatives) or after == self.text(*extent):
            return
        number = self.mutant(extent, kind, after)
        if number:
            here.alternatives.append((number, after))
            here.as_condition = here.as_condition or as_condition

    # Constants.

    def collect_constants(self):
        """A constant keeps its value for the compiler. For each mutant of it there is a sibling beside it, and what is
        executed asks which one to use."""
        def visit(cursor):
            if cursor.kind == Kind.VAR_DECL and re.search(r"\bconstexpr\b", self.of(cursor)):
                self.add_siblings(cursor)
                return
            for child in cursor.get_children():
                visit(child)
        for cursor in self.top():
            visit(cursor)

    def add_siblings(self, cursor):
        start, end = self.extent(cursor)
        name = cursor.location.offset, cursor.location.offset + len(cursor.spelling)
        siblings, written = [], []
        for extent, kind, after in self.values_in(cursor):
            number = self.mutant(extent, kind, after, f"{cursor.spelling}: {self.text(*extent)}")
            if not number:
                continue
            sibling = f"{cursor.spelling}__{number}"
            written.append(self.text(start, name[0]) + sibling + self.text(name[1], extent[0]) + after +
                           self.text(extent[1], end) + ";")
            siblings.append((number, f"__{number}"))
        self.constants[cursor.get_usr()] = siblings
        self.additions.setdefault(self.after_semicolon(end), []).extend(written)

    def values_in(self, cursor):
        """Of the value of a constant: extents, kinds and other texts."""
        found = []

        def visit(child):
            if child.kind == Kind.LAMBDA_EXPR:
                return
            for kind, after in literal_alternatives(child, self.of(child)):
                if self.extent(child)[0] > cursor.location.offset:
                    found.append((self.extent(child), kind, after))
            for each in child.get_children():
                visit(each)
        visit(cursor)
        return list(dict.fromkeys(found))

    def after_semicolon(self, end):
        return self.bytes.index(b";", end) + 1

    # Everything else.

    def instrument(self):
        for cursor in self.top():
            self.visit(cursor, None)

    def visit(self, cursor, function):
        if cursor.kind in FIXED or cursor.get_usr() in self.constants and cursor.kind == Kind.VAR_DECL:
            return
        if not self.is_here(cursor) and cursor.kind.is_declaration():
            return
        if cursor.kind in FUNCTIONS:
            function = cursor
            self.make_ordinary(cursor)
        handler = getattr(self, "on_" + cursor.kind.name.lower(), None)
        if handler:
            handler(cursor, function)
        if cursor.kind.is_expression():
            self.on_expression(cursor)
        children = list(cursor.get_children())
        if cursor.kind == Kind.CASE_STMT:
            children = children[1:]
        if cursor.kind in (Kind.IF_STMT, Kind.CASE_STMT, Kind.DEFAULT_STMT, *LOOPS):
            # The others are conditions. They are expressions too.
            body = [child for child in children if self.is_body(cursor, child)]
            for child in body:
                self.on_statement(child, function)
        for child in children:
            self.visit(child, function)

    def make_ordinary(self, function):
        """A function of which the compiler makes no constants."""
        start, end = self.extent(function)
        head = re.match(r"[^({]*?\bconstexpr\b", self.text(start, end))
        if head:
            self.edit((start + head.end() - len("constexpr"), start + head.end())).write = lambda _: "inline"

    def is_body(self, parent, child):
        """Of a statement that holds statements: not its condition."""
        if parent.kind in (Kind.CASE_STMT, Kind.DEFAULT_STMT):
            return True
        before = self.text(self.extent(parent)[0], self.extent(child)[0])
        depth = before.count("(") - before.count(")")
        return depth == 0 and "(" in before

    def on_expression(self, cursor):
        for kind, after in literal_alternatives(cursor, self.of(cursor)):
            self.alternative(self.extent(cursor), kind, after)
        if cursor.kind in (Kind.DECL_REF_EXPR, Kind.MEMBER_REF_EXPR) and cursor.referenced:
            self.on_reference(cursor)

    def on_reference(self, cursor):
        extent, text = self.extent(cursor), self.of(cursor)
        if not text.endswith(cursor.referenced.spelling) or not text:
            return
        siblings = self.constants.get(cursor.referenced.get_usr())
        if siblings is not None:
            here = self.edit(extent)
            if not here.alternatives:
                here.alternatives = [(number, text + suffix) for number, suffix in siblings]
        elif is_foreign_number(cursor.referenced):
            self.alternative(extent, "constant", f"{text} + 1")

    def on_binary_operator(self, cursor, _function):
        left, right = list(cursor.get_children())
        self.on_operator(left, right, self.between(left, right))

    def on_call_expr(self, cursor, _function):
        """An operator that is a function."""
        children = list(cursor.get_children())
        if cursor.spelling.startswith("operator") and len(children) == 3:
            left, token, right = children
            # Reversed where the compiler writes the comparison the other way round.
            left, right = sorted((left, right), key=self.extent)
            if self.of(token) in COMPARISONS:
                self.on_operator(left, right, self.of(token))

    def between(self, left, right):
        return self.text(self.extent(left)[1], self.extent(right)[0]).strip(" \n()")

    def on_operator(self, left, right, token):
        extent = self.extent(left)[0], self.extent(right)[1]
        sides = self.of(left), self.of(right)
        middle = self.text(self.extent(left)[1], self.extent(right)[0])
        if token in ("&&", "||"):
            other = "||" if token == "&&" else "&&"
            self.alternative(extent, "logical", f"(({sides[0]}) {other} ({sides[1]}))", True)
            for side in sides:
                self.alternative(extent, "logical", f"static_cast<bool>({side})", True)
            return
        changes = COMPARISONS.get(token, [])
        if is_number(left) and is_number(right):
            changes = changes or ARITHMETIC.get(token, [])
        for change in changes:
            kind = "relational" if token in COMPARISONS else "arithmetic"
            self.alternative(extent, kind, "(" + sides[0] + middle.replace(token, change) + sides[1] + ")")

    def on_compound_assignment_operator(self, cursor, _function):
        left, right = list(cursor.get_children())
        token = self.between(left, right)
        if token in ASSIGNMENTS and is_number(left):
            self.alternative(self.extent(cursor), "arithmetic", f"({self.of(left)} {ASSIGNMENTS[token]} {self.of(right)})")

    def on_unary_operator(self, cursor, _function):
        text, extent = self.of(cursor), self.extent(cursor)
        if text.startswith("!") and not text.startswith("!="):
            self.alternative(extent, "negation", f"static_cast<bool>({text[1:]})", True)
        elif text.startswith("-") and not text.startswith("--") and is_number(cursor):
            self.alternative(extent, "negation", f"({text[1:]})")
        for token, other in (("++", "--"), ("--", "++")):
            if text.startswith(token) or text.endswith(token):
                self.alternative(extent, "increment", f"({text.replace(token, other)})")

    # Conditions.

    def on_if_stmt(self, cursor, _function):
        self.force(cursor, True)

    def on_while_stmt(self, cursor, _function):
        self.force(cursor, False)

    def on_for_stmt(self, cursor, _function):
        for child in cursor.get_children():
            if bare(child).kind == Kind.BINARY_OPERATOR and not self.is_body(cursor, child):
                self.alternative(self.extent(child), "condition", "false", True)

    def on_conditional_operator(self, cursor, _function):
        extent = self.extent(next(cursor.get_children()))
        self.alternative(extent, "condition", "true", True)
        self.alternative(extent, "condition", "false", True)

    def force(self, cursor, both):
        """A condition that is always true, and always false. A loop's is not made true: it would not end."""
        conditions = [child for child in cursor.get_children() if not self.is_body(cursor, child)]
        declared = [child for child in conditions if child.kind == Kind.VAR_DECL]
        if declared:
            self.force_declared(declared[0], both)
        elif conditions and conditions[-1].kind.is_expression():
            extent = self.extent(conditions[-1])
            if both:
                self.alternative(extent, "condition", "true", True)
            self.alternative(extent, "condition", "false", True)

    def force_declared(self, declared, both):
        extent = self.extent(declared)
        if not both:
            # In a loop only the value itself can be another one.
            value = list(declared.get_children())[-1]
            text = self.of(value)
            self.alternative(self.extent(value), "condition", f"std::decay_t<decltype({text})>()")
            return
        numbers = [self.mutant(extent, "condition", after) or 0 for after in ("true", "false")]
        name = declared.spelling
        self.edit(extent).write = (
            lambda inner: f"{inner}; mutation::forced({numbers[0]}, {numbers[1]}, static_cast<bool>({name}))")

    def on_switch_stmt(self, cursor, _function):
        looked_at = next(child for child in cursor.get_children() if child.kind.is_expression())
        labels = []

        def collect(child):
            if child.kind == Kind.SWITCH_STMT and child != cursor:
                return
            if child.kind == Kind.CASE_STMT:
                labels.append(next(child.get_children()))
            for each in child.get_children():
                collect(each)
        collect(cursor)
        cases = []
        for label in labels:
            text = self.of(label)
            number = self.mutant(self.extent(label), "case", "left out", f"case {text}")
            if number:
                cases.append(f"{{{number}, {text}}}")
        type_of = f"std::decay_t<decltype({self.of(looked_at)})>"
        self.edit(self.extent(looked_at)).write = (
            lambda inner: f"mutation::switched<{type_of}>({inner}, {{{', '.join(cases)}}})")

    # Statements.

    def on_compound_stmt(self, cursor, function):
        children = list(cursor.get_children())
        for child in children:
            self.on_statement(child, function)
        for first, second in zip(children, children[1:]):
            if is_deed(first) and is_deed(second):
                self.swap(first, second)

    def statement_extent(self, cursor):
        start, end = self.extent(cursor)
        if cursor.kind in (Kind.IF_STMT, *LOOPS):
            return start, self.statement_extent(list(cursor.get_children())[-1])[1]
        if cursor.kind in (Kind.COMPOUND_STMT, Kind.SWITCH_STMT):
            return start, end
        return (start, end) if self.text(end - 1, end) == ";" else (start, self.after_semicolon(end))

    def on_statement(self, cursor, function):
        if not self.is_here(cursor):
            return
        if cursor.kind == Kind.RETURN_STMT:
            self.on_return(cursor, function)
        elif cursor.kind in (Kind.BREAK_STMT, Kind.CONTINUE_STMT) or cursor.kind.is_expression():
            self.leave_out(cursor)

    def leave_out(self, cursor):
        extent = self.statement_extent(cursor)
        if self.text(*extent).startswith("(void)"):
            return
        number = self.mutant(extent, "statement", "left out")
        if number:
            self.guard(extent, number)

    def guard(self, extent, number):
        here = self.edit(extent)
        before = here.write or (lambda inner: inner)
        here.write = lambda inner: f"{{ if (!mutation::mutant({number})) {{ {before(inner)} }} }}"

    def swap(self, first, second):
        first_extent, second_extent = self.statement_extent(first), self.statement_extent(second)
        text = self.text(*second_extent)
        number = self.mutant(first_extent, "order", f"{text} {self.text(*first_extent)}",
                             f"{self.text(*first_extent)} {text}")
        if not number:
            return
        here = self.edit(first_extent)
        before = here.write or (lambda inner: inner)
        here.write = lambda inner: f"{{ if (mutation::mutant({number})) {{ {text} }} {before(inner)} }}"
        self.guard(second_extent, number)

    def on_return(self, cursor, function):
        value = next(cursor.get_children(), None)
        extent = self.statement_extent(cursor)
        if value is None:
            self.leave_out(cursor)
            return
        text = self.of(value)
        if text in PLAIN_RETURNS or literal_alternatives(bare(value), text):
            return
        if value.type.get_canonical().kind == cindex.TypeKind.BOOL:
            self.alternative(self.extent(value), "return", "true", True)
            self.alternative(self.extent(value), "return", "false", True)
            return
        instead = self.default_value(text, function)
        number = self.mutant(extent, "return", f"return {instead};") if instead else None
        if number:
            self.edit(extent).write = lambda inner: f"{{ if (mutation::mutant({number})) return {instead}; {inner} }}"

    def default_value(self, text, function):
        """None if there is none."""
        if function.kind == Kind.LAMBDA_EXPR:
            return None if "[" in text else f"std::decay_t<decltype({text})>()"
        references = (cindex.TypeKind.LVALUEREFERENCE, cindex.TypeKind.RVALUEREFERENCE)
        return None if function.result_type.get_canonical().kind in references else "{}"

    # Writing.

    def written(self):
        """The instrumented copy."""
        ordered = sorted(self.edits, key=lambda extent: (extent[0], -extent[1]))
        text = self.render(0, len(self.bytes), ordered)
        head = '#include "mutation/mutant.h"\n'
        return text.replace("#pragma once\n", "#pragma once\n" + head, 1) if "#pragma once" in text else head + text

    def render(self, start, end, edits):
        pieces, position = [], start
        while edits:
            first = edits[0]
            inner = [extent for extent in edits[1:] if extent[0] >= first[0] and extent[1] <= first[1]]
            edits = [extent for extent in edits[1:] if extent not in inner]
            if first[0] < position:
                continue
            pieces += [self.plain(position, first[0]), self.edits[first].apply(self.render(*first, inner))]
            position = first[1]
        pieces.append(self.plain(position, end))
        return "".join(pieces)

    def plain(self, start, end):
        """As it is, with the siblings of the constants in it."""
        pieces, position = [], start
        for offset in sorted(self.additions):
            if start < offset <= end:
                pieces += [self.text(position, offset), *("\n[[maybe_unused]] " + each for each in self.additions[offset])]
                position = offset
        return "".join([*pieces, self.text(position, end)])


def is_number(cursor):
    kinds = cindex.TypeKind
    kind = cursor.type.get_canonical().kind
    return kinds.CHAR_U.value <= kind.value <= kinds.LONGDOUBLE.value


def is_foreign_number(declared):
    return (declared.kind == Kind.VAR_DECL and declared.type.is_const_qualified() and is_number(declared) and
            declared.semantic_parent.kind in (Kind.NAMESPACE, Kind.TRANSLATION_UNIT))


def is_deed(cursor):
    """A call, or a question about one; not an assignment, nor anything that declares."""
    if cursor.kind == Kind.IF_STMT:
        return not any(child.kind in (Kind.RETURN_STMT, Kind.BREAK_STMT, Kind.CONTINUE_STMT)
                       for child in cursor.walk_preorder())
    return bare(cursor).kind == Kind.CALL_EXPR and not bare(cursor).spelling.startswith("operator")


def literal_alternatives(cursor, text):
    """Other values for a literal or an enumerator: kinds and texts."""
    if cursor.kind == Kind.INTEGER_LITERAL:
        return [("constant", each) for each in integer_alternatives(text)]
    if cursor.kind == Kind.FLOATING_LITERAL:
        value = float(text.rstrip("fFlL"))
        return [("constant", repr(each)) for each in dict.fromkeys([value + 1, value - 1, 0.0]) if each != value]
    if cursor.kind == Kind.CXX_BOOL_LITERAL_EXPR:
        return [("constant", "false" if text == "true" else "true")]
    if cursor.kind == Kind.STRING_LITERAL and text.startswith('"'):
        return [("text", each) for each in ('""', '"?" ' + text) if each != text]
    if cursor.kind == Kind.CHARACTER_LITERAL:
        return [("text", "'?'")]
    if cursor.kind == Kind.DECL_REF_EXPR and cursor.referenced and cursor.referenced.kind == Kind.ENUM_CONSTANT_DECL:
        return enumerator_alternatives(cursor.referenced, text)
    return []


def integer_alternatives(text):
    match = re.fullmatch(r"(0[xX][0-9a-fA-F']+|[0-9']+)([uUlL]*)", text)
    if not match:
        return []
    value = int(match[1].replace("'", ""), 0)
    return [f"{each}{match[2]}" for each in dict.fromkeys([value + 1, value - 1, 0]) if each != value]


def enumerator_alternatives(referenced, text):
    if not text.endswith(referenced.spelling):
        return []
    names = [each.spelling for each in referenced.semantic_parent.get_children() if each.kind == Kind.ENUM_CONSTANT_DECL]
    following = names[(names.index(referenced.spelling) + 1) % len(names)]
    return [] if following == referenced.spelling else [("constant", text[:-len(referenced.spelling)] + following)]


class Reader:
    """Reads sources with these arguments of the compiler. Other people's headers, which are most of the work, are read
    once and kept in `folder`."""

    def __init__(self, files, arguments, foreign, folder):
        self.arguments = ["-x", "c++", "-std=c++20", "-resource-dir", RESOURCES, "-Wno-pragma-once-outside-header", *arguments]
        self.index = cindex.Index.create()
        self.kept = []
        includes = sorted({match for file in files for match in re.findall(r'^#include [<"].*[">]$', file.read_text(), re.MULTILINE)
                           if re.search(foreign, match)})
        header, compiled = folder / "foreign.h", folder / "foreign.pch"
        header.write_text("\n".join(includes) + "\n", encoding="utf-8")
        subprocess.run(["clang++-22", "-x", "c++-header", *self.arguments[2:], header, "-o", compiled], check=True)
        self.kept = ["-include-pch", str(compiled)]

    def unit(self, path, first=()):
        return self.index.parse(str(path), [*first, *self.arguments, *self.kept])


def errors(unit):
    return [each for each in unit.diagnostics if each.severity >= cindex.Diagnostic.Error]


class Instrumenter:
    """Writes instrumented copies of sources below `folder`. `root` is what the sources are named from, and `base` what their includes are relative to."""

    def __init__(self, files, root, base, arguments, foreign, folder):
        replace(folder / "mutation/mutant.h", pathlib.Path(__file__).with_name("mutant.h").read_text(encoding="utf-8"))
        self.root, self.base, self.folder = root, base, folder
        self.reader = Reader(files, arguments, foreign, folder)
        # What a header declares is known before it is used.
        self.units = {file: self.reader.unit(file) for file in sorted(files, key=lambda file: (file.suffix != ".h", str(file)))}
        for file, unit in self.units.items():
            if errors(unit):
                raise RuntimeError(f"{file} cannot be read: {errors(unit)[0]}")

    def write(self):
        """Writes the copies that can be compiled. Returns their mutants, and those that were left out because with them
        they could not be."""
        excluded, without = set(), {}
        while True:
            copies, numbers = self.instrumented(excluded)
            for path, text in copies.items():
                replace(path, text)
            found = self.refused(copies)
            if not found:
                return numbers.kept(), list(without.values())
            new = found - excluded
            if not new:
                raise RuntimeError(f"the copies cannot be compiled, whatever is left out of {sorted(found)}")
            without |= {number: numbers.all[number - 1] for number in new}
            excluded |= new

    def instrumented(self, excluded):
        """The copies by their paths, and the mutants."""
        numbers, constants = Numbers(excluded), {}
        sources = [Source(file, str(file.relative_to(self.root)), unit, numbers, constants)
                   for file, unit in self.units.items()]
        for source in sources:
            source.collect_constants()
        for source in sources:
            source.instrument()
        return {self.folder / source.path.relative_to(self.base): source.written() for source in sources}, numbers

    def refused(self, copies):
        """The mutants with which the copies cannot be compiled."""
        found = set()
        for path, text in copies.items():
            if path.suffix == ".h":
                continue
            # Held, because its errors live no longer than it does.
            unit = self.reader.unit(path, ["-Wno-c++11-narrowing", f"-I{self.folder}"])
            for error in errors(unit):
                found.add(nearest(error, copies))
        return found


def nearest(error, copies):
    """The mutant that the compiler speaks of."""
    path = pathlib.Path(error.location.file.name) if error.location.file else None
    asked = [(match.start(), int(match[1]))
             for match in re.finditer(rb"mutation::mutant\((\d+)\)", copies.get(path, "").encode())]
    if not asked:
        raise RuntimeError(f"a copy cannot be compiled: {error}")
    return min(asked, key=lambda each: abs(each[0] - error.location.offset))[1]


def replace(path, text):
    """Leaves a file alone that would not change, so that it is not compiled again."""
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
