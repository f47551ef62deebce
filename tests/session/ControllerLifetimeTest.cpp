#include <gmock/gmock.h>

#include "session/MainWindowController.h"
#include "tests/session/ClientTest.h"

namespace vantrel {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using virtualmac::NetworkAnswer;

/// A controller that is destroyed while something of it is pending: nothing keeps it alive, and nothing happens for it.
class ControllerLifetimeTest : public ClientTest {
  protected:
    std::weak_ptr<MainWindowController> make() {
        mac().onMain([this] {
            kept_ = MainWindowController::create(computer());
            kept_->window().makeKeyAndOrderFront();
        });
        return kept_;
    }

    void drop() {
        mac().onMain([this] { kept_.reset(); });
    }

  private:
    std::shared_ptr<MainWindowController> kept_;
};

TEST_F(ControllerLifetimeTest, ChecksNoVersionOnceItIsGone) {
    const auto controller = make();
    mac().runFor(0.5);
    drop();
    EXPECT_TRUE(controller.expired());
    mac().runFor(10);
    EXPECT_THAT(requests(), IsEmpty());
}

TEST_F(ControllerLifetimeTest, ReadsNoVersionReplyOnceItIsGone) {
    answer(std::string("GET ") + server + "/api/version/latest",
           NetworkAnswer::reply(200, R"({"updateAvailable":true,"severity":"required"})", 1));
    const auto controller = make();
    mac().runFor(1.5);
    EXPECT_THAT(requests(), SizeIs(1));
    drop();
    EXPECT_TRUE(controller.expired());
    mac().runFor(10);
    EXPECT_THAT(logLines(), IsEmpty());
    EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(ControllerLifetimeTest, DiesOnTheMainThreadAfterAJoinThatOutlivesIt) {
    answer(std::string("GET ") + server + "/api/sessions/NQRP5D", NetworkAnswer::reply(404, "", 3));
    const auto controller = make();
    mac().runFor(2);
    join();
    mac().runFor(1);
    drop();
    // The join's thread still holds it. Its last reference must go to the main queue, or the window would complain.
    mac().runFor(10);
    EXPECT_TRUE(controller.expired());
    EXPECT_THAT(mac().windows().all(), IsEmpty());
}

}  // namespace
}  // namespace vantrel
