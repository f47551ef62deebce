#!/usr/bin/env python3
"""check_bundle.py BUNDLE TREE COMPILER-SYMBOLS SYSTEM-SYMBOLS: checks that a cross-built Vantrel.app is whole.

TREE is Clang's syntax tree of the framework headers; SYSTEM-SYMBOLS lists what may be asked of libSystem.
"""

import pathlib
import plistlib
import struct
import sys

import macho
from make_stubs import libraries

MINIMUM = "13.3"
LIB_SYSTEM = "/usr/lib/libSystem.B.dylib"
FRAMEWORKS = {"AppKit", "ApplicationServices", "AVFoundation", "CFNetwork", "CoreFoundation", "CoreGraphics",
              "Foundation"}
PLIST = {
    "CFBundleDevelopmentRegion": "it",
    "CFBundleExecutable": "Vantrel",
    "CFBundleIconFile": "Vantrel.icns",
    "CFBundleIdentifier": "biz.quorrin.vantrel",
    "CFBundleInfoDictionaryVersion": "6.0",
    "CFBundleName": "Vantrel",
    "CFBundlePackageType": "APPL",
    "LSMinimumSystemVersion": MINIMUM,
    "NSAppTransportSecurity": {"NSAllowsLocalNetworking": True},
    "NSHighResolutionCapable": True,
    "NSPrincipalClass": "NSApplication",
    "NSSupportsAutomaticTermination": False,
    "NSSupportsSuddenTermination": False,
}
TEXTS = {"NSCameraUsageDescription": "fotocamera", "NSLocalNetworkUsageDescription": "rete locale",
         "NSMicrophoneUsageDescription": "microfono",
         "CFBundleShortVersionString": ".", "CFBundleVersion": "."}
FILES = {"Contents/Info.plist", "Contents/MacOS/Vantrel", "Contents/Resources/Vantrel.icns"}
# Classes of the client's own that the system finds by name or that stand for a rule.
CLASSES = {"BlackoutWindow", "BlackoutContentView"}
ICON_SIZES = {32, 64, 128, 256, 512, 1024}


class Check:
    def __init__(self, bundle, known, system):
        self.bundle, self.known, self.system = bundle, known, system
        self.problems, self.notes = [], []

    def say(self, text):
        self.problems.append(text)

    def run(self):
        present = {str(p.relative_to(self.bundle)) for p in self.bundle.rglob("*") if not p.is_dir()}
        for name in sorted(FILES - present):
            self.say(f"{name} is missing")
        for name in sorted(present - FILES):
            self.say(f"{name} does not belong in the bundle")
        if FILES - present:
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
            except Exception as error:  # The library names no class for all that it throws.
                self.say(f"Info.plist cannot be read: {error}")
                return
        for key, value in PLIST.items():
            if found.get(key) != value or type(found.get(key)) is not type(value):
                self.say(f"Info.plist: {key} is {found.get(key)!r}, not {value!r}")
        for key, word in TEXTS.items():
            if word not in str(found.get(key, "")):
                self.say(f"Info.plist: {key} is {found.get(key)!r}")

    def icon(self):
        data = (self.bundle / "Contents/Resources/Vantrel.icns").read_bytes()
        sizes, at = set(), 8
        if data[:4] != b"icns" or struct.unpack_from(">I", data, 4)[0] != len(data):
            self.say("the icon is not an .icns file")
            return
        while at + 8 <= len(data):
            length = struct.unpack_from(">I", data, at + 4)[0]
            picture = data[at + 8:at + length]
            if length < 32 or picture[:8] != b"\x89PNG\r\n\x1a\n":
                self.say("the icon holds something else than PNG pictures")
                return
            width, height = struct.unpack_from(">2I", picture, 16)
            sizes.add(width if width == height else 0)
            at += length
        if sizes != ICON_SIZES:
            self.say(f"the icon has the sizes {sorted(sizes)}, not {sorted(ICON_SIZES)}")

    def slice(self, found):
        def say(text):
            self.say(f"{found.architecture}: {text}")

        if found.file_type != macho.MH_EXECUTE or not found.flags & macho.MH_PIE or not found.flags & macho.MH_TWOLEVEL:
            say("not a position-independent executable with a two-level namespace")
        if (found.platform, found.minimum) != (macho.PLATFORM_MACOS, MINIMUM):
            say(f"made for platform {found.platform} from {found.minimum or 'no version'} on, not for macOS {MINIMUM}")
        text = found.section("__TEXT", "__text")
        if text is None or not text.offset <= found.entry < text.offset + text.size:
            say("the entry point is not in the code")
        for name, (_, _, _, _, protection) in found.segments.items():
            if protection & 2 and protection & 4:
                say(f"{name} is both writable and executable")
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
            if symbol.library == LIB_SYSTEM:
                if symbol.name not in self.system:
                    say(f"{symbol.name} of libSystem is not in the list: add it if macOS {MINIMUM} has it")
            elif symbol.library not in self.known or symbol.name not in self.known[symbol.library].all():
                say(f"{symbol.name} is not known in {symbol.library}")

    def signature(self, found, say):
        directory = macho.code_directory(found)
        if directory is None:
            say("not signed, so no Mac with an Apple processor would start it")
            return
        if directory.problem:
            say(f"signature: {directory.problem}")
        if not directory.flags & macho.CS_ADHOC:
            say("signature: not ad hoc")
        self.notes.append(f"arm64: {directory.pages} pages match their hashes")


def system_symbols(path):
    lines = path.read_text(encoding="utf-8").splitlines()
    # What binds functions at their first call is no C function and has no underscore.
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
