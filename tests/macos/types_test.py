"""The type check finds the mistakes that it must find."""

import pathlib
import tempfile

from checks import PREFIX, clang, prepare

HEAD = "#import <AppKit/AppKit.h>\n#include <charconv>\n"
# Code, and the complaint expected for it.
MISTAKES = {
    "void f() { [NSApp activate]; }": "'activate' is only available on macOS 14.0 or newer",
    "void f(NSWindow *w) { [w makeKeyAndOrderToFront:nil]; }": "declares the selector 'makeKeyAndOrderToFront:'",
    "void f(NSWindow *w) { w.level = @\"high\"; }": "incompatible pointer to integer",
    "void f() { [NSURL URLWithString:@\"a\" encodingInvalidCharacters:NO]; }": "only available on macOS 14.0 or newer",
    "bool f(const char *a, const char *b, double &d) { return std::from_chars(a, b, d).ec == std::errc(); }":
        "'from_chars' is unavailable",
    "void f(CFStringRef s) { NSString *t = s; (void)t; }": "cannot initialize a variable of type 'NSString *__strong'",
    "id f(CFBooleanRef b) { return (__bridge NSNumber *)b; }": "which is not an Objective-C class",
    "int f(NSAlertStyle s) { switch (s) { case NSAlertStyleWarning: return 1; } return 0; }": "not handled in switch",
    "void f(NSTimer *t) { [t release]; }": "ARC forbids explicit message send of 'release'",
    "void f(NSWindow *w) { [w setLevl:3]; }": "declares the selector 'setLevl:'",
}
ALLOWED = """
void f() {
    if (@available(macOS 14.0, *)) {
        [NSApp activate];
    } else {
        [NSApp activateIgnoringOtherApps:YES];
    }
}
"""
# What becomes deprecated after the oldest supported system: reported once that system is raised.
LATER = {
    "void f(NSRunningApplication *a) { [a activateWithOptions:NSApplicationActivateIgnoringOtherApps]; }": "14.0",
    "void f() { [NSApp activateIgnoringOtherApps:YES]; }": "27.0",
    "NSBezelStyle f() { return NSBezelStyleRounded; }": "27.0",
}
# On Intel, BOOL is a separate number type.
INTEL = "bool *f(BOOL *b) { return b; }"
# An option set accepts combinations, in every language that may import it.
PLAIN = """
int f(CGEventFlags flags) {
    switch (flags) {
        case kCGEventFlagMaskShift | kCGEventFlagMaskCommand:
            return 1;
        default:
            return 0;
    }
}
"""


def check(folder, code):
    path = pathlib.Path(folder) / "code.mm"
    path.write_text(HEAD + code + "\n", encoding="utf-8")
    return clang(*PREFIX, "-fsyntax-only", str(path))


def main():
    prepare()
    with tempfile.TemporaryDirectory() as folder:
        for code, complaint in MISTAKES.items():
            result = check(folder, code)
            # Apple's compiler words some complaints differently; this one is pinned.
            assert result.returncode and complaint in result.stderr, (code, result.stderr)
        result = check(folder, ALLOWED)
        assert result.returncode == 0, result.stderr
        path = pathlib.Path(folder) / "code.mm"
        for code, version in LATER.items():
            path.write_text(HEAD + code + "\n", encoding="utf-8")
            result = clang("-fsyntax-only", f"--target=arm64-apple-macos{version}", str(path))
            assert f"first deprecated in macOS {version}" in result.stderr, (code, result.stderr)
            assert check(folder, code).returncode == 0, code
        path.write_text(HEAD + INTEL + "\n", encoding="utf-8")
        assert check(folder, INTEL).returncode == 0
        result = clang("-fsyntax-only", "--target=x86_64-apple-macos13.3", str(path))
        assert "cannot initialize return object of type 'bool *'" in result.stderr, result.stderr
        for language, also in (("c", ""), ("objective-c", HEAD.splitlines()[0] + "\n")):
            path.write_text("#import <ApplicationServices/ApplicationServices.h>\n" + also + PLAIN, encoding="utf-8")
            result = clang("-std=c17", "-Wassign-enum", "-x", language, "-fsyntax-only", str(path))
            assert result.returncode == 0, result.stderr
    print(f"{len(MISTAKES) + len(LATER) + 1} mistakes, all of them found")


main()
