"""The check of the framework headers' names finds the mistakes that it must find."""

import pathlib
import shutil
import tempfile

from checks import PACKAGING, WORK, clang, prepare

import check_names
import declared
from listing import Listing

# Header, its text, the mistake, and the complaint expected.
MISTAKES = [
    # A selector with one letter too many, and one with its colon elsewhere: the typings write both as one word.
    ("AppKit", "NSWindow.h", "makeKeyAndOrderFront:(nullable id)", "makeKeyAndOrderFronts:(nullable id)",
     "-[NSWindow makeKeyAndOrderFronts:] is not listed"),
    ("AppKit", "NSWindow.h", "- (void)setFrame:(NSRect)frame display:(BOOL)display;",
     "- (void)setFrameDisplay:(NSRect)frame:(BOOL)display;", "is no selector of the listing"),
    ("Foundation", "NSURLSession.h", "dataTaskWithRequest:", "dataTaskWithUrlRequest:", "is not listed"),
    # A value.
    ("CoreGraphics", "CoreGraphics.h", "kCGEventFlagsChanged = 12", "kCGEventFlagsChanged = 11",
     "kCGEventFlagsChanged is 11, the listing says 12"),
    ("AppKit", "NSWindow.h", "NSWindowStyleMaskMiniaturizable = 1 << 2", "NSWindowStyleMaskMiniaturizable = 1 << 3",
     "NSWindowStyleMaskMiniaturizable is 8, the listing says 4"),
    ("ApplicationServices", "ApplicationServices.h", "IllegalArgument = -25201", "IllegalArgument = -25202",
     "kAXErrorIllegalArgument is -25202, the listing says -25201"),
    # An enumerator that does not exist.
    ("CoreGraphics", "CoreGraphics.h", "kCGHeadInsertEventTap", "kCGFrontInsertEventTap",
     "kCGFrontInsertEventTap is not listed in CGEventTapPlacement"),
    # Class methods and instance methods.
    ("Foundation", "NSTimer.h", "+ (NSTimer*)scheduledTimer", "- (NSTimer*)scheduledTimer",
     "-[NSTimer scheduledTimerWithTimeInterval:repeats:block:] is listed as a class method"),
    ("AppKit", "NSWorkspace.h", "- (BOOL)openURL:", "+ (BOOL)openURL:",
     "+[NSWorkspace openURL:] is listed as an instance method"),
    ("AppKit", "NSScreen.h", "@property(class, readonly, copy)", "@property(readonly, copy)",
     "-[NSScreen screens] is listed as a class property"),
    # Kinds of values.
    ("AppKit", "NSRunningApplication.h", "- (BOOL)forceTerminate", "- (void)forceTerminate",
     "-[NSRunningApplication forceTerminate] gives void, the listing says boolean"),
    ("CoreGraphics", "CoreGraphics.h", "CGEventTapOptions options, CGEventMask", "CGEventMask options, CGEventTapOptions",
     "CGEventTapCreate(): value 3 is CGEventMask"),
    ("AppKit", "NSAlert.h", "- (NSButton*)addButtonWithTitle", "- (NSAlert*)addButtonWithTitle",
     "-[NSAlert addButtonWithTitle:] gives NSAlert*, the listing says NSButton"),
    ("ApplicationServices", "ApplicationServices.h", "AXUIElementCreateApplication(pid_t pid)",
     "AXUIElementCreateApplication(pid_t pid, int options)",
     "AXUIElementCreateApplication() takes 2 values, the listing says 1"),
    ("AppKit", "NSApplication.h", "typedef NS_ENUM(NSUInteger, NSApplicationTerminateReply)",
     "typedef NS_ENUM(NSUInteger, NSApplicationTerminateAnswer)", "NSTerminateCancel is not listed"),
    # Properties.
    ("AppKit", "NSRunningApplication.h", "@property(readonly, getter=isTerminated) BOOL terminated;",
     "@property(readonly, getter=hasTerminated) BOOL terminated;", "hasTerminated is no selector of the listing"),
    ("AppKit", "NSRunningApplication.h", "@property(readonly) pid_t", "@property pid_t", "is read-only in the listing"),
    # Functions, constants, classes, superclasses.
    ("CoreFoundation", "CoreFoundation.h", "CFMachPortInvalidate", "CFMachPortInvalid",
     "CFMachPortInvalid() is not listed"),
    ("AVFoundation", "AVFoundation.h", "AVMediaTypeVideo", "AVMediaVideoType", "AVMediaVideoType is not listed"),
    ("AppKit", "NSCursor.h", "@interface NSCursor", "@interface NSPointer", "NSPointer is not listed"),
    ("AppKit", "NSStatusItem.h", "@interface NSStatusItem : NSObject", "@interface NSStatusItem : NSView",
     "NSStatusItem inherits from NSView, the listing says NSObject"),
    # An ancestor of the class, but not its superclass.
    ("AppKit", "NSButton.h", "@interface NSButton : NSControl", "@interface NSButton : NSObject",
     "NSButton inherits from NSObject, the listing says NSControl"),
]


def complaints(frameworks, listing, folder):
    """Reads the headers of `frameworks` instead of the tree's own."""
    result = clang("-Wno-everything", "-F", str(frameworks), "-fsyntax-only", "-Xclang", "-ast-dump=json",
                   str(WORK / "every-framework.mm"))
    tree = folder / "tree.json"
    tree.write_text(result.stdout, encoding="utf-8")
    check = check_names.Check(declared.read(tree), listing)
    check.run()
    return check.problems


def main():
    prepare()
    listing = Listing(WORK / "listing")
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        frameworks = folder / "Frameworks"
        shutil.copytree(PACKAGING / "declarations/Frameworks", frameworks)
        assert complaints(frameworks, listing, folder) == []
        for framework, header, text, mistake, complaint in MISTAKES:
            path = frameworks / f"{framework}.framework/Headers/{header}"
            whole = path.read_text(encoding="utf-8")
            assert text in whole, f"{header} no longer holds {text!r}"
            path.write_text(whole.replace(text, mistake, 1), encoding="utf-8")
            found = complaints(frameworks, listing, folder)
            path.write_text(whole, encoding="utf-8")
            assert any(complaint in problem for problem in found), (mistake, complaint, found)
    print(f"{len(MISTAKES)} mistakes, all of them found")


main()
