// reporting-client: runs the client's join and heartbeat on the Linux desktop, with two violations to report, until it
// is ended. The saved settings name the server. Nothing on this desktop causes violations by itself yet.

#include <cstdlib>
#include <memory>

#include "platform/linux/LinuxComputer.h"
#include "server/HeartbeatService.h"
#include "server/ServerAddress.h"
#include "server/SessionJoin.h"

namespace {

class ReportingClient : public vantrel::ApplicationDelegate, public std::enable_shared_from_this<ReportingClient> {
  public:
    ReportingClient(const vantrel::Computer& computer, std::string code)
        : computer_(computer), code_(std::move(code)) {}

    void applicationDidFinishLaunching() override {
        computer_.dispatch.userInitiatedQueue().async([self = shared_from_this()] {
            const vantrel::SessionJoin join(self->requests(), self->computer_.userDefaults, self->computer_.unicode,
                                            self->computer_.log, "2.0-macOS");
            const auto outcome = join.join(self->code_, "Ada Neri", "ada@example.com");
            self->computer_.dispatch.mainQueue().async([self, outcome] { self->report(outcome); });
        });
    }

    vantrel::TerminateReply applicationShouldTerminate() override { return vantrel::TerminateReply::now; }

  private:
    vantrel::ServerRequests requests() const {
        return {computer_.dispatch, computer_.urls, computer_.json, computer_.urlSession};
    }

    void report(const vantrel::JoinOutcome& outcome) {
        const auto* joined = std::get_if<vantrel::JoinResult>(&outcome);
        if (joined == nullptr) std::_Exit(EXIT_FAILURE);
        heartbeat_ = std::make_shared<vantrel::HeartbeatService>(
            vantrel::HeartbeatService::Identity{vantrel::serverBaseAddress(computer_.userDefaults), code_,
                                                joined->userToken, "2.0-macOS"},
            requests(), computer_.dispatch, computer_.mainRunLoop, computer_.clock, computer_.dates, computer_.log);
        heartbeat_->lockdownActive = true;
        heartbeat_->meetConnected = true;
        heartbeat_->addViolation("KEY_BLOCKED", "Cmd+Tab");
        heartbeat_->addViolation("FOCUS_VIOLATION", "Anteprima <b>");
        heartbeat_->start();
    }

    const vantrel::Computer computer_;
    const std::string code_;
    std::shared_ptr<vantrel::HeartbeatService> heartbeat_;
};

}  // namespace

int main(int argc, char** argv) {
    auto reason = vantrel::linuxdesktop::NoComputer::noX11Display;
    const auto desktop = vantrel::linuxdesktop::LinuxComputer::create([] { std::_Exit(EXIT_SUCCESS); }, reason);
    if (!desktop || argc != 2) return EXIT_FAILURE;
    const auto computer = desktop->computer();
    const auto client = std::make_shared<ReportingClient>(computer, argv[1]);
    computer.application.setDelegate(client);
    computer.application.run();
}
