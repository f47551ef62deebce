#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "tests/contracts/ContractTest.h"
#include "tests/contracts/InterfaceHost.h"

namespace vantrel::contracts {
namespace {

class ApplicationContract : public ContractTest {
  protected:
    /// Stays when it is asked to end.
    class Staying final : public ApplicationDelegate {
      public:
        explicit Staying(std::function<void()> asked) : asked_(std::move(asked)) {}

        void applicationDidFinishLaunching() override {}
        TerminateReply applicationShouldTerminate() override {
            asked_();
            return TerminateReply::cancel;
        }

      private:
        const std::function<void()> asked_;
    };

    void TearDown() override {
        // Its host ends the application, which a delegate would refuse.
        delegate.reset();
        host().onMain([this] { window.reset(); });
        ContractTest::TearDown();
    }

    InterfaceHost& participant() { return dynamic_cast<InterfaceHost&>(host()); }

    std::shared_ptr<Staying> staying(const std::string& name) {
        return std::make_shared<Staying>(
            [this, name] { note(name + (computer().threads.isMainThread() ? "" : " off the main thread")); });
    }

    void setDelegate() {
        delegate = staying("asked");
        host().onMain([this] { computer().application.setDelegate(delegate); });
    }

    static MenuItem entry(const std::string& title) {
        MenuItem item;
        item.title = title;
        return item;
    }

    /// A main menu with one menu of these items.
    static Menu mainMenu(const std::vector<MenuItem>& items) {
        MenuItem application;
        application.kind = MenuItem::Kind::submenu;
        application.submenu = {"Applicazione", items};
        return {"", {application}};
    }

    void setMainMenu(const std::vector<MenuItem>& items) {
        host().onMain([&] { computer().application.setMainMenu(mainMenu(items)); });
    }

    void showWindow() {
        host().onMain([this] {
            WindowDescription description;
            description.contentRect = {{40, 40}, {300, 200}};
            description.styleMask = windowTitled;
            description.title = "Vantrel";
            window = computer().windows.makeWindow(description, {});
            window->makeKeyAndOrderFront();
        });
        ASSERT_TRUE(eventually([this] { return participant().windowsShown() == Notes{"Vantrel"}; }));
    }

    ProcessIdentifier frontmost() {
        ProcessIdentifier found = 0;
        host().onMain([&] {
            const auto application = computer().frontmostApplication.frontmostApplication();
            if (application) found = application->processIdentifier();
        });
        return found;
    }

    std::shared_ptr<Staying> delegate;
    std::unique_ptr<Window> window;
};

TEST_F(ApplicationContract, ActivationBringsTheClientToTheFront) {
    showWindow();
    const auto launched =
        computer().processLauncher.launch(host().peerExecutable(), {"--window=Appunti,100,120,500,300"});
    const auto* peer = std::get_if<ProcessIdentifier>(&launched);
    ASSERT_TRUE(peer);
    // The client's own window may still be on its way to the front, and take it from the other one again.
    const bool isPeerInFront = eventually([&] {
        if (frontmost() == *peer) return true;
        host().onMain([&] {
            const auto other = computer().runningApplications.withProcessIdentifier(*peer);
            if (other) other->activate(ActivationOptions::none);
        });
        return false;
    });
    if (!activated(isPeerInFront)) return;
    host().onMain([this] { computer().application.activate(); });
    activated(eventually([&] { return frontmost() == participant().ownProcess(); }));
}

TEST_F(ApplicationContract, ADelegateThatRefusesKeepsTheApplicationRunning) {
    setDelegate();
    host().onMain([this] {
        computer().application.terminate();
        note("goes on");
    });
    EXPECT_EQ(notes(), (Notes{"asked", "goes on"}));
    host().letTimePass(0.2);
    host().onMain([this] { note("still runs"); });
    host().onMain([this] { computer().application.terminate(); });
    EXPECT_EQ(notes(), (Notes{"asked", "goes on", "still runs", "asked"}));
}

TEST_F(ApplicationContract, TheLastDelegateIsAsked) {
    const auto first = staying("first");
    delegate = staying("second");
    host().onMain([&] {
        computer().application.setDelegate(first);
        computer().application.setDelegate(delegate);
        computer().application.terminate();
    });
    EXPECT_EQ(notes(), Notes{"second"});
}

TEST_F(ApplicationContract, AnItemOfTheMainMenuActsOnTheMainThread) {
    MenuItem item = entry("Opzioni");
    item.target = [this] { note(computer().threads.isMainThread() ? "chosen" : "chosen off the main thread"); };
    setMainMenu({entry("Vuota"), MenuItem::separator(), item});
    showWindow();
    participant().chooseFromMainMenu("Applicazione", "Opzioni");
    ASSERT_TRUE(noted(1));
    participant().chooseFromMainMenu("Applicazione", "Opzioni");
    ASSERT_TRUE(noted(2));
    EXPECT_EQ(notes(), (Notes{"chosen", "chosen"}));
}

TEST_F(ApplicationContract, ADisabledItemOfTheMainMenuDoesNothing) {
    MenuItem disabled = entry("Spenta");
    disabled.enabled = false;
    disabled.target = [this] { note("disabled"); };
    MenuItem enabled = entry("Accesa");
    enabled.target = [this] { note("enabled"); };
    setMainMenu({disabled, enabled});
    showWindow();
    participant().chooseFromMainMenu("Applicazione", "Spenta");
    participant().chooseFromMainMenu("Applicazione", "Accesa");
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(notes(), Notes{"enabled"});
}

TEST_F(ApplicationContract, AnItemThatDoesNothingIsDisabled) {
    MenuItem working = entry("Opzioni");
    working.target = [] {};
    MenuItem quit = entry("Esci");
    quit.action = "terminate:";
    MenuItem disabled = entry("Spenta");
    disabled.enabled = false;
    disabled.target = [] {};
    setMainMenu({working, entry("Vuota"), MenuItem::separator(), quit, disabled});
    showWindow();
    for (const auto& [title, available] :
         {std::pair{"Opzioni", true}, {"Vuota", false}, {"Esci", true}, {"Spenta", false}}) {
        EXPECT_EQ(participant().isAvailableInMainMenu("Applicazione", title), available) << title;
    }
}

TEST_F(ApplicationContract, TheMainMenuCanAskToTerminate) {
    setDelegate();
    MenuItem quit = entry("Esci");
    quit.action = "terminate:";
    setMainMenu({quit});
    showWindow();
    participant().chooseFromMainMenu("Applicazione", "Esci");
    ASSERT_TRUE(noted(1));
    EXPECT_EQ(notes(), Notes{"asked"});
}

TEST_F(ApplicationContract, AnItemThatReplacesItsMainMenuLivesUntilItReturns) {
    std::weak_ptr<int> watched;
    host().onMain([&] {
        auto owned = std::make_shared<int>();
        watched = owned;
        const auto run = [this, &watched] {
            MenuItem next = entry("Seconda");
            next.target = [this] { note("second"); };
            computer().application.setMainMenu(mainMenu({next}));
            note(watched.expired() ? "first, already gone" : "first");
        };
        MenuItem item = entry("Prima");
        item.target = [owned, run] {
            const auto running = run;
            running();
        };
        computer().application.setMainMenu(mainMenu({item}));
    });
    showWindow();
    participant().chooseFromMainMenu("Applicazione", "Prima");
    ASSERT_TRUE(noted(1));
    participant().chooseFromMainMenu("Applicazione", "Seconda");
    ASSERT_TRUE(noted(2));
    EXPECT_EQ(notes(), (Notes{"first", "second"}));
    EXPECT_TRUE(eventually([&] { return watched.expired(); }));
}

}  // namespace
}  // namespace vantrel::contracts
