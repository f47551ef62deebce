"""Reads what the checks ask of a Mach-O executable: slices, load commands, symbols and the code signature."""

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
LC_CODE_SIGNATURE = 0x1D
LC_BUILD_VERSION = 0x32
LC_MAIN = 0x80000028
LC_RPATH = 0x8000001C
LOAD_DYLIBS = {0xC: "load", 0x80000018: "weak", 0x8000001F: "re-export", 0x20: "lazy", 0x80000023: "upward"}

PLATFORM_MACOS = 1


class Malformed(Exception):
    pass


@dataclasses.dataclass
class Section:
    segment: str
    name: str
    address: int
    size: int
    offset: int


@dataclasses.dataclass
class Undefined:
    name: str
    library: str


@dataclasses.dataclass
class Slice:
    architecture: str
    data: bytes
    file_type: int = 0
    flags: int = 0
    platform: int = 0
    minimum: str = ""
    libraries: list = dataclasses.field(default_factory=list)
    run_paths: list = dataclasses.field(default_factory=list)
    segments: dict = dataclasses.field(default_factory=dict)
    sections: list = dataclasses.field(default_factory=list)
    entry: int = -1
    undefined: list = dataclasses.field(default_factory=list)
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
    """The slices of a universal file, in its order."""
    if len(data) < 8 or struct.unpack_from(">I", data)[0] != FAT_MAGIC:
        raise Malformed("not a universal file")
    found = []
    for index in range(struct.unpack_from(">I", data, 4)[0]):
        cpu, _, offset, size, align = struct.unpack_from(">5I", data, 8 + 20 * index)
        if offset % (1 << align) or offset + size > len(data):
            raise Malformed("a slice that is not where it should be")
        found.append(_slice(CPU.get(cpu, hex(cpu)), data[offset:offset + size]))
    return found


def _slice(architecture, data):
    magic, _, _, file_type, commands, _, flags, _ = struct.unpack_from("<8I", data)
    if magic != MH_MAGIC_64:
        raise Malformed(f"{architecture}: not a 64-bit Mach-O file")
    found = Slice(architecture, data, file_type, flags)
    symbols = None
    at = 32
    for _ in range(commands):
        command, size = struct.unpack_from("<2I", data, at)
        body = data[at:at + size]
        if command == LC_SEGMENT_64:
            name = _text(body[8:24])
            address, span, offset, length, _, protection, count, _ = struct.unpack_from("<4Q4I", body, 24)
            found.segments[name] = (address, span, offset, length, protection)
            for index in range(count):
                section = body[72 + 80 * index:152 + 80 * index]
                place, extent, where = struct.unpack_from("<QQI", section, 32)
                found.sections.append(Section(name, _text(section[:16]), place, extent, where))
        elif command == LC_SYMTAB:
            symbols = struct.unpack_from("<4I", body, 8)
        elif command in LOAD_DYLIBS:
            found.libraries.append((LOAD_DYLIBS[command], _text(body[struct.unpack_from("<I", body, 8)[0]:])))
        elif command == LC_RPATH:
            found.run_paths.append(_text(body[struct.unpack_from("<I", body, 8)[0]:]))
        elif command == LC_BUILD_VERSION:
            found.platform, minimum = struct.unpack_from("<2I", body, 8)
            found.minimum = _version(minimum)
        elif command == LC_MAIN:
            found.entry = struct.unpack_from("<Q", body, 8)[0]
        elif command == LC_CODE_SIGNATURE:
            offset, length = struct.unpack_from("<2I", body, 8)
            found.signature = data[offset:offset + length]
        at += size
    if symbols:
        _read_symbols(found, *symbols)
    return found


def _read_symbols(found, offset, count, strings, _):
    for index in range(count):
        name, kind, _, description, _ = struct.unpack_from("<IBBHQ", found.data, offset + 16 * index)
        # Neither a debugger's entry nor defined in this file.
        if kind & 0xE0 or kind & 0x0E:
            continue
        ordinal = description >> 8
        known = 1 <= ordinal <= len(found.libraries)
        library = found.libraries[ordinal - 1][1] if known else f"(looked up at run time, ordinal {ordinal})"
        found.undefined.append(Undefined(_text(found.data[strings + name:strings + name + 1024]), library))


CS_ADHOC = 0x2
CS_LINKER_SIGNED = 0x20000


@dataclasses.dataclass
class CodeDirectory:
    identifier: str
    flags: int
    pages: int
    problem: str


def code_directory(slice_):
    """Reads the signature's code directory and holds the hash of every page against the page. None without one."""
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
    # Everything up to the signature itself has to be covered, but for the padding before it.
    if signed_from - limit >= 16:
        return CodeDirectory(name, flags, count, "some of the file is not covered")
    for index in range(count):
        begin = index * page
        expected = directory[hashes + 32 * index:hashes + 32 * (index + 1)]
        if hashlib.sha256(slice_.data[begin:min(begin + page, limit)]).digest() != expected:
            return CodeDirectory(name, flags, count, f"page {index} does not match its hash")
    return CodeDirectory(name, flags, count, "")
