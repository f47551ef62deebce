#include "record/Recorder.h"

namespace vantrel {

void Recorder::applicationDidFinishLaunching() {
    look(LookCause::start);
    spaceChanges_ = sources_.spaces.observeActiveSpaceDidChange(lookFor(LookCause::space));
    screenChanges_ = sources_.screens.observeScreenParametersDidChange(lookFor(LookCause::screens));
    timer_ = sources_.runLoop.scheduledTimer(interval, true, lookFor(LookCause::time));
}

Block Recorder::lookFor(LookCause cause) {
    return [weak = weak_from_this(), cause] {
        if (const auto recorder = weak.lock()) recorder->look(cause);
    };
}

void Recorder::look(LookCause cause) {
    if (failed_ || writer_.write(seen(cause))) return;
    failed_ = true;
    onFailure_();
}

Look Recorder::seen(LookCause cause) const {
    Look look{.cause = cause,
              .uptime = sources_.clock.uptime(),
              .secondsSince1970 = sources_.clock.secondsSince1970(),
              .front = {},
              .screens = sources_.screens.screens(),
              .mainScreen = sources_.screens.mainScreen(),
              .separateSpaces = sources_.screens.screensHaveSeparateSpaces(),
              .windows = {}};
    if (const auto front = sources_.frontmostApplication.frontmostApplication()) {
        look.front = FrontApplication{front->processIdentifier(), front->bundleIdentifier(), front->localizedName()};
    }
    look.windows = sources_.windowList.copy(WindowListOption::all);
    return look;
}

}  // namespace vantrel
