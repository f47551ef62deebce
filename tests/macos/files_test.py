"""Checks the files that tell the system what the client is and what it may do.

Needs neither the tools nor a build. Each check is first shown to find mistakes.
"""

import copy
import plistlib
import re

from checks import PACKAGING, ROOT

import check_bundle

ENTITLEMENTS = {"com.apple.security.device.audio-input": True, "com.apple.security.device.camera": True}
IDENTIFIER = check_bundle.PLIST["CFBundleIdentifier"]
GRANT = {
    "Authorization": "Allow",
    "CodeRequirement": "@CODE_REQUIREMENT@",
    "Identifier": IDENTIFIER,
    "IdentifierType": "bundleID",
    "StaticCode": False,
}
MARKS = {"@CODE_REQUIREMENT@", "@ORGANISATION@", "@ORGANISATION_ID@", "@UUID_PAYLOAD@", "@UUID_PROFILE@"}


def information():
    """Info.plist as CMake fills it in."""
    def variables(pattern, *path):
        return dict(re.findall(pattern, PACKAGING.joinpath(*path).read_text(encoding="utf-8"), re.M))

    values = variables(r"^\s+(MACOSX_BUNDLE_\w+) (\S+?)\)?$", "CMakeLists.txt")
    values |= variables(r'^set\((VANTREL_MAC_MINIMUM) "([\d.]+)"', ROOT / "CMakeLists.txt")
    # The values that CMake knows by itself.
    values |= {"MACOSX_BUNDLE_EXECUTABLE_NAME": "Vantrel", "PROJECT_VERSION": check_bundle.VERSION}
    text = (PACKAGING / "Info.plist.in").read_text(encoding="utf-8")
    while "${" in text:
        text = re.sub(r"\$\{(\w+)\}", lambda found: values[found[1]], text)
    return plistlib.loads(text.encode("utf-8"))


def information_problems(found):
    return list(check_bundle.property_list_problems(found))


def entitlement_problems(found):
    return [] if check_bundle.alike(found, ENTITLEMENTS) else [f"the entitlements are {found}"]


def profile_problems(found):
    problems = []
    texts = [value for value in re.findall(r"@\w+@", repr(found))]
    if set(texts) != MARKS or texts.count("@UUID_PAYLOAD@") != 1 or texts.count("@UUID_PROFILE@") != 1:
        problems.append(f"the marks are {sorted(texts)}")
    # The profile applies to all users of the Mac, as this kind of permission requires.
    if (found["PayloadType"], found["PayloadScope"]) != ("Configuration", "System"):
        problems.append(f"a profile of type {found['PayloadType']} for {found['PayloadScope']}")
    payloads = [payload["PayloadType"] for payload in found["PayloadContent"]]
    if payloads != ["com.apple.TCC.configuration-profile-policy"]:
        problems.append("not one payload, or not one with privacy preferences")
    services = found["PayloadContent"][0]["Services"]
    granted = {name: [{k: v for k, v in grant.items() if k != "Comment"} for grant in grants]
               for name, grants in services.items()}
    if not check_bundle.alike(granted, {"Accessibility": [GRANT]}):
        problems.append(f"it grants {granted}")
    return problems


def grant(profile):
    return profile["PayloadContent"][0]["Services"]["Accessibility"][0]


def service(profile, name, replaces):
    services = profile["PayloadContent"][0]["Services"]
    services[name] = services.pop("Accessibility") if replaces else services["Accessibility"]


# A change to a copy, and the complaint expected.
INFORMATION_MISTAKES = [
    (lambda p: p.update(LSUIElement=True), "LSUIElement is True, which does not belong there"),
    (lambda p: p.update(LSBackgroundOnly=True), "LSBackgroundOnly"),
    (lambda p: p.update(LSMultipleInstancesProhibited=True), "LSMultipleInstancesProhibited"),
    (lambda p: p.update(LSEnvironment={"A": "b"}), "LSEnvironment"),
    (lambda p: p.pop("CFBundleLocalizations"), "CFBundleLocalizations is missing"),
    (lambda p: p.update(CFBundleLocalizations=["en"]), "CFBundleLocalizations is ['en'], not ['it']"),
    (lambda p: p.pop("CFBundleDisplayName"), "CFBundleDisplayName is missing"),
    (lambda p: p.update(CFBundleDisplayName="vantrel"), "CFBundleDisplayName is 'vantrel'"),
    (lambda p: p.update(CFBundleSupportedPlatforms=["iPhoneOS"]), "CFBundleSupportedPlatforms"),
    (lambda p: p.pop("LSApplicationCategoryType"), "LSApplicationCategoryType is missing"),
    (lambda p: p.update(CFBundleShortVersionString="9.9"), "CFBundleShortVersionString is '9.9'"),
    (lambda p: p.update(CFBundleVersion=".."), "CFBundleVersion is '..'"),
    (lambda p: p.update(LSMinimumSystemVersion="12.0"), "LSMinimumSystemVersion is '12.0', not '13.3'"),
    (lambda p: p.update(CFBundleIdentifier="biz.quorrin.other"), "CFBundleIdentifier"),
    (lambda p: p.update(NSHighResolutionCapable=1), "NSHighResolutionCapable is 1, not True"),
    (lambda p: p["NSAppTransportSecurity"].update(NSAllowsArbitraryLoads=True), "NSAppTransportSecurity"),
    (lambda p: p.update(NSCameraUsageDescription="The fotocamera is used."), "NSCameraUsageDescription"),
    (lambda p: p.pop("NSBluetoothAlwaysUsageDescription"), "NSBluetoothAlwaysUsageDescription is missing"),
    (lambda p: p.pop("NSMicrophoneUsageDescription"), "NSMicrophoneUsageDescription is missing"),
    (lambda p: p.pop("NSLocalNetworkUsageDescription"), "NSLocalNetworkUsageDescription is missing"),
]
ENTITLEMENT_MISTAKES = [
    (lambda p: p.pop("com.apple.security.device.camera"), "the entitlements are"),
    (lambda p: p.pop("com.apple.security.device.audio-input"), "the entitlements are"),
    (lambda p: p.update({"com.apple.security.device.camera": False}), "the entitlements are"),
    (lambda p: p.update({"com.apple.security.device.camera": 1}), "the entitlements are"),
    (lambda p: p.update({"com.apple.security.get-task-allow": True}), "the entitlements are"),
]
PROFILE_MISTAKES = [
    (lambda p: grant(p).update(Identifier="biz.quorrin.other"), "it grants"),
    (lambda p: grant(p).update(IdentifierType="path"), "it grants"),
    (lambda p: grant(p).update(Authorization="Deny"), "it grants"),
    (lambda p: grant(p).update(StaticCode=True), "it grants"),
    (lambda p: service(p, "ScreenCapture", True), "it grants"),
    (lambda p: service(p, "Camera", False), "it grants"),
    (lambda p: p.update(PayloadScope="User"), "a profile of type Configuration for User"),
    (lambda p: p["PayloadContent"][0].update(PayloadType="com.apple.dock"), "not one with privacy preferences"),
    (lambda p: p.update(PayloadUUID="@UUID_PAYLOAD@"), "the marks are"),
]


def main():
    entitlements = (PACKAGING / "Vantrel.entitlements").read_bytes()
    assert b"<!--" not in entitlements, "the signing tool takes no comment in the entitlements"
    profile = (PACKAGING / "pppc/Vantrel-Accessibility.mobileconfig.in").read_bytes()
    count = 0
    for found, problems, mistakes in (
            (information(), information_problems, INFORMATION_MISTAKES),
            (plistlib.loads(entitlements), entitlement_problems, ENTITLEMENT_MISTAKES),
            (plistlib.loads(profile), profile_problems, PROFILE_MISTAKES)):
        for mistake, complaint in mistakes:
            changed = copy.deepcopy(found)
            mistake(changed)
            said = problems(changed)
            assert any(complaint in problem for problem in said), (complaint, said)
            count += 1
        assert problems(found) == [], problems(found)
    print(f"three files are as they should be; {count} mistakes, all of them found")


main()
