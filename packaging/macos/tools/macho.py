"""Reads what the checks need from a Mach-O executable: slices, load commands, symbols, bindings, the code signature."""

import dataclasses
import hashlib
import struct

CPU = {0x01000007: "x86_64", 0x0100000C: "arm64"}

FAT_MAGIC = 0xCAFEBABE
MH_MAGIC_64 = 0xFEEDFACF
MH_EXECUTE = 2
MH_PIE = 0x200000
MH_TWOLEVEL = 0x80

LC_SEGMENT_64 = 0x19
LC_SYMTAB = 0x2
LC_DYSYMTAB = 0xB
LC_CODE_SIGNATURE = 0x1D
LC_BUILD_VERSION = 0x32
LC_DYLD_INFO_ONLY = 0x80000022
LC_DYLD_CHAINED_FIXUPS = 0x80000034
LC_MAIN = 0x80000028
LC_RPATH = 0x8000001C
LOAD_DYLIBS = {0xC: "load", 0x80000018: "weak", 0x8000001F: "re-export", 0x20: "lazy", 0x80000023: "upward"}

PLATFORM_MACOS = 1

WRITE, EXECUTE = 2, 4
N_WEAK_REF = 0x40
# Sections of pointers to symbols, including symbols bound at their first call.
POINTERS = {6, 7}


class Malformed(Exception):
    pass


@dataclasses.dataclass
class Section:
    segment: str
    name: str
    address: int
    size: int
    offset: int
    kind: int
    first_symbol: int


@dataclasses.dataclass
class Segment:
    """With its protection, and the most that it may be given."""

    address: int
    span: int
    offset: int
    length: int
    maximum: int
    protection: int


@dataclasses.dataclass(frozen=True, order=True)
class Undefined:
    """What another library must provide. If it is weak, the loader continues without it."""

    name: str
    library: str
    weak: bool


@dataclasses.dataclass
class Slice:
    architecture: str
    data: bytes
    # The processor's subtype in the universal file, and in the slice.
    subtypes: tuple = ()
    file_type: int = 0
    flags: int = 0
    platform: int = 0
    minimum: str = ""
    sdk: str = ""
    libraries: list = dataclasses.field(default_factory=list)
    run_paths: list = dataclasses.field(default_factory=list)
    segments: dict = dataclasses.field(default_factory=dict)
    sections: list = dataclasses.field(default_factory=list)
    entry: int = -1
    # From the symbol table.
    undefined: list = dataclasses.field(default_factory=list)
    defined: set = dataclasses.field(default_factory=set)
    # By the pointer's address: what the code expects there, and what the loader puts there, from one library or from
    # the first that has it.
    expected: dict = dataclasses.field(default_factory=dict)
    bound: dict = dataclasses.field(default_factory=dict)
    coalesced: dict = dataclasses.field(default_factory=dict)
    signature: bytes = b""

    def section(self, segment, name):
        for section in self.sections:
            if (section.segment, section.name) == (segment, name):
                return section
        return None

    def contents(self, segment, name):
        section = self.section(segment, name)
        return self.data[section.offset:section.offset + section.size] if section else b""


def _text(data):
    return data.split(b"\0", 1)[0].decode("utf-8")


def _version(number):
    major, minor, patch = number >> 16, number >> 8 & 0xFF, number & 0xFF
    return f"{major}.{minor}" + (f".{patch}" if patch else "")


def slices(data):
    """The slices of a universal file, in order."""
    if len(data) < 8 or struct.unpack_from(">I", data)[0] != FAT_MAGIC:
        raise Malformed("not a universal file")
    found = []
    for index in range(struct.unpack_from(">I", data, 4)[0]):
        cpu, subtype, offset, size, align = struct.unpack_from(">5I", data, 8 + 20 * index)
        if offset % (1 << align) or offset + size > len(data):
            raise Malformed("a slice that is not where it should be")
        found.append(_slice(cpu, subtype, data[offset:offset + size]))
    return found


def _slice(cpu, subtype, data):
    architecture = CPU.get(cpu, hex(cpu))
    magic, own_cpu, own_subtype, file_type, commands, _, flags, _ = struct.unpack_from("<8I", data)
    if magic != MH_MAGIC_64:
        raise Malformed(f"{architecture}: not a 64-bit Mach-O file")
    if own_cpu != cpu:
        raise Malformed(f"{architecture}: a slice for another processor")
    found = Slice(architecture, data, (subtype, own_subtype), file_type, flags)
    symbols = indirect = bindings = None
    at = 32
    for _ in range(commands):
        command, size = struct.unpack_from("<2I", data, at)
        body = data[at:at + size]
        if command == LC_SEGMENT_64:
            name = _text(body[8:24])
            *fields, count, _ = struct.unpack_from("<4Q4I", body, 24)
            found.segments[name] = Segment(*fields)
            for index in range(count):
                section = body[72 + 80 * index:152 + 80 * index]
                place, extent, where, _, _, _, kind, first = struct.unpack_from("<2Q6I", section, 32)
                found.sections.append(Section(name, _text(section[:16]), place, extent, where, kind & 0xFF, first))
        elif command == LC_SYMTAB:
            symbols = struct.unpack_from("<4I", body, 8)
        elif command == LC_DYSYMTAB:
            indirect = struct.unpack_from("<I", body, 56)[0]
        elif command in LOAD_DYLIBS:
            found.libraries.append((LOAD_DYLIBS[command], _text(body[struct.unpack_from("<I", body, 8)[0]:])))
        elif command == LC_RPATH:
            found.run_paths.append(_text(body[struct.unpack_from("<I", body, 8)[0]:]))
        elif command == LC_BUILD_VERSION:
            found.platform, minimum, sdk = struct.unpack_from("<3I", body, 8)
            found.minimum, found.sdk = _version(minimum), _version(sdk)
        elif command == LC_DYLD_INFO_ONLY:
            bindings = struct.unpack_from("<10I", body, 8)
        elif command == LC_DYLD_CHAINED_FIXUPS:
            raise Malformed(f"{architecture}: chained fixups, which are not read here")
        elif command == LC_MAIN:
            found.entry = struct.unpack_from("<Q", body, 8)[0]
        elif command == LC_CODE_SIGNATURE:
            offset, length = struct.unpack_from("<2I", body, 8)
            found.signature = data[offset:offset + length]
        at += size
    if symbols and indirect:
        _read_symbols(found, *symbols, indirect)
    if bindings:
        for at, bound in ((2, found.bound), (4, found.coalesced), (6, found.bound)):
            _read_bindings(found, data[bindings[at]:bindings[at] + bindings[at + 1]], bound, at == 6)
    return found


def _read_symbols(found, offset, count, strings, _, indirect):
    by_index = {}
    for index in range(count):
        name, kind, _, description, _ = struct.unpack_from("<IBBHQ", found.data, offset + 16 * index)
        if kind & 0xE0:
            continue  # An entry for debuggers.
        text = _text(found.data[strings + name:strings + name + 1024])
        if kind & 0x0E:
            found.defined.add(text)
            continue
        by_index[index] = Undefined(text, _library(found, description >> 8), bool(description & N_WEAK_REF))
    found.undefined = list(by_index.values())
    for section in found.sections:
        for number in range(section.size // 8 if section.kind in POINTERS else 0):
            index, = struct.unpack_from("<I", found.data, indirect + 4 * (section.first_symbol + number))
            if index in by_index:
                found.expected[section.address + 8 * number] = by_index[index]


def _library(found, ordinal):
    known = 1 <= ordinal <= len(found.libraries)
    return found.libraries[ordinal - 1][1] if known else f"(looked up at run time, ordinal {ordinal})"


def _number(data, at):
    """A number stored as seven bits per byte, lowest first, and the position after it."""
    number = shift = 0
    while True:
        number |= (data[at] & 0x7F) << shift
        shift += 7
        at += 1
        if not data[at - 1] & 0x80:
            return number, at


def _read_bindings(found, data, bound, at_first_call):
    """Runs the loader's small program, which says which symbol is looked up where and which pointer gets its
    address."""
    segments = list(found.segments.values())
    ordinal, name, weak, segment, place, at = 0, "", False, 0, 0, 0

    def bind(step, times=1):
        nonlocal place
        for _ in range(times):
            into = segments[segment]
            if place + 8 > into.span or not into.protection & WRITE:
                raise Malformed(f"{found.architecture}: {name} is bound to where nothing may be written")
            bound[into.address + place] = Undefined(name, _library(found, ordinal), weak)
            place = (place + step) % 2**64

    try:
        while at < len(data):
            code, value = data[at] & 0xF0, data[at] & 0x0F
            at += 1
            if code == 0x00 and not at_first_call:
                return
            if code == 0x10:
                ordinal = value
            elif code == 0x20:
                ordinal, at = _number(data, at)
            elif code == 0x30:
                ordinal = value - 16 if value else 0
            elif code == 0x40:
                end = data.index(b"\0", at)
                name, weak, at = data[at:end].decode("utf-8"), bool(value & 1), end + 1
            elif code == 0x60:
                _, at = _number(data, at)
            elif code == 0x70:
                segment, (place, at) = value, _number(data, at)
            elif code == 0x80:
                step, at = _number(data, at)
                place = (place + step) % 2**64
            elif code == 0x90:
                bind(8)
            elif code == 0xA0:
                step, at = _number(data, at)
                bind(8 + step)
            elif code == 0xB0:
                bind(8 + 8 * value)
            elif code == 0xC0:
                times, at = _number(data, at)
                step, at = _number(data, at)
                bind(8 + step, times)
            # The end of a symbol that is bound at its first call, and the kind of pointer.
            elif code not in (0x00, 0x50):
                raise Malformed(f"{found.architecture}: a binding that is not understood ({code:#x})")
    except (IndexError, ValueError) as error:
        raise Malformed(f"{found.architecture}: the bindings: {error}") from error


CS_ADHOC = 0x2
CS_LINKER_SIGNED = 0x20000


@dataclasses.dataclass
class CodeDirectory:
    identifier: str
    flags: int
    pages: int
    problem: str


def code_directory(slice_):
    """Reads the signature's code directory and compares the hash of every page with the page. None without one."""
    blob = slice_.signature
    if len(blob) < 12 or struct.unpack_from(">I", blob)[0] != 0xFADE0CC0:
        return None
    for index in range(struct.unpack_from(">I", blob, 8)[0]):
        kind, offset = struct.unpack_from(">2I", blob, 12 + 8 * index)
        if kind == 0:
            return _code_directory(slice_, blob[offset:])
    return None


def _code_directory(slice_, directory):
    fields = struct.unpack_from(">9I4B", directory)
    magic, _, _, flags, hashes, identifier, _, count, limit, hash_size, hash_type, _, page_shift = fields
    name = _text(directory[identifier:])
    if magic != 0xFADE0C02 or hash_type != 2 or hash_size != 32:
        return CodeDirectory(name, flags, count, "not a code directory with SHA-256 hashes")
    signed_from = len(slice_.data) - len(slice_.signature)
    page = 1 << page_shift
    if limit > signed_from or count != (limit + page - 1) // page:
        return CodeDirectory(name, flags, count, "the hashes do not cover the code")
    # Everything before the signature must be covered, except the padding.
    if signed_from - limit >= 16:
        return CodeDirectory(name, flags, count, "some of the file is not covered")
    for index in range(count):
        begin = index * page
        expected = directory[hashes + 32 * index:hashes + 32 * (index + 1)]
        if hashlib.sha256(slice_.data[begin:min(begin + page, limit)]).digest() != expected:
            return CodeDirectory(name, flags, count, f"page {index} does not match its hash")
    return CodeDirectory(name, flags, count, "")
