#!/usr/bin/env python3
"""check_bundle.py BUNDLE TREE COMPILER-SYMBOLS SYSTEM-SYMBOLS: checks that a cross-built Vantrel.app is whole.

TREE is Clang's syntax tree of the framework headers; SYSTEM-SYMBOLS lists the symbols that libSystem may be asked
for.
"""

import pathlib
import plistlib
import re
import struct
import sys
import zlib

import macho
from make_stubs import libraries

ROOT = pathlib.Path(__file__).resolve().parents[3]
VERSION = re.search(r"^project\(vantrel VERSION ([\d.]+) ", (ROOT / "CMakeLists.txt").read_text("utf-8"), re.M)[1]
MINIMUM = "13.3"
# The linker takes the identifier of an ad hoc signature from this name.
SIGNED_AS = "Vantrel"
LIB_SYSTEM = "/usr/lib/libSystem.B.dylib"
FRAMEWORKS = {"AppKit", "ApplicationServices", "AVFoundation", "CFNetwork", "CoreFoundation", "CoreGraphics",
              "Foundation"}
# The complete contents: one key too many changes how the system treats the application.
PLIST = {
    "CFBundleDevelopmentRegion": "it",
    "CFBundleDisplayName": "Vantrel",
    "CFBundleExecutable": "Vantrel",
    "CFBundleIconFile": "Vantrel.icns",
    "CFBundleIdentifier": "biz.quorrin.vantrel",
    "CFBundleInfoDictionaryVersion": "6.0",
    "CFBundleLocalizations": ["it"],
    "CFBundleName": "Vantrel",
    "CFBundlePackageType": "APPL",
    "CFBundleShortVersionString": VERSION,
    "CFBundleSupportedPlatforms": ["MacOSX"],
    "CFBundleVersion": VERSION,
    "LSApplicationCategoryType": "public.app-category.education",
    "LSMinimumSystemVersion": MINIMUM,
    "NSAppTransportSecurity": {"NSAllowsLocalNetworking": True},
    "NSBluetoothAlwaysUsageDescription": "Il browser aperto da Vantrel può usare il Bluetooth per accedere con la "
                                         "passkey del telefono. Vantrel non lo usa.",
    "NSCameraUsageDescription": "Vantrel chiede l'accesso alla fotocamera prima di aprire la riunione, perché durante "
                                "la lezione sorvegliata tu possa essere visto.",
    "NSHighResolutionCapable": True,
    "NSLocalNetworkUsageDescription": "Vantrel si collega al server della lezione quando si trova nella tua rete "
                                      "locale.",
    "NSMicrophoneUsageDescription": "Vantrel chiede l'accesso al microfono prima di aprire la riunione, perché durante "
                                    "la lezione sorvegliata tu possa essere sentito.",
    "NSPrincipalClass": "NSApplication",
    "NSSupportsAutomaticTermination": False,
    "NSSupportsSuddenTermination": False,
}
FOLDERS = {"Contents", "Contents/MacOS", "Contents/Resources"}
FILES = {"Contents/Info.plist", "Contents/MacOS/Vantrel", "Contents/Resources/Vantrel.icns"}
# The client's own classes that the system finds by name or that a rule requires.
CLASSES = {"BlackoutWindow", "BlackoutContentView"}
# The kinds of pictures that the system takes from an icon, and their widths in pixels.
ICON = {b"ic07": 128, b"ic08": 256, b"ic09": 512, b"ic10": 1024, b"ic11": 32, b"ic12": 64, b"ic13": 256, b"ic14": 512}
SUBTYPES = {"arm64": 0, "x86_64": 3}


def alike(one, other):
    """Whether both would be written alike. Distinguishes True from 1."""
    return plistlib.dumps([one]) == plistlib.dumps([other])


def property_list_problems(found):
    for key in sorted(PLIST.keys() | found.keys()):
        if key not in PLIST:
            yield f"{key} is {found[key]!r}, which does not belong there"
        elif key not in found:
            yield f"{key} is missing"
        elif not alike(found[key], PLIST[key]):
            yield f"{key} is {found[key]!r}, not {PLIST[key]!r}"


def picture_width(picture):
    """The width of a square PNG picture that is complete and shows something."""
    if picture[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError("no PNG picture")
    chunks, at = [], 8
    while not chunks or chunks[-1][0] != b"IEND":
        length, = struct.unpack_from(">I", picture, at)
        body = picture[at + 4:at + 8 + length]
        if struct.pack(">I", zlib.crc32(body)) != picture[at + 8 + length:at + 12 + length]:
            raise ValueError("a picture that is damaged")
        chunks.append((body[:4], body[4:]))
        at += 12 + length
    width, height, depth, colour, _, _, interlaced = struct.unpack(">2I5B", chunks[0][1])
    if (width, depth, colour, interlaced, at) != (height, 8, 6, 0, len(picture)):
        raise ValueError("not a square picture with transparency")
    pixels = zlib.decompress(b"".join(data for kind, data in chunks if kind == b"IDAT"))
    if len(pixels) != height * (1 + 4 * width):
        raise ValueError("a picture that is not whole")
    # Each row begins with its filter's number. An empty picture contains nothing else.
    if not pixels.translate(None, bytes(range(5))):
        raise ValueError("an empty picture")
    return width


class Check:
    def __init__(self, bundle, known, system):
        self.bundle, self.known, self.system = bundle, known, system
        self.problems, self.notes = [], []

    def say(self, text):
        self.problems.append(text)

    def run(self):
        present = {str(path.relative_to(self.bundle)): path for path in self.bundle.rglob("*")}
        for name, path in sorted(present.items()):
            if path.is_symlink():
                self.say(f"{name} is a link")
            elif name not in (FOLDERS if path.is_dir() else FILES):
                self.say(f"{name} does not belong in the bundle")
        for name in sorted(FILES - present.keys()):
            self.say(f"{name} is missing")
        if self.problems:
            return
        self.property_list()
        self.icon()
        executable = self.bundle / "Contents/MacOS/Vantrel"
        if not executable.stat().st_mode & 0o111:
            self.say("the executable may not be executed")
        try:
            found = macho.slices(executable.read_bytes())
        except (macho.Malformed, struct.error) as error:
            self.say(f"the executable: {error}")
            return
        if sorted(s.architecture for s in found) != ["arm64", "x86_64"]:
            self.say(f"the executable is for {', '.join(s.architecture for s in found)}, not for arm64 and x86_64")
        for slice_ in found:
            self.slice(slice_)

    def property_list(self):
        with open(self.bundle / "Contents/Info.plist", "rb") as file:
            try:
                found = plistlib.load(file)
            except Exception as error:  # The library does not document all the classes that it throws.
                self.say(f"Info.plist cannot be read: {error}")
                return
        for problem in property_list_problems(found):
            self.say(f"Info.plist: {problem}")

    def icon(self):
        data = (self.bundle / "Contents/Resources/Vantrel.icns").read_bytes()
        kinds, at = [], 8
        if data[:4] != b"icns" or struct.unpack_from(">I", data, 4)[0] != len(data):
            self.say("the icon is not an .icns file")
            return
        while at + 8 <= len(data):
            kind, length = struct.unpack_from(">4sI", data, at)
            kinds.append(kind)
            try:
                width = picture_width(data[at + 8:at + length])
            except (ValueError, struct.error, zlib.error) as error:
                self.say(f"the icon, {kind!r}: {error}")
                return
            if width != ICON.get(kind):
                self.say(f"the icon, {kind!r}: {width} pixels wide, not {ICON.get(kind, 'of a kind that is known')}")
            at += length
        if sorted(kinds) != sorted(ICON):
            self.say(f"the icon has the kinds {sorted(kinds)}, not {sorted(ICON)}")

    def slice(self, found):
        def say(text):
            self.say(f"{found.architecture}: {text}")

        if found.file_type != macho.MH_EXECUTE or not found.flags & macho.MH_PIE or not found.flags & macho.MH_TWOLEVEL:
            say("not a position-independent executable with a two-level namespace")
        if (found.platform, found.minimum) != (macho.PLATFORM_MACOS, MINIMUM):
            say(f"made for platform {found.platform} from {found.minimum or 'no version'} on, not for macOS {MINIMUM}")
        if [int(part) for part in (found.sdk or "0").split(".")] < [int(part) for part in MINIMUM.split(".")]:
            say(f"made with an SDK of {found.sdk or 'no version'}, older than macOS {MINIMUM}")
        if found.subtypes != (SUBTYPES.get(found.architecture),) * 2:
            say(f"for the subtypes {found.subtypes} of the processor")
        text = found.section("__TEXT", "__text")
        if text is None or not text.offset <= found.entry < text.offset + text.size:
            say("the entry point is not in the code")
        for name, segment in found.segments.items():
            for protection, what in ((segment.protection, "is"), (segment.maximum, "may become")):
                if protection & macho.WRITE and protection & macho.EXECUTE:
                    say(f"{name} {what} both writable and executable")
        for path in found.run_paths:
            say(f"a run path: {path}")
        self.libraries(found, say)
        self.symbols(found, say)
        names = set(found.contents("__TEXT", "__objc_classname").split(b"\0"))
        for name in sorted(CLASSES):
            if name.encode() not in names:
                say(f"no class {name}")
        if found.architecture == "arm64":
            self.signature(found, say)

    def libraries(self, found, say):
        allowed = {i for i, library in self.known.items() if library.name in FRAMEWORKS | {"libobjc"}} | {LIB_SYSTEM}
        for kind, name in found.libraries:
            if name not in allowed:
                say(f"loads {name}")
            if kind != "load":
                say(f"loads {name} in an unusual way ({kind})")
        for name in sorted(allowed - {name for _, name in found.libraries}):
            say(f"does not load {name}")

    def symbols(self, found, say):
        if not found.undefined:
            say("asks nothing of the system")
        for symbol in found.undefined:
            if symbol.weak:
                say(f"{symbol.name} may be missing when the application starts")
            if symbol.library == LIB_SYSTEM:
                if symbol.name not in self.system:
                    say(f"{symbol.name} of libSystem is not in the list: add it if macOS {MINIMUM} has it")
            elif symbol.library not in self.known or symbol.name not in self.known[symbol.library].all():
                say(f"{symbol.name} is not known in {symbol.library}")
        # The loader uses only the bindings.
        for symbol in sorted(set(found.bound.values()) - set(found.undefined)):
            say(f"the loader looks for {symbol.name} in {symbol.library}, of which the symbol table knows nothing")
        for address, symbol in sorted(found.expected.items()):
            if found.bound.get(address) != symbol:
                say(f"the loader does not put {symbol.name} where the code looks for it")
        # The linker leaves names of C functions whose callers it has removed, but none of classes.
        for symbol in sorted(set(found.undefined) - set(found.bound.values())):
            if symbol.name.startswith("_OBJC_"):
                say(f"the loader does not look for {symbol.name}")
        for name in sorted({symbol.name for symbol in found.coalesced.values()} - found.defined):
            say(f"the loader looks for {name}, which the executable does not have")

    def signature(self, found, say):
        directory = macho.code_directory(found)
        if directory is None:
            say("not signed, so no Mac with an Apple processor would start it")
            return
        if directory.problem:
            say(f"signature: {directory.problem}")
        if not directory.flags & macho.CS_ADHOC:
            say("signature: not ad hoc")
        if directory.identifier != SIGNED_AS:
            say(f"signature: of {directory.identifier!r}, not of {SIGNED_AS!r}")
        self.notes.append(f"arm64: {directory.pages} pages match their hashes")


def system_symbols(path):
    lines = path.read_text(encoding="utf-8").splitlines()
    # The function that binds others at their first call is not a C function and has no underscore.
    return {"_" + line.strip() for line in lines if line.strip() and not line.startswith("#")} | {"dyld_stub_binder"}


def main():
    bundle, tree, compiler_symbols, system = map(pathlib.Path, sys.argv[1:])
    check = Check(bundle, libraries(tree, compiler_symbols), system_symbols(system))
    check.run()
    for problem in check.problems:
        print(problem)
    for note in check.notes:
        print(note)
    return 1 if check.problems else 0


if __name__ == "__main__":
    sys.exit(main())
