"""The check of the cross-built bundle finds the mistakes that it must find."""

import pathlib
import plistlib
import shutil
import struct
import tempfile
import zlib

from checks import PACKAGING, ROOT, WORK, prepare

import check_bundle
import macho
from make_stubs import libraries

BUNDLE = WORK / "Vantrel.app"
EXECUTABLE = "Contents/MacOS/Vantrel"
ICON = "Contents/Resources/Vantrel.icns"


def edit_plist(bundle, change):
    path = bundle / "Contents/Info.plist"
    values = plistlib.loads(path.read_bytes())
    change(values)
    path.write_bytes(plistlib.dumps(values))


def edit_icon(bundle, kind, change):
    """Replaces each kind and its picture with the result of `change`."""
    path = bundle / ICON
    data = path.read_bytes()
    at = data.index(kind)
    length, = struct.unpack_from(">I", data, at + 4)
    kind, picture = change(kind, data[at + 8:at + length])
    body = data[8:at] + kind + struct.pack(">I", len(picture) + 8) + picture + data[at + length:]
    path.write_bytes(b"icns" + struct.pack(">I", len(body) + 8) + body)


def empty(picture):
    """A valid picture of the same size that shows nothing."""
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))

    width, = struct.unpack_from(">I", picture, 16)
    pixels = zlib.compress(bytes(width * (1 + 4 * width)))
    return picture[:8] + chunk(b"IHDR", picture[16:29]) + chunk(b"IDAT", pixels) + chunk(b"IEND", b"")


def link(bundle, name):
    """The same file, but through a link."""
    path = bundle / name
    path.rename(bundle.parent / path.name)
    path.symlink_to(bundle.parent / path.name)


def slice_at(data, architecture):
    """The slice's offset in the universal file, and its length."""
    for index in range(struct.unpack_from(">I", data, 4)[0]):
        cpu, _, offset, size, _ = struct.unpack_from(">5I", data, 8 + 20 * index)
        if macho.CPU[cpu] == architecture:
            return offset, size
    raise AssertionError(architecture)


def edit_executable(bundle, change):
    path = bundle / EXECUTABLE
    data = bytearray(path.read_bytes())
    changed = change(data)
    path.write_bytes(data if changed is None else changed)


def replace(data, architecture, old, new):
    """In one slice, the first occurrence only."""
    assert len(old) == len(new)
    offset, size = slice_at(data, architecture)
    at = data.index(old, offset, offset + size)
    data[at:at + len(old)] = new


def command(data, architecture, kind):
    offset, _ = slice_at(data, architecture)
    at = offset + 32
    for _ in range(struct.unpack_from("<I", data, offset + 16)[0]):
        if struct.unpack_from("<I", data, at)[0] == kind:
            return at
        at += struct.unpack_from("<I", data, at + 4)[0]
    raise AssertionError(hex(kind))


def symbol_at(data, architecture, name):
    """The offset of the symbol's entry."""
    offset, _ = slice_at(data, architecture)
    table, count, strings, size = struct.unpack_from("<4I", data, command(data, architecture, macho.LC_SYMTAB) + 8)
    text = data.index(b"\0" + name + b"\0", offset + strings, offset + strings + size) + 1 - offset - strings
    for at in range(offset + table, offset + table + 16 * count, 16):
        if struct.unpack_from("<I", data, at)[0] == text:
            return at
    raise AssertionError(name)


def flip_code(data):
    offset, _ = slice_at(data, "arm64")
    data[offset + 0x4010] ^= 1


def only_one_processor(data):
    offset, size = slice_at(data, "arm64")
    aligned = bytes(data[offset:offset + size])
    return struct.pack(">7I", macho.FAT_MAGIC, 1, 0x0100000C, 0, 0x4000, size, 14).ljust(0x4000, b"\0") + aligned


def newer_system(data):
    struct.pack_into("<I", data, command(data, "x86_64", macho.LC_BUILD_VERSION) + 12, 14 << 16)


def other_entry(data):
    struct.pack_into("<Q", data, command(data, "x86_64", macho.LC_MAIN) + 8, 0x10)


def without_signature(data):
    offset, _ = slice_at(data, "arm64")
    at = command(data, "arm64", macho.LC_CODE_SIGNATURE)
    place = offset + struct.unpack_from("<I", data, at + 8)[0]
    data[place:place + 4] = b"\0\0\0\0"


def other_identifier(data):
    offset, _ = slice_at(data, "arm64")
    place = offset + struct.unpack_from("<I", data, command(data, "arm64", macho.LC_CODE_SIGNATURE) + 8)[0]
    data[data.index(b"Vantrel\0", place)] ^= 0x20


def writable_code(data, protection):
    # Of the first segment that contains code.
    offset, size = slice_at(data, "x86_64")
    at = data.index(b"__TEXT\0", offset, offset + size)
    struct.pack_into("<2I", data, at - 8 + 56, 7, protection)


def without_sdk(data):
    struct.pack_into("<I", data, command(data, "x86_64", macho.LC_BUILD_VERSION) + 16, 0)


def other_subtype(data):
    offset, _ = slice_at(data, "arm64")
    struct.pack_into("<I", data, offset + 8, 2)


def weak_symbol(data):
    at = symbol_at(data, "x86_64", b"_CGEventTapCreate") + 6
    struct.pack_into("<H", data, at, struct.unpack_from("<H", data, at)[0] | macho.N_WEAK_REF)


def weak_library(data):
    struct.pack_into("<I", data, command(data, "x86_64", 0xC), 0x80000018)


def no_bindings(data):
    offset, _ = slice_at(data, "x86_64")
    at = command(data, "x86_64", macho.LC_DYLD_INFO_ONLY)
    data[offset + struct.unpack_from("<I", data, at + 16)[0]] = 0


def exchanged_bindings(data):
    replace(data, "x86_64", b"@_CGEventTapCreate\0", b"@_CGEventTap??????\0")
    replace(data, "x86_64", b"@_CGEventTapEnable\0", b"@_CGEventTapCreate\0")
    replace(data, "x86_64", b"@_CGEventTap??????\0", b"@_CGEventTapEnable\0")


# A change to a copy of the bundle, and the complaint expected.
MISTAKES = [
    # files_test.py tests the other mistakes in this file.
    (lambda b: edit_plist(b, lambda p: p.pop("NSCameraUsageDescription")), "NSCameraUsageDescription is missing"),
    (lambda b: edit_plist(b, lambda p: p.update(CFBundleVersion="9.9")), "CFBundleVersion is '9.9', not '2.0'"),
    (lambda b: (b / "Contents/Info.plist").write_text("no property list"), "Info.plist cannot be read"),
    (lambda b: (b / ICON).unlink(), "Vantrel.icns is missing"),
    (lambda b: (b / ICON).write_bytes(b"icns\0\0\0\x08"), "the icon has the kinds []"),
    (lambda b: edit_icon(b, b"ic10", lambda kind, picture: (b"xxxx", picture)),
     "the icon, b'xxxx': 1024 pixels wide, not of a kind"),
    (lambda b: edit_icon(b, b"ic07", lambda kind, picture: (b"ic08", picture)),
     "the icon, b'ic08': 128 pixels wide, not 256"),
    (lambda b: edit_icon(b, b"ic10", lambda kind, picture: (kind, picture[:33] + bytes(len(picture) - 33))),
     "the icon, b'ic10': a picture that is damaged"),
    (lambda b: edit_icon(b, b"ic10", lambda kind, picture: (kind, empty(picture))),
     "the icon, b'ic10': an empty picture"),
    (lambda b: (b / "Contents/MacOS/helper").write_text("x"), "Contents/MacOS/helper does not belong"),
    (lambda b: (b / "Contents/Frameworks").mkdir(), "Contents/Frameworks does not belong"),
    (lambda b: link(b, EXECUTABLE), "Contents/MacOS/Vantrel is a link"),
    (lambda b: (b / "Contents/Resources/it.lproj").symlink_to(".."), "Contents/Resources/it.lproj is a link"),
    (lambda b: (b / EXECUTABLE).chmod(0o644), "may not be executed"),
    (lambda b: edit_executable(b, only_one_processor), "is for arm64, not for arm64 and x86_64"),
    (lambda b: edit_executable(b, lambda d: bytes(d[slice_at(d, "x86_64")[0]:])), "not a universal file"),
    (lambda b: edit_executable(b, newer_system), "x86_64: made for platform 1 from 14.0 on"),
    (lambda b: edit_executable(b, other_entry), "x86_64: the entry point is not in the code"),
    (lambda b: edit_executable(b, lambda d: writable_code(d, 7)), "x86_64: __TEXT is both writable and executable"),
    (lambda b: edit_executable(b, lambda d: writable_code(d, 5)), "x86_64: __TEXT may become both writable and"),
    (lambda b: edit_executable(b, without_sdk), "x86_64: made with an SDK of 0.0"),
    (lambda b: edit_executable(b, other_subtype), "arm64: for the subtypes (0, 2) of the processor"),
    (lambda b: edit_executable(b, other_identifier), "arm64: signature: of 'vantrel', not of 'Vantrel'"),
    (lambda b: edit_executable(b, weak_library), "in an unusual way (weak)"),
    (lambda b: edit_executable(b, weak_symbol), "x86_64: _CGEventTapCreate may be missing when the application starts"),
    # Right in the symbol table, wrong in the loader's table.
    (lambda b: edit_executable(b, lambda d: replace(d, "x86_64", b"@_CGEventTapCreate\0", b"@_CGEventTapCraete\0")),
     "x86_64: the loader looks for _CGEventTapCraete in"),
    (lambda b: edit_executable(b, no_bindings), "x86_64: the loader does not look for _OBJC_CLASS_$_NSAlert"),
    (lambda b: edit_executable(b, exchanged_bindings), "x86_64: the loader does not put _CGEventTapCreate where"),
    (lambda b: edit_executable(b, lambda d: replace(d, "arm64", b"@__ZTVN7vantrel20WindowMonitorServiceE\0",
                                                    b"@__ZTVN7vantrel20WindowMonitorServicoE\0")),
     "arm64: the loader looks for __ZTVN7vantrel20WindowMonitorServicoE, which the executable does not have"),
    (lambda b: edit_executable(b, flip_code), "arm64: signature: page 1 does not match its hash"),
    (lambda b: edit_executable(b, without_signature), "arm64: not signed"),
    (lambda b: edit_executable(b, lambda d: replace(d, "x86_64", b"/AVFoundation\0", b"/AVFoundatoin\0")),
     "loads /System/Library/Frameworks/AVFoundation.framework/Versions/A/AVFoundatoin"),
    (lambda b: edit_executable(b, lambda d: replace(d, "x86_64", b"\0_CGEventTapCreate\0", b"\0_CGEventTapCraete\0")),
     "_CGEventTapCraete is not known in"),
    (lambda b: edit_executable(b, lambda d: replace(d, "x86_64", b"/CFNetwork\0", b"/CFNetwrok\0")),
     "does not load /System/Library/Frameworks/CFNetwork.framework/Versions/A/CFNetwork"),
    # Bound to a framework that lacks it.
    (lambda b: edit_executable(b, lambda d: replace(d, "x86_64", b"/CFNetwork.framework/Versions/A/CFNetwork\0",
                                                    b"/AppKit.framework/Versions/C/AppKit".ljust(42, b"\0"))),
     "_OBJC_CLASS_$_NSURLSession is not known in /System/Library/Frameworks/AppKit.framework"),
    (lambda b: edit_executable(b, lambda d: replace(d, "x86_64", b"\0_dispatch_time\0", b"\0_dispatch_emit\0")),
     "_dispatch_emit of libSystem is not in the list"),
    (lambda b: edit_executable(b, lambda d: replace(d, "x86_64", b"\0BlackoutWindow\0", b"\0WhiteoutWindow\0")),
     "x86_64: no class BlackoutWindow"),
]


def complaints(bundle, known, system):
    check = check_bundle.Check(bundle, known, system)
    check.run()
    return check.problems


def main():
    prepare()
    assert BUNDLE.is_dir(), f"{BUNDLE.relative_to(ROOT)} is not there: script/check-macos bundle makes it"
    declarations = PACKAGING / "declarations"
    known = libraries(WORK / "tree.json", declarations / "compiler-symbols.txt")
    system = check_bundle.system_symbols(declarations / "system-symbols.txt")
    with tempfile.TemporaryDirectory() as folder:
        for number, (mistake, complaint) in enumerate([(lambda b: None, None), *MISTAKES]):
            bundle = pathlib.Path(folder) / f"{number}.app"
            shutil.copytree(BUNDLE, bundle)
            mistake(bundle)
            found = complaints(bundle, known, system)
            shutil.rmtree(bundle)
            if complaint is None:
                assert found == [], found
            else:
                assert any(complaint in problem for problem in found), (complaint, found)
    print(f"{len(MISTAKES)} mistakes, all of them found")


main()
