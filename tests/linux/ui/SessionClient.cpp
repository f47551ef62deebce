// A client in a session that ends only when the window list cannot be read any more. It covers a part of the screen and
// says "ready"; with "alert" as its argument it then asks a question, from an event. The delegate refuses to terminate
// while the session goes on. Says "session over" when it ends, and "let go" with the exit status 3 when it may
// terminate.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "platform/linux/LinuxComputer.h"

namespace {

using namespace vantrel;

void say(const char* line) {
    std::puts(line);
    std::fflush(stdout);
}

class Session final : public ApplicationDelegate {
  public:
    Session(linuxdesktop::LinuxComputer& desktop, bool asks) : desktop_(desktop), asks_(asks) {}

    void applicationDidFinishLaunching() override {
        OverlayDescription description;
        description.frame = {{600, 100}, {200, 150}};
        description.level = 1000;
        cover_ = desktop_.computer().overlays.makeOverlay(description);
        cover_->orderFrontRegardless();
        timer_ = desktop_.computer().mainRunLoop.scheduledTimer(0.1, true, [this] { look(); });
        if (asks_) {
            desktop_.postEvent([this] {
                desktop_.postEvent([] { say("ready"); });
                desktop_.computer().alerts.runModal({AlertStyle::warning, "?", "", {"Sì", "No"}});
            });
        } else {
            say("ready");
        }
    }

    TerminateReply applicationShouldTerminate() override {
        return timer_ ? TerminateReply::cancel : TerminateReply::now;
    }

  private:
    void look() {
        if (desktop_.computer().windowList.copy(WindowListOption::all)) return;
        desktop_.computer().dispatch.mainQueue().async([this] {
            timer_.reset();
            cover_.reset();
            say("session over");
        });
    }

    linuxdesktop::LinuxComputer& desktop_;
    const bool asks_;
    std::unique_ptr<Overlay> cover_;
    std::unique_ptr<Timer> timer_;
};

[[noreturn]] void letGo() {
    say("let go");
    constexpr int asTold = 3;
    std::_Exit(asTold);
}

}  // namespace

int main(int argc, char**) {
    linuxdesktop::NoComputer reason{};
    const auto desktop = linuxdesktop::LinuxComputer::create(letGo, reason);
    if (!desktop) return 1;
    const auto session = std::make_shared<Session>(*desktop, argc > 1);
    desktop->computer().application.setDelegate(session);
    desktop->computer().application.run();
    return 2;
}
