#include <gmock/gmock.h>

#include "app/AppDelegate.h"
#include "tests/session/ClientTest.h"
#include "tests/session/ReplacedCapabilities.h"

namespace vantrel {
namespace {

using testing::_;
using testing::ElementsAre;
using testing::InSequence;
using testing::IsEmpty;
using testing::NiceMock;

class WatchedWindow : public Window {
  public:
    MOCK_METHOD(void, center, (), (override));
    MOCK_METHOD(void, setIsVisible, (bool visible), (override));
    MOCK_METHOD(void, makeKeyAndOrderFront, (), (override));
    MOCK_METHOD(void, orderOut, (), (override));
    MOCK_METHOD(unsigned, styleMask, (), (const, override));
    MOCK_METHOD(void, setStyleMask, (unsigned mask), (override));
    MOCK_METHOD(std::optional<std::string>, text, (std::string_view id), (const, override));
    MOCK_METHOD(void, setText, (std::string_view id, std::string_view text), (override));
    MOCK_METHOD(void, setEnabled, (std::string_view id, bool enabled), (override));
    MOCK_METHOD(void, setViewHidden, (std::string_view viewId, bool hidden), (override));
};

class WatchedWindows : public Windows {
  public:
    MOCK_METHOD(std::unique_ptr<Window>, makeWindow, (const WindowDescription& description, ActionHandler onAction),
                (override));
};

/// terminate() returns, as it does where the event loop ends later.
class WatchedApplication : public Application {
  public:
    MOCK_METHOD(void, setActivationPolicy, (ActivationPolicy policy), (override));
    MOCK_METHOD(void, setDelegate, (std::weak_ptr<ApplicationDelegate> delegate), (override));
    MOCK_METHOD(void, setMainMenu, (const Menu& menu), (override));
    MOCK_METHOD(void, run, (), (override));
    MOCK_METHOD(void, activate, (), (override));
    MOCK_METHOD(void, terminate, (), (override));
};

class SilentAlerts : public Alerts {
  public:
    std::size_t runModal(const Alert&) override { return 0; }
};

class AppDelegateTest : public ClientTest {
  protected:
    void finishLaunching(const ReplacedCapabilities& replaced) {
        mac().onMain([&] {
            AppDelegate delegate(replaced.in(computer()));
            delegate.applicationDidFinishLaunching();
        });
    }
};

TEST_F(AppDelegateTest, CentresItsWindowMakesItVisibleAndBringsItToTheFront) {
    auto window = std::make_unique<NiceMock<WatchedWindow>>();
    WatchedWindows windows;
    EXPECT_CALL(windows, makeWindow(_, _)).WillOnce([&](const auto&, const auto&) { return std::move(window); });
    const InSequence inThisOrder;
    EXPECT_CALL(*window, center());
    EXPECT_CALL(*window, setIsVisible(true));
    EXPECT_CALL(*window, makeKeyAndOrderFront());
    ReplacedCapabilities replaced;
    replaced.windows = &windows;
    finishLaunching(replaced);
    EXPECT_THAT(logLines(), ElementsAre("[APP] Vantrel avviato"));
}

TEST_F(AppDelegateTest, MakesNoWindowBesideAnotherInstanceThoughTheEventLoopStillRuns) {
    mac().applications().add({"Vantrel", "biz.quorrin.vantrel"});
    WatchedApplication application;
    EXPECT_CALL(application, terminate());
    EXPECT_CALL(application, activate()).Times(0);
    SilentAlerts alerts;
    ReplacedCapabilities replaced;
    replaced.application = &application;
    replaced.alerts = &alerts;
    mac().applications().add({"Vantrel", "biz.quorrin.vantrel"});
    finishLaunching(replaced);
    EXPECT_TRUE(mac().windows().all().empty());
    EXPECT_THAT(logLines(), IsEmpty());
}

}  // namespace
}  // namespace vantrel
