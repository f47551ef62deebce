#include <atomic>
#include <functional>
#include <memory>
#include <string>

#include "tests/contracts/ContractTest.h"
#include "tests/contracts/LaunchHost.h"

namespace vantrel::contracts {
namespace {

class LaunchContract : public ContractTest {
  protected:
    class Delegate final : public ApplicationDelegate {
      public:
        explicit Delegate(LaunchContract& test) : test_(test) {}

        void applicationDidFinishLaunching() override {
            test_.note("launched");
            if (test_.onLaunch) test_.onLaunch();
        }
        TerminateReply applicationShouldTerminate() override {
            test_.note("asked");
            return test_.reply;
        }

      private:
        LaunchContract& test_;
    };

    void TearDown() override {
        delegate.reset();
        ContractTest::TearDown();
    }

    LaunchHost& process() { return dynamic_cast<LaunchHost&>(host()); }

    /// Runs the application with the delegate.
    void launch() {
        process().launch([this](Computer& computer) {
            computer.application.setActivationPolicy(ActivationPolicy::regular);
            computer.application.setDelegate(delegate);
            note("run");
            computer.application.run();
        });
    }

    std::shared_ptr<Delegate> delegate = std::make_shared<Delegate>(*this);
    Block onLaunch;
    std::atomic<TerminateReply> reply = TerminateReply::now;
};

TEST_F(LaunchContract, TheDelegateHearsOnceThatLaunchingHasFinished) {
    onLaunch = [this] { note(computer().threads.isMainThread() ? "main thread" : "another thread"); };
    launch();
    ASSERT_TRUE(noted(3));
    host().letTimePass(1);
    EXPECT_EQ(notes(), (Notes{"run", "launched", "main thread"}));
    EXPECT_FALSE(process().hasEnded());
}

TEST_F(LaunchContract, TheApplicationEndsWhenItsDelegateAgrees) {
    onLaunch = [this] { computer().application.terminate(); };
    launch();
    EXPECT_TRUE(eventually([this] { return process().hasEnded(); }));
    EXPECT_EQ(notes(), (Notes{"run", "launched", "asked"}));
}

TEST_F(LaunchContract, TheApplicationStaysUntilItsDelegateAgrees) {
    reply = TerminateReply::cancel;
    onLaunch = [this] { computer().application.terminate(); };
    launch();
    ASSERT_TRUE(noted(3));
    host().letTimePass(0.5);
    EXPECT_FALSE(process().hasEnded());
    reply = TerminateReply::now;
    host().postToMain([this] { computer().application.terminate(); });
    EXPECT_TRUE(eventually([this] { return process().hasEnded(); }));
    EXPECT_EQ(notes(), (Notes{"run", "launched", "asked", "asked"}));
}

TEST_F(LaunchContract, ADelegateIsHeldWeaklyAndWithoutOneTheApplicationEnds) {
    onLaunch = [this] {
        delegate.reset();
        computer().dispatch.mainQueue().async([this] { computer().application.terminate(); });
    };
    launch();
    EXPECT_TRUE(eventually([this] { return process().hasEnded(); }));
    EXPECT_EQ(notes(), (Notes{"run", "launched"}));
}

}  // namespace
}  // namespace vantrel::contracts
