#pragma once

#include <memory>
#include <utility>

#include "platform/apps/FrontmostApplication.h"
#include "platform/desktop/Screens.h"
#include "platform/desktop/Spaces.h"
#include "platform/desktop/WindowList.h"
#include "platform/threads/Block.h"
#include "platform/threads/Clock.h"
#include "platform/threads/RunLoop.h"
#include "platform/ui/Application.h"
#include "record/LookWriter.h"

namespace vantrel {

/// Looks at the computer every half second, and once more at each notice of a change of the Space or of the displays.
/// It only reads, and shows nothing. Main thread.
class Recorder final : public ApplicationDelegate, public std::enable_shared_from_this<Recorder> {
  public:
    /// In seconds of uptime.
    static constexpr double interval = 0.5;

    struct Sources {
        const Clock& clock;
        const FrontmostApplication& frontmostApplication;
        Screens& screens;
        Spaces& spaces;
        const WindowList& windowList;
        RunLoop& runLoop;
    };

    /// `onFailure` is called once if a line cannot be kept. Nothing is written after that.
    Recorder(const Sources& sources, LookWriter writer, Block onFailure)
        : sources_(sources), writer_(std::move(writer)), onFailure_(std::move(onFailure)) {}

    void applicationDidFinishLaunching() override;
    TerminateReply applicationShouldTerminate() override { return TerminateReply::now; }

  private:
    Block lookFor(LookCause cause);
    void look(LookCause cause);
    Look seen(LookCause cause) const;

    const Sources sources_;
    LookWriter writer_;
    const Block onFailure_;
    bool failed_ = false;
    std::unique_ptr<Timer> timer_;
    std::unique_ptr<Observation> spaceChanges_;
    std::unique_ptr<Observation> screenChanges_;
};

}  // namespace vantrel
