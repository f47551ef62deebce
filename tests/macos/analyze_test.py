"""The static analyzer finds the mistakes that it must find."""

import pathlib
import tempfile

from checks import ANALYZER, PREFIX, clang, prepare

HEAD = "#import <AppKit/AppKit.h>\n#import <ApplicationServices/ApplicationServices.h>\n"
# Code, and the complaint expected for it.
MISTAKES = {
    # Created and never released.
    "void f(CFStringRef s) { AXUIElementRef e = AXUIElementCreateApplication(1); AXUIElementPerformAction(e, s); }":
        "Potential leak",
    # Released although only borrowed.
    "void f(CFArrayRef a) { CFRelease(CFArrayGetValueAtIndex(a, 0)); }": "not owned at this point",
    # Released twice.
    "void f() { CFTypeRef e = AXUIElementCreateApplication(1); CFRelease(e); CFRelease(e); }": "after it is released",
    # A null reference where the header requires a non-null one.
    "NSString *_Nonnull f() { NSString *_Nullable s = nil; return s; }": "nil returned from a function that is expected",
    # An error written without checking whether the caller wants it.
    "@interface A : NSObject\n@end\n@implementation A\n- (BOOL)f:(NSError *__autoreleasing _Nullable *_Nullable)error {"
    " *error = nil; return NO; }\n@end": "Potential null dereference",
}


def main():
    prepare()
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder) / "code.mm"
        for code, complaint in MISTAKES.items():
            path.write_text(HEAD + code + "\n", encoding="utf-8")
            result = clang(*PREFIX, *ANALYZER, str(path))
            assert result.returncode and complaint in result.stderr, (code, result.stderr)
    print(f"{len(MISTAKES)} mistakes, all of them found")


main()
