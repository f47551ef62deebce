"""The type check finds what it is there to find."""

import pathlib
import tempfile

from checks import PREFIX, clang, prepare

HEAD = "#import <AppKit/AppKit.h>\n#include <charconv>\n"
# Code and the complaint about it.
MISTAKES = {
    "void f() { [NSApp activate]; }": "'activate' is only available on macOS 14.0 or newer",
    "void f(NSWindow *w) { [w makeKeyAndOrderToFront:nil]; }": "declares the selector 'makeKeyAndOrderToFront:'",
    "void f(NSWindow *w) { w.level = @\"high\"; }": "incompatible pointer to integer",
    "void f() { [NSURL URLWithString:@\"a\" encodingInvalidCharacters:NO]; }": "only available on macOS 14.0 or newer",
    "bool f(const char *a, const char *b, double &d) { return std::from_chars(a, b, d).ec == std::errc(); }":
        "'from_chars' is unavailable",
    "void f(CFStringRef s) { NSString *t = s; (void)t; }": "cannot initialize a variable of type 'NSString *__strong'",
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


def check(folder, code):
    path = pathlib.Path(folder) / "code.mm"
    path.write_text(HEAD + code + "\n", encoding="utf-8")
    return clang(*PREFIX, "-fsyntax-only", str(path))


def main():
    prepare()
    with tempfile.TemporaryDirectory() as folder:
        for code, complaint in MISTAKES.items():
            result = check(folder, code)
            # Apple's compiler words some of it otherwise; this one is pinned.
            assert result.returncode and complaint in result.stderr, (code, result.stderr)
        result = check(folder, ALLOWED)
        assert result.returncode == 0, result.stderr
    print(f"{len(MISTAKES)} mistakes, all of them found")


main()
