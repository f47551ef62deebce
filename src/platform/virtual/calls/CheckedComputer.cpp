#include "platform/virtual/calls/CheckedComputer.h"

namespace vantrel::virtualmac {

CheckedComputer::CheckedComputer(Engine& engine, const Computer& computer)
    : application_(engine, computer.application),
      alerts_(engine, computer.alerts),
      windows_(engine, computer.windows),
      statusBar_(engine, computer.statusBar),
      screens_(engine, computer.screens),
      spaces_(engine, computer.spaces),
      overlays_(engine, computer.overlays),
      keyboard_(engine, computer.keyboardTaps),
      windowList_(engine, computer.windowList),
      workspace_(engine, computer.workspace),
      opener_(engine, computer.applicationOpener),
      frontmost_(engine, computer.frontmostApplication),
      applications_(engine, computer.runningApplications),
      launcher_(engine, computer.processLauncher),
      accessibility_(engine, computer.accessibility),
      trust_(engine, computer.accessibilityTrust),
      capture_(engine, computer.captureAuthorization),
      dispatch_(engine, computer.dispatch),
      runLoop_(engine, computer.mainRunLoop),
      clock_(engine, computer.clock),
      log_(engine, computer.log),
      defaults_(engine, computer.userDefaults),
      network_(engine, computer.urlSession),
      files_(engine, computer.files),
      checked_{application_,  alerts_,          windows_,         statusBar_,     screens_,  spaces_,
               overlays_,     keyboard_,        windowList_,      workspace_,     opener_,   frontmost_,
               applications_, launcher_,        accessibility_,   trust_,         capture_,  dispatch_,
               runLoop_,      computer.threads, clock_,           log_,           defaults_, computer.urls,
               network_,      computer.json,    computer.unicode, computer.dates, files_,    computer.mainBundle} {}

}  // namespace vantrel::virtualmac
