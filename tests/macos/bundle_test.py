"""The check of the cross-built bundle finds what it is there to find."""

import pathlib
import plistlib
import shutil
import struct
import tempfile

from checks import PACKAGING, ROOT, WORK, prepare

import check_bundle
import macho
from make_stubs import libraries

BUNDLE = WORK / "Vantrel.app"
EXECUTABLE = "Contents/MacOS/Vantrel"


def edit_plist(bundle, change):
    path = bundle / "Contents/Info.plist"
    values = plistlib.loads(path.read_bytes())
    change(values)
    path.write_bytes(plistlib.dumps(values))


def slice_at(data, architecture):
    """Where the slice begins in the universal file, and how long it is."""
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
    """In one slice, the first time."""
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


def writable_code(data):
    # Both protections of the first segment that holds code.
    offset, size = slice_at(data, "x86_64")
    at = data.index(b"__TEXT\0", offset, offset + size)
    struct.pack_into("<2I", data, at - 8 + 56, 7, 7)


# What is done to a copy of the bundle, and the complaint.
MISTAKES = [
    (lambda b: edit_plist(b, lambda p: p.pop("NSCameraUsageDescription")), "NSCameraUsageDescription"),
    (lambda b: edit_plist(b, lambda p: p.update(LSMinimumSystemVersion="12.0")), "LSMinimumSystemVersion"),
    (lambda b: edit_plist(b, lambda p: p.update(CFBundleIdentifier="biz.quorrin.other")), "CFBundleIdentifier"),
    (lambda b: edit_plist(b, lambda p: p.update(NSHighResolutionCapable=1)), "NSHighResolutionCapable"),
    (lambda b: (b / "Contents/Info.plist").write_text("no property list"), "Info.plist cannot be read"),
    (lambda b: (b / "Contents/Resources/Vantrel.icns").unlink(), "Vantrel.icns is missing"),
    (lambda b: (b / "Contents/Resources/Vantrel.icns").write_bytes(b"icns\0\0\0\x08"), "the icon has the sizes"),
    (lambda b: (b / "Contents/MacOS/helper").write_text("x"), "Contents/MacOS/helper does not belong"),
    (lambda b: (b / EXECUTABLE).chmod(0o644), "may not be executed"),
    (lambda b: edit_executable(b, only_one_processor), "is for arm64, not for arm64 and x86_64"),
    (lambda b: edit_executable(b, lambda d: bytes(d[slice_at(d, "x86_64")[0]:])), "not a universal file"),
    (lambda b: edit_executable(b, newer_system), "x86_64: made for platform 1 from 14.0 on"),
    (lambda b: edit_executable(b, other_entry), "x86_64: the entry point is not in the code"),
    (lambda b: edit_executable(b, writable_code), "x86_64: __TEXT is both writable and executable"),
    (lambda b: edit_executable(b, flip_code), "arm64: signature: page 1 does not match its hash"),
    (lambda b: edit_executable(b, without_signature), "arm64: not signed"),
    (lambda b: edit_executable(b, lambda d: replace(d, "x86_64", b"/AVFoundation\0", b"/AVFoundatoin\0")),
     "loads /System/Library/Frameworks/AVFoundation.framework/Versions/A/AVFoundatoin"),
    (lambda b: edit_executable(b, lambda d: replace(d, "x86_64", b"\0_CGEventTapCreate\0", b"\0_CGEventTapCraete\0")),
     "_CGEventTapCraete is not known in"),
    (lambda b: edit_executable(b, lambda d: replace(d, "x86_64", b"/CFNetwork\0", b"/CFNetwrok\0")),
     "does not load /System/Library/Frameworks/CFNetwork.framework/Versions/A/CFNetwork"),
    # Bound to a framework that does not have it.
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
